#include <cmath>

#include <basic/conversion.h>
#include <basic/runtime_error.h>

#include "functions.h"
#include "operators.h"

namespace quardele::formula {
namespace {

Variant Abs(Arguments a) {
    return std::fabs(NumberIn(a[0]));
}
/// The next whole number below.
Variant Int(Arguments a) {
    return std::floor(NumberIn(a[0]));
}
/// Without the decimals.
Variant Truncate(Arguments a) {
    return std::trunc(NumberIn(a[0]));
}

/// Halves away from zero, to so many decimals (15 at most, none unless given).
Variant Round(Arguments a) {
    constexpr double kMostDecimals = 15;
    const double decimals = a.size() == 2 ? std::trunc(NumberIn(a[1])) : 0;
    if (!(std::fabs(decimals) <= kMostDecimals)) {
        throw basic::RuntimeError(basic::error::kInvalidCall);
    }
    const double scale = std::pow(10.0, decimals);
    const double scaled = NumberIn(a[0]) * scale;
    return std::isfinite(scaled) ? Variant(std::round(scaled) / scale) : a[0];
}

Variant Sgn(Arguments a) {
    const double number = NumberIn(a[0]);
    return number > 0 ? 1.0 : number < 0 ? -1.0 : 0.0;
}

/// The rest of a division of whole numbers.
Variant Remainder(Arguments a) {
    const double divisor = std::trunc(NumberIn(a[1]));
    if (divisor == 0) {
        throw basic::RuntimeError(basic::error::kDivisionByZero);
    }
    return std::fmod(std::trunc(NumberIn(a[0])), divisor);
}

/// A text as a number, after the workstation's settings.
Variant ToNumber(Arguments a) {
    return basic::CDbl(a[0]);
}
Variant Val(Arguments a) {
    return basic::Val(TextIn(a[0]));
}
Variant IsNumeric(Arguments a) {
    return basic::IsNumeric(a[0]);
}
Variant IsNull(Arguments a) {
    return a[0].IsNull();
}

constexpr Function kFunctions[] = {
    {u"Abs", 1, 1, Abs},
    {u"Int", 1, 1, Int},
    {u"Truncate", 1, 1, Truncate},
    {u"Round", 1, 2, Round},
    {u"Sgn", 1, 1, Sgn},
    {u"Remainder", 2, 2, Remainder},
    {u"ToNumber", 1, 1, ToNumber},
    {u"CDbl", 1, 1, ToNumber},
    {u"Val", 1, 1, Val},
    {u"IsNumeric", 1, 1, IsNumeric, true},
    {u"IsNull", 1, 1, IsNull, true},
};

}  // namespace

std::span<const Function> NumberFunctions() {
    return kFunctions;
}

}  // namespace quardele::formula
