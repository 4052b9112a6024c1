// A stream of BIFF8 records: each an identifier, a length and up to 8 224 bytes, all little-endian.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>

#include <basic/text.h>

namespace quardele::workbook {

class Records {
 public:
    static constexpr std::size_t kMaxData = 8224;

    /// Ends the record before, if any, and starts another.
    void Begin(std::uint16_t identifier);
    /// Ends the last record. Nothing may be put before the next Begin.
    void End();

    void PutByte(std::uint8_t value) { bytes_.push_back(static_cast<char>(value)); }
    void PutShort(std::uint16_t value) { PutLittle<2>(value); }
    void PutLong(std::uint32_t value) { PutLittle<4>(value); }
    void PutDouble(double value) { PutLittle<8>(std::bit_cast<std::uint64_t>(value)); }
    /// A text with its form in front: one byte per unit where all fit, else two.
    void PutUnits(basic::TextView text);
    /// The units alone, in the form that `wide` says.
    void PutBareUnits(basic::TextView text, bool wide);
    /// Whole records made elsewhere. The last record must have ended.
    void Append(const Records& others) { bytes_ += others.bytes_; }

    /// Replaces four bytes at a position from the start of the stream.
    void PatchLong(std::size_t position, std::uint32_t value);

    /// Bytes in the stream, which is the position of the next one.
    [[nodiscard]] std::size_t Size() const { return bytes_.size(); }
    /// Where the open record starts.
    [[nodiscard]] std::size_t RecordStart() const { return start_; }
    /// Bytes that still fit into the open record.
    [[nodiscard]] std::size_t Room() const { return start_ + kHeader + kMaxData - bytes_.size(); }
    [[nodiscard]] const std::string& Bytes() const { return bytes_; }

 private:
    static constexpr std::size_t kHeader = 4;

    template <std::size_t kBytes>
    void PutLittle(std::uint64_t value) {
        std::array<char, kBytes> little{};
        for (std::size_t i = 0; i < kBytes; ++i) {
            little[i] = static_cast<char>(value >> (8 * i) & 0xFF);
        }
        bytes_.append(little.data(), kBytes);
    }

    std::string bytes_;
    std::size_t start_ = 0;
    bool open_ = false;
};

/// Whether a text has units that one byte does not hold.
[[nodiscard]] bool IsWide(basic::TextView text);

}  // namespace quardele::workbook
