// Makes new inputs from known ones, the same ones every time.
#pragma once

#include <random>
#include <vector>

#include "harness.h"

namespace quardele::fuzz {

class Mutator {
 public:
    /// `seeds` must outlive the mutator and not be empty.
    explicit Mutator(const std::vector<Bytes>& seeds) : seeds_(seeds) {}

    /// The input of a number: one of the seeds with a few changes. It depends on nothing else.
    [[nodiscard]] Bytes Input(unsigned number);

 private:
    [[nodiscard]] std::size_t Below(std::size_t end) { return end == 0 ? 0 : random_() % end; }
    [[nodiscard]] std::uint8_t AnyByte() { return static_cast<std::uint8_t>(random_()); }
    void Change(Bytes& input);
    void StoreNumber(Bytes& input);
    void Splice(Bytes& input);

    const std::vector<Bytes>& seeds_;
    std::mt19937 random_;
};

}  // namespace quardele::fuzz
