// Takes an input apart, front to back. Behind its end there are zeros: every input means something.
#pragma once

#include <algorithm>

#include "harness.h"

namespace quardele::fuzz {

class InputReader {
 public:
    explicit InputReader(BytesView input) : rest_(input) {}

    [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

    [[nodiscard]] std::uint8_t Byte() {
        const BytesView byte = Take(1);
        return byte.empty() ? std::uint8_t{0} : byte[0];
    }
    [[nodiscard]] std::uint16_t Word() {
        const std::uint8_t low = Byte();
        return static_cast<std::uint16_t>(low | Byte() << 8);
    }
    /// As many bytes, or what is left.
    [[nodiscard]] BytesView Take(std::size_t length) {
        const BytesView part = rest_.first(std::min(length, rest_.size()));
        rest_ = rest_.subspan(part.size());
        return part;
    }

 private:
    BytesView rest_;
};

/// The other way round, for seeds.
inline void AppendWord(Bytes& input, std::size_t word) {
    input.push_back(static_cast<std::uint8_t>(word & 0xFF));
    input.push_back(static_cast<std::uint8_t>(word >> 8 & 0xFF));
}
inline void AppendBytes(Bytes& input, BytesView bytes) {
    input.insert(input.end(), bytes.begin(), bytes.end());
}

}  // namespace quardele::fuzz
