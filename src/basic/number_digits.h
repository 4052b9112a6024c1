// The decimal digits of numbers, for their patterns.
#pragma once

#include <string>

#include <basic/variant.h>

namespace quardele::basic {

/// The magnitude of a number: 0.d1d2d3... times 10^point. Zero has no digits; the first digit is not 0.
struct NumberDigits {
    std::string digits;
    int point = 0;

    /// Rounds to so many digits behind the point, halves away from zero.
    void RoundTo(int decimals);
    [[nodiscard]] bool IsZero() const { return digits.empty(); }
    /// The digits in front of the point; empty below 1.
    [[nodiscard]] std::string Whole() const;
    /// How many digits behind the point there are up to the last one that is not 0.
    [[nodiscard]] int Decimals() const;
    /// A digit behind the point, from 0 on.
    [[nodiscard]] char Decimal(int position) const;

 private:
    [[nodiscard]] char At(int position) const;
};

/// Amounts and decimals to their last digit, other numbers to those that their type holds. Throws 13 for what
/// is no number.
[[nodiscard]] NumberDigits DigitsOf(const Variant& value);

}  // namespace quardele::basic
