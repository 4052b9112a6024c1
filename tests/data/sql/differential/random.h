// The same choices from the same seed everywhere: the standard's distributions differ between libraries.
#pragma once

#include <random>
#include <vector>

namespace quardele::sql::differential {

class Random {
 public:
    explicit Random(unsigned seed) : engine_(seed) {}

    /// From 0 to before `end`.
    [[nodiscard]] int Below(int end) { return static_cast<int>(engine_() % static_cast<unsigned>(end)); }
    [[nodiscard]] int Between(int first, int last) { return first + Below(last - first + 1); }
    [[nodiscard]] bool Chance(int percent) { return Below(100) < percent; }
    template <class Choices>
    [[nodiscard]] const auto& OneOf(const Choices& choices) {
        return choices[static_cast<std::size_t>(Below(static_cast<int>(std::size(choices))))];
    }

 private:
    std::mt19937 engine_;
};

}  // namespace quardele::sql::differential
