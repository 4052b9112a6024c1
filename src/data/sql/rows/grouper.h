// Gathers rows into groups.
#pragma once

#include <vector>

#include "plan/select_plan.h"
#include "rows/value_numbers.h"

namespace quardele::sql {

class Grouper {
 public:
    /// The plan must outlive the grouper.
    explicit Grouper(const GroupPlan& plan);

    void Add(RowContext& row);
    /// Puts the result row of each group that HAVING lets through into the context, in the order of the
    /// keys, and calls `emit`.
    void Finish(RowContext& row, const Emit& emit);

 private:
    std::uint32_t GroupOf(RowContext& row);
    static void AddValue(const AggregateStep& step, RowContext& row, Accumulator& accumulator);

    const GroupPlan& plan_;
    ValueNumbers keys_;
    std::vector<Variant> keyValues_;  ///< as the first row of each group has them
    std::vector<Accumulator> accumulators_;
};

}  // namespace quardele::sql
