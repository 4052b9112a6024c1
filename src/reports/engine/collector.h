// Sums, counts and the like.
#pragma once

#include <formula/formula.h>

namespace quardele::engine {

using basic::Variant;

/// Collects the values of a summary, Null left out.
class Collector {
 public:
    explicit Collector(formula::SummaryKind kind) : kind_(kind) {}

    /// Throws 13 for what cannot be summed, or compared with the values before.
    void Add(const Variant& value);
    /// Counts are 0 and sums are 0 without values; the others are Null.
    [[nodiscard]] Variant Result() const;

 private:
    [[nodiscard]] bool IsBeyond(const Variant& value) const;

    formula::SummaryKind kind_;
    std::size_t count_ = 0;
    double sum_ = 0;
    Variant extreme_;
};

}  // namespace quardele::engine
