// A fast 64-bit checksum against torn and foreign bytes; not against an adversary.
#pragma once

#include <cstdint>
#include <span>

namespace quardele::jet {

[[nodiscard]] constexpr std::uint64_t Checksum(std::span<const std::uint8_t> bytes,
                                               std::uint64_t seed = 0x9E3779B97F4A7C15) {
    constexpr std::uint64_t kMultiplier = 0xFF51AFD7ED558CCD;
    std::uint64_t sum = seed ^ bytes.size();
    while (!bytes.empty()) {
        const auto part = bytes.first(bytes.size() < 8 ? bytes.size() : 8);
        std::uint64_t word = 0;
        for (std::size_t i = part.size(); i-- > 0;) {
            word = word << 8 | part[i];
        }
        sum = (sum ^ word) * kMultiplier;
        sum ^= sum >> 32;
        bytes = bytes.subspan(part.size());
    }
    return sum;
}

}  // namespace quardele::jet
