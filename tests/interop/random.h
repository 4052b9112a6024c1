// Chance that can be repeated: the same seed gives the same numbers on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace quardele::jet::test {

class Random {
 public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}

    std::uint64_t Bits() { return engine_(); }
    /// 0 to count - 1; at least one of them.
    std::size_t Below(std::size_t count) { return static_cast<std::size_t>(engine_() % count); }
    int Between(int smallest, int largest) {
        return smallest + static_cast<int>(Below(static_cast<std::size_t>(largest - smallest) + 1));
    }
    bool Chance(int percent) { return Between(1, 100) <= percent; }
    template <class Choices>
    const auto& Pick(const Choices& choices) {
        return choices[Below(choices.size())];
    }

 private:
    std::mt19937_64 engine_;
};

}  // namespace quardele::jet::test
