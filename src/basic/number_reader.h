// Numbers at the start of a text, for Val and the conversions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include <basic/text.h>

namespace quardele::basic {

/// A number as it stands in a text, brought into one form.
struct WrittenNumber {
    bool negative = false;
    /// Decimal digits around a point that is always there; either side may be empty, not both.
    std::string digits;
    /// The power of ten behind "e", 0 when there is none; kept within +-99999.
    int exponent = 0;
    /// How many units of the text it takes up.
    std::size_t length = 0;

    /// The nearest double; infinite when none is large enough.
    [[nodiscard]] double Value() const;
    /// The value times 10^4, halves rounded to even; empty outside the range.
    [[nodiscard]] std::optional<std::int64_t> TenThousandths() const;
};

/// Reads [sign] digits [separator digits] [e [sign] digits] as far as it goes; "d" stands for "e" as well.
/// Empty when the text does not start with a number.
[[nodiscard]] std::optional<WrittenNumber> ReadNumber(TextView text, char16_t decimalSeparator);

/// Reads the digits behind &H (base 16) or &O (base 8) as far as they go, case ignored. As many as fit into
/// 16 bits make a number of 16 bits, more of them one of 32 bits, whose highest bit is its sign; a further
/// "&" makes it one of 32 bits in any case. Empty when the text does not start so, infinite beyond 32 bits.
[[nodiscard]] std::optional<double> ReadNumberOfBase(TextView text);

}  // namespace quardele::basic
