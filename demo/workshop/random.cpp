#include "random.h"

#include <bit>

namespace quardele::workshop {

namespace {

// The increment and the multipliers of the SplitMix64 generator (Steele, Lea, Flood, 2014).
constexpr std::uint64_t kIncrement = 0x9E3779B97F4A7C15;

constexpr std::uint64_t Mixed(std::uint64_t value) {
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
}

}  // namespace

Random::Random(std::uint64_t seed, Purpose purpose, int index)
    : state_(Mixed(Mixed(Mixed(seed + kIncrement) + static_cast<std::uint64_t>(purpose)) +
                   static_cast<std::uint64_t>(index))) {}

std::uint64_t Random::Next() {
    state_ += kIncrement;
    return Mixed(state_);
}

int Random::Below(int bound) {
    // The upper half times the bound: evenly spread but for less than one in four thousand millions.
    return static_cast<int>(((Next() >> 32) * static_cast<std::uint64_t>(bound)) >> 32);
}

// Odd factors and shifts to the right lose nothing of a number of so many bits; a number that comes out too
// large goes round again, and so finds a place that no other has.
std::int64_t Shuffled(std::int64_t number, std::int64_t size, std::uint64_t seed) {
    const auto places = static_cast<std::uint64_t>(size);
    const int bits = static_cast<int>(std::bit_width(places - 1));
    const std::uint64_t mask = (std::uint64_t{1} << bits) - 1;
    const std::uint64_t key = Mixed(seed + kIncrement);
    auto place = static_cast<std::uint64_t>(number % size);
    do {
        place = ((place ^ key) * 0xBF58476D1CE4E5B9) & mask;
        place ^= place >> (bits / 2 + 1);
        place = (place * 0x94D049BB133111EB) & mask;
        place ^= place >> (bits / 2 + 1);
    } while (place >= places);
    return static_cast<std::int64_t>(place);
}

}  // namespace quardele::workshop
