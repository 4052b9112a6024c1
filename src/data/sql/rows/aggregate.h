// Sum, Avg, Min, Max, Count, First, Last, and how far values lie apart: StDev, StDevP, Var, VarP.
#pragma once

#include <cstdint>
#include <optional>

#include "expressions/types.h"
#include "rows/number_sum.h"
#include "syntax/ast.h"

namespace quardele::sql {

enum class AggregateKind { Count, Sum, Avg, Min, Max, First, Last, StDev, StDevP, Var, VarP };

/// Which aggregate a call is; empty for other functions.
[[nodiscard]] std::optional<AggregateKind> AggregateOf(const Call& call);
/// The type of the result over an argument of a type.
[[nodiscard]] StaticType AggregateType(AggregateKind kind, StaticType argument);

/// The first aggregate call inside an expression, null when there is none.
[[nodiscard]] const Expression* FindAggregate(const Expression& expression);

/// Takes the values of one group one by one. Nulls are passed over, but for First and Last.
class Accumulator {
 public:
    explicit Accumulator(AggregateKind kind) : kind_(kind) {}

    /// Throws 3464 when an aggregate of numbers meets another value.
    void Add(const Variant& value);
    /// A row counts for Count(*) whatever its values.
    void AddRow() { ++count_; }
    [[nodiscard]] Variant Result() const;

 private:
    void AddDeviation(const Variant& value);
    void Keep(const Variant& value);
    [[nodiscard]] Variant Spread() const;

    AggregateKind kind_;
    std::int32_t count_ = 0;
    NumberSum sum_;
    double mean_ = 0;     ///< so far, of what Spread looks at
    double squares_ = 0;  ///< of the distances from the mean
    Variant kept_ = basic::Null();
};

}  // namespace quardele::sql
