#include "random.h"

#include <numeric>

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

std::int64_t Shuffled(std::int64_t number, std::int64_t size, std::uint64_t seed) {
    // A step without a common divisor passes every place once before it comes back; one of the golden
    // section's length keeps neighbours apart.
    std::int64_t step = size * 618'034 / 1'000'000 + 1;
    while (std::gcd(step, size) != 1) {
        ++step;
    }
    const auto start = static_cast<std::int64_t>(Mixed(seed) % static_cast<std::uint64_t>(size));
    // Sizes stay below 2^30, numbers below 2^31: no product overflows.
    return (number % size * step + start) % size;
}

}  // namespace quardele::workshop
