// Checked access to bytes that come from a file: whatever a file says, no read leaves its bounds.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <utility>
#include <vector>

#include "damage.h"

namespace quardele::jet {

using ByteString = std::vector<std::uint8_t>;

/// Read-only bytes of one place in the file. Every access is checked against the size; a violation throws
/// RuntimeError 3343 naming the page. The bytes belong to somebody else.
class ByteView {
 public:
    ByteView() = default;
    ByteView(std::span<const std::uint8_t> bytes, std::uint32_t page) : bytes_(bytes), page_(page) {}

    [[nodiscard]] std::size_t Size() const { return bytes_.size(); }
    [[nodiscard]] bool IsEmpty() const { return bytes_.empty(); }
    [[nodiscard]] std::span<const std::uint8_t> Span() const { return bytes_; }
    /// The page that the bytes come from; for error texts.
    [[nodiscard]] std::uint32_t Page() const { return page_; }

    [[nodiscard]] std::uint8_t U8(std::size_t at) const {
        Check(at, 1);
        return bytes_[at];
    }
    [[nodiscard]] std::uint16_t U16(std::size_t at) const {
        return static_cast<std::uint16_t>(Little<2>(at));
    }
    [[nodiscard]] std::uint32_t U24(std::size_t at) const {
        return static_cast<std::uint32_t>(Little<3>(at));
    }
    [[nodiscard]] std::uint32_t U32(std::size_t at) const {
        return static_cast<std::uint32_t>(Little<4>(at));
    }
    [[nodiscard]] std::uint64_t U64(std::size_t at) const { return Little<8>(at); }
    [[nodiscard]] std::int16_t I16(std::size_t at) const { return static_cast<std::int16_t>(U16(at)); }
    [[nodiscard]] std::int32_t I32(std::size_t at) const { return static_cast<std::int32_t>(U32(at)); }
    [[nodiscard]] std::int64_t I64(std::size_t at) const { return static_cast<std::int64_t>(U64(at)); }
    [[nodiscard]] float F32(std::size_t at) const { return std::bit_cast<float>(U32(at)); }
    [[nodiscard]] double F64(std::size_t at) const { return std::bit_cast<double>(U64(at)); }
    /// Big-endian; occurs in index entries only.
    [[nodiscard]] std::uint32_t U24Big(std::size_t at) const {
        return static_cast<std::uint32_t>(Big(at, 3));
    }
    [[nodiscard]] std::uint32_t U32Big(std::size_t at) const {
        return static_cast<std::uint32_t>(Big(at, 4));
    }

    [[nodiscard]] ByteView Sub(std::size_t at, std::size_t length) const {
        Check(at, length);
        return {bytes_.subspan(at, length), page_};
    }
    [[nodiscard]] ByteView From(std::size_t at) const {
        Check(at, 0);
        return {bytes_.subspan(at), page_};
    }

 private:
    void Check(std::size_t at, std::size_t length) const {
        if (at > bytes_.size() || length > bytes_.size() - at) {
            ThrowDamaged(page_, u"donnée hors limites");
        }
    }
    /// Written as one expression, which the compiler makes one load of.
    template <std::size_t length>
    [[nodiscard]] std::uint64_t Little(std::size_t at) const {
        Check(at, length);
        const std::uint8_t* const byte = bytes_.data() + at;
        return [byte]<std::size_t... i>(std::index_sequence<i...>) {
            return (... | (std::uint64_t{byte[i]} << (8 * i)));
        }
        (std::make_index_sequence<length>{});
    }
    [[nodiscard]] std::uint64_t Big(std::size_t at, std::size_t length) const {
        Check(at, length);
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < length; ++i) {
            value = value << 8 | bytes_[at + i];
        }
        return value;
    }

    std::span<const std::uint8_t> bytes_;
    std::uint32_t page_ = 0;
};

/// Plain byte order; a text that another one starts with comes first. Negative, 0 or positive.
[[nodiscard]] inline int CompareBytes(std::span<const std::uint8_t> left,
                                      std::span<const std::uint8_t> right) {
    const std::size_t common = left.size() < right.size() ? left.size() : right.size();
    const int order = common == 0 ? 0 : std::memcmp(left.data(), right.data(), common);
    if (order != 0 || left.size() == right.size()) {
        return order;
    }
    return left.size() < right.size() ? -1 : 1;
}

[[nodiscard]] inline bool StartsWith(std::span<const std::uint8_t> bytes,
                                     std::span<const std::uint8_t> start) {
    return bytes.size() >= start.size() && CompareBytes(bytes.first(start.size()), start) == 0;
}

/// Stores an integer little-endian at the front of `target`, which must be large enough.
template <class Integer>
void StoreLittle(std::span<std::uint8_t> target, Integer value) {
    auto rest = static_cast<std::make_unsigned_t<Integer>>(value);
    for (std::uint8_t& byte : target.first(sizeof(Integer))) {
        byte = static_cast<std::uint8_t>(rest & 0xFF);
        rest = static_cast<decltype(rest)>(static_cast<std::uint64_t>(rest) >> 8);
    }
}
inline void StoreU24(std::span<std::uint8_t> target, std::uint32_t value) {
    for (std::uint8_t& byte : target.first(3)) {
        byte = static_cast<std::uint8_t>(value & 0xFF);
        value >>= 8;
    }
}

}  // namespace quardele::jet
