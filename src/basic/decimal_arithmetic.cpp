#include <basic/decimal_arithmetic.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <string>

#include <basic/decimal.h>
#include <basic/runtime_error.h>

#include "wide_number.h"

namespace quardele::basic {
namespace {

constexpr int kMostDigits = 28;
constexpr int kCurrencyScale = 4;

bool Fits(const WideNumber& magnitude) {
    static const WideNumber kLimit = WideNumber::PowerOfTen(kMostDigits);
    return magnitude < kLimit;
}

/// Takes digits behind the point off until the rest fits.
Decimal Rounded(bool negative, WideNumber magnitude, int scale) {
    std::uint32_t last = 0;
    bool more = false;  // digits other than 0 behind the last one that was taken off
    while (scale > kMostDigits || !Fits(magnitude)) {
        if (scale == 0) {
            throw RuntimeError(error::kOverflow);
        }
        more = more || last != 0;
        last = magnitude.DivideBy(10);
        --scale;
    }
    if (last > 5 || (last == 5 && (more || magnitude.IsOdd()))) {
        magnitude.Add(WideNumber(1));
        return Rounded(negative, magnitude, scale);
    }
    Decimal result;
    result.negative = negative && !magnitude.IsZero();
    result.scale = static_cast<std::uint8_t>(scale);
    result.magnitude = magnitude.LowGroups();
    return result;
}

/// The magnitude as a number of units of a finer scale.
WideNumber UnitsOf(const Decimal& value, int scale) {
    return WideNumber(value.magnitude).Times(WideNumber::PowerOfTen(scale - value.scale));
}

std::strong_ordering CompareMagnitudes(const Decimal& left, const Decimal& right) {
    const int scale = std::max(left.scale, right.scale);
    return UnitsOf(left, scale) <=> UnitsOf(right, scale);
}

bool IsZero(const Decimal& value) {
    return value.magnitude == decltype(value.magnitude){};
}

struct ExactVisitor {
    std::optional<Decimal> operator()(bool value) const { return Whole(value ? -1 : 0, 0); }
    std::optional<Decimal> operator()(std::uint8_t value) const { return Whole(value, 0); }
    std::optional<Decimal> operator()(std::int16_t value) const { return Whole(value, 0); }
    std::optional<Decimal> operator()(std::int32_t value) const { return Whole(value, 0); }
    std::optional<Decimal> operator()(Currency value) const {
        return Whole(value.tenThousandths, kCurrencyScale);
    }
    std::optional<Decimal> operator()(const Decimal& value) const { return value; }
    template <class T>
    std::optional<Decimal> operator()(const T& /*value*/) const {
        return std::nullopt;
    }

    static Decimal Whole(std::int64_t value, std::uint8_t scale) {
        Decimal result;
        result.negative = value < 0;
        result.scale = scale;
        const auto unsignedValue = static_cast<std::uint64_t>(value);
        result.magnitude = WideNumber(value < 0 ? 0 - unsignedValue : unsignedValue).LowGroups();
        return result;
    }
};

}  // namespace

Decimal Sum(const Decimal& left, const Decimal& right) {
    const int scale = std::max(left.scale, right.scale);
    WideNumber a = UnitsOf(left, scale);
    WideNumber b = UnitsOf(right, scale);
    if (left.negative == right.negative) {
        a.Add(b);
        return Rounded(left.negative, a, scale);
    }
    if (a < b) {
        std::swap(a, b);
        a.Subtract(b);
        return Rounded(right.negative, a, scale);
    }
    a.Subtract(b);
    return Rounded(left.negative, a, scale);
}

Decimal Difference(const Decimal& left, const Decimal& right) {
    return Sum(left, Negated(right));
}

Decimal Product(const Decimal& left, const Decimal& right) {
    return Rounded(left.negative != right.negative,
                   WideNumber(left.magnitude).Times(WideNumber(right.magnitude)), left.scale + right.scale);
}

Decimal Quotient(const Decimal& dividend, std::uint32_t divisor) {
    int scale = dividend.scale;
    WideNumber units(dividend.magnitude);
    while (scale <= kMostDigits) {
        units.MultiplyBy(10);
        ++scale;
    }
    // A rest makes what is left more than a half when its last digit says a half.
    const bool rest = units.DivideBy(divisor) != 0;
    if (rest) {
        units.MultiplyBy(10);
        units.Add(WideNumber(1));
        ++scale;
    }
    Decimal quotient = Rounded(dividend.negative, units, scale);
    while (quotient.scale > 0) {
        WideNumber shorter(quotient.magnitude);
        if (shorter.DivideBy(10) != 0) {
            break;
        }
        quotient.magnitude = shorter.LowGroups();
        --quotient.scale;
    }
    return quotient;
}

std::strong_ordering Compare(const Decimal& left, const Decimal& right) {
    const bool leftNegative = left.negative && !IsZero(left);
    const bool rightNegative = right.negative && !IsZero(right);
    if (leftNegative != rightNegative) {
        return leftNegative ? std::strong_ordering::less : std::strong_ordering::greater;
    }
    return leftNegative ? CompareMagnitudes(right, left) : CompareMagnitudes(left, right);
}

Decimal Negated(const Decimal& value) {
    Decimal negated = value;
    negated.negative = !value.negative && !IsZero(value);
    return negated;
}

std::array<std::uint8_t, 32> UnitBytes(const Decimal& value) {
    return UnitsOf(value, kMostDigits).Bytes();
}

std::optional<Decimal> ExactDecimal(const Variant& value) {
    return std::visit(ExactVisitor(), value.Stored());
}

std::optional<Decimal> ShortestDecimal(double value) {
    std::array<char, 400> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
    return end.ec == std::errc() ? ReadDecimal(Text(digits.data(), end.ptr)) : std::nullopt;
}

}  // namespace quardele::basic
