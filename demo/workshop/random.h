// Random numbers that are the same on every machine: the library's distributions are not.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace quardele::workshop {

/// What numbers are drawn for; each has a sequence of its own.
enum class Purpose : std::uint64_t { Customer = 1, Vehicle, Owner, VisitCount, Visits, Job };

/// The numbers of one thing, e.g. of the 17th vehicle: they depend on nothing else, so that things can be
/// made in any order, and again, without being kept.
class Random {
 public:
    Random(std::uint64_t seed, Purpose purpose, int index);

    /// 0 to bound - 1; the bound is positive.
    [[nodiscard]] int Below(int bound);
    /// From the first to the last, both included.
    [[nodiscard]] int Between(int first, int last) { return first + Below(last - first + 1); }
    /// True this often in a hundred.
    [[nodiscard]] bool Percent(int chance) { return Below(100) < chance; }
    /// One of several.
    template <class T, std::size_t Size>
    [[nodiscard]] const T& Pick(const std::array<T, Size>& things) {
        return things[static_cast<std::size_t>(Below(static_cast<int>(Size)))];
    }

 private:
    [[nodiscard]] std::uint64_t Next();

    std::uint64_t state_;
};

/// The place of a number in a fixed shuffle of 0 to size - 1: different numbers have different places.
[[nodiscard]] std::int64_t Shuffled(std::int64_t number, std::int64_t size, std::uint64_t seed);

}  // namespace quardele::workshop
