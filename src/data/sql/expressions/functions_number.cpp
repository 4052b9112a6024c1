#include <cmath>
#include <limits>

#include "expressions/argument.h"
#include "expressions/arithmetic.h"
#include "expressions/functions.h"
#include "sql_error.h"

namespace quardele::sql {
namespace {

using jet::ColumnType;

/// Applies a rounding to a number and keeps its type; whole numbers stay as they are.
Variant Rounded(const Variant& value, double (*round)(double)) {
    if (value.IsDate()) {
        return basic::Date{WithoutSignOfZero(round(value.As<basic::Date>().days))};
    }
    if (value.Is<basic::Currency>()) {
        return basic::CCur(round(basic::CDbl(value)));
    }
    const double number = basic::CDbl(value);
    const bool inexact =
        value.IsText() || value.Is<float>() || value.Is<double>() || value.Is<basic::Decimal>();
    return inexact ? Variant(WithoutSignOfZero(round(number))) : value;
}

Variant IntOf(Arguments a) {
    return Rounded(*a[0], std::floor);
}
Variant FixOf(Arguments a) {
    return Rounded(*a[0], std::trunc);
}

/// Round(number [, decimals]): halves to even.
Variant RoundOf(Arguments a) {
    const std::int32_t decimals = LongOr(a, 1, 0);
    if (decimals < 0 || decimals > 22) {
        throw basic::RuntimeError(error::kInvalidCall);
    }
    if (decimals == 0) {
        return Rounded(*a[0], std::nearbyint);
    }
    const double number = basic::CDbl(*a[0]);
    const double scale = std::pow(10.0, decimals);
    const double scaled = number * scale;
    const double result = std::fabs(scaled) < 1e15 ? std::nearbyint(scaled) / scale : number;
    return a[0]->Is<basic::Currency>() ? Variant(basic::CCur(result)) : Variant(WithoutSignOfZero(result));
}

Variant AbsOf(Arguments a) {
    const Variant& value = *a[0];
    if (value.IsText()) {
        return std::fabs(basic::CDbl(value));
    }
    return basic::CDbl(value) < 0 ? Negative(value) : value;
}

Variant SgnOf(Arguments a) {
    const double number = basic::CDbl(*a[0]);
    return static_cast<std::int32_t>(number > 0 ? 1 : (number < 0 ? -1 : 0));
}

Variant SqrOf(Arguments a) {
    const double number = basic::CDbl(*a[0]);
    if (number < 0) {
        throw basic::RuntimeError(error::kInvalidCall);
    }
    return std::sqrt(number);
}

Variant ValOf(Arguments a) {
    return basic::Val(TextArgument(*a[0]));
}
Variant CIntOf(Arguments a) {
    return basic::CInt(*a[0]);
}
Variant CLngOf(Arguments a) {
    return basic::CLng(*a[0]);
}
Variant CDblOf(Arguments a) {
    return basic::CDbl(*a[0]);
}
Variant CCurOf(Arguments a) {
    return basic::CCur(*a[0]);
}
Variant CBoolOf(Arguments a) {
    return basic::CBool(*a[0]);
}

Variant CByteOf(Arguments a) {
    const std::int16_t number = basic::CInt(*a[0]);
    if (number < 0 || number > std::numeric_limits<std::uint8_t>::max()) {
        throw basic::RuntimeError(error::kOverflow);
    }
    return static_cast<std::uint8_t>(number);
}

Variant CSngOf(Arguments a) {
    const double number = basic::CDbl(*a[0]);
    if (std::fabs(number) > static_cast<double>(std::numeric_limits<float>::max())) {
        throw basic::RuntimeError(error::kOverflow);
    }
    return static_cast<float>(number);
}

Variant IsNullOf(Arguments a) {
    return a[0]->IsNull();
}
Variant IsNumericOf(Arguments a) {
    return !a[0]->IsNull() && basic::IsNumeric(*a[0]);
}

/// Nz(value [, instead]): the empty text when nothing else is given.
Variant NzOf(Arguments a) {
    if (!a[0]->IsNull()) {
        return *a[0];
    }
    return a.size() > 1 ? *a[1] : Variant(Text());
}

constexpr auto kTaken = Function::Nulls::Taken;
constexpr auto kSpread = Function::Nulls::Spread;
constexpr auto kFirstNumber = Function::Result::FirstNumber;

constexpr Function kFunctions[] = {
    {u"Abs", 1, 1, ColumnType::Double, AbsOf, kSpread, kFirstNumber},
    {u"Int", 1, 1, ColumnType::Double, IntOf, kSpread, kFirstNumber},
    {u"Fix", 1, 1, ColumnType::Double, FixOf, kSpread, kFirstNumber},
    {u"Round", 1, 2, ColumnType::Double, RoundOf, kSpread, kFirstNumber},
    {u"Sgn", 1, 1, ColumnType::Long, SgnOf},
    {u"Sqr", 1, 1, ColumnType::Double, SqrOf},
    {u"Val", 1, 1, ColumnType::Double, ValOf},
    {u"CInt", 1, 1, ColumnType::Integer, CIntOf, kTaken},
    {u"CLng", 1, 1, ColumnType::Long, CLngOf, kTaken},
    {u"CDbl", 1, 1, ColumnType::Double, CDblOf, kTaken},
    {u"CSng", 1, 1, ColumnType::Single, CSngOf, kTaken},
    {u"CByte", 1, 1, ColumnType::Byte, CByteOf, kTaken},
    {u"CCur", 1, 1, ColumnType::Currency, CCurOf, kTaken},
    {u"CBool", 1, 1, ColumnType::Boolean, CBoolOf, kTaken},
    {u"IsNull", 1, 1, ColumnType::Boolean, IsNullOf, kTaken},
    {u"IsNumeric", 1, 1, ColumnType::Boolean, IsNumericOf, kTaken},
    {u"Nz", 1, 2, std::nullopt, NzOf, kTaken, Function::Result::Common},
};

}  // namespace

std::span<const Function> NumberFunctions() {
    return kFunctions;
}

}  // namespace quardele::sql
