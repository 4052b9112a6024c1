// The sum of numbers of any types.
#pragma once

#include <cstdint>
#include <optional>

#include <basic/variant.h>

#include "expressions/types.h"

namespace quardele::sql {

/// Adds up numbers, those of exact types (whole numbers, amounts, decimals) without loss, whatever other
/// types come among them.
class NumberSum {
 public:
    /// Throws 3464 for a value that is no number, 6 beyond the range of amounts and decimals.
    void Add(const Variant& value);

    /// A decimal when there were decimals, an amount when there were amounts, else a double; a double as soon
    /// as one value was neither exact nor whole. Throws 6 beyond its range.
    [[nodiscard]] Variant Total() const;
    /// The total divided by the number of values, in the same type.
    [[nodiscard]] Variant Average(std::int32_t count) const;

 private:
    [[nodiscard]] bool IsDecimal() const { return decimals_ && !inexact_; }
    [[nodiscard]] bool IsAmount() const { return amounts_ && !decimals_ && !inexact_; }
    [[nodiscard]] basic::Decimal DecimalTotal() const;
    [[nodiscard]] std::int64_t AmountTotal() const;
    [[nodiscard]] double DoubleTotal() const;

    std::int64_t whole_ = 0;   ///< 2^31 values of 32 bits fit
    std::int64_t amount_ = 0;  ///< in ten-thousandths
    bool amounts_ = false;
    std::optional<basic::Decimal> decimals_;
    double numbers_ = 0;
    bool inexact_ = false;
};

}  // namespace quardele::sql
