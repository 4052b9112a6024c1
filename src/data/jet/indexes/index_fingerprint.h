// Large sets of index entries compared without keeping them.
#pragma once

#include <cstdint>
#include <span>

#include "checksum.h"

namespace quardele::jet {

/// A sum over a set of byte strings that does not depend on their order. Two sets with equal fingerprints are
/// equal but for a chance of about 1 in 2^128.
struct Fingerprint {
    std::uint64_t count = 0;
    std::uint64_t first = 0;
    std::uint64_t second = 0;

    void Add(std::span<const std::uint8_t> entry) {
        constexpr std::uint64_t kOtherSeed = 0xC2B2AE3D27D4EB4F;
        ++count;
        first += Checksum(entry);
        second += Checksum(entry, kOtherSeed);
    }
    friend bool operator==(const Fingerprint&, const Fingerprint&) = default;
};

}  // namespace quardele::jet
