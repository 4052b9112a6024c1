#include "number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

#include <basic/conversion.h>
#include <basic/locale.h>

namespace quardele::basic {
namespace {

constexpr int kDoubleDigits = 15;
constexpr int kSingleDigits = 7;
constexpr std::size_t kCurrencyDecimals = 4;

Text FromAscii(const std::string& ascii) {
    return {ascii.begin(), ascii.end()};
}

/// Digits with the separator before the last `decimals` of them; zeros at the end of the decimals go.
Text PlacePoint(std::string digits, std::size_t decimals, bool negative) {
    if (digits.size() <= decimals) {
        digits.insert(0, decimals + 1 - digits.size(), '0');
    }
    while (decimals > 0 && digits.back() == '0') {
        digits.pop_back();
        --decimals;
    }
    Text text = FromAscii(digits);
    if (decimals > 0) {
        text.insert(text.size() - decimals, 1, SessionLocale().decimalSeparator);
    }
    const bool isZero = text == u"0";
    return negative && !isZero ? u"-" + text : text;
}

Text ExponentText(const std::string& digits, int exponent, bool negative) {
    std::string power = std::to_string(std::abs(exponent));
    power.insert(0, power.size() < 2 ? 1 : 0, '0');
    return PlacePoint(digits, digits.size() - 1, negative) + (exponent < 0 ? u"E-" : u"E+") +
           FromAscii(power);
}

/// A number as d.ddd * 10^exponent.
struct Scientific {
    /// Without a point and without zeros at the end; empty for 0.
    std::string digits;
    int exponent = 0;
};

/// The magnitude of a number, rounded to so many digits.
Scientific RoundedTo(int precision, double value) {
    std::array<char, 64> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                       std::chars_format::scientific, precision - 1);
    const std::string all(buffer.data(), written.ptr);
    const std::size_t e = all.find('e');
    Scientific result{all.substr(0, 1) + all.substr(2, e - 2), std::stoi(all.substr(e + 1))};
    result.digits.erase(result.digits.find_last_not_of('0') + 1);
    return result;
}

/// Plain when neither the whole part nor the decimals need more places than `precision`, else with an
/// exponent.
Text FloatingText(double value, int precision) {
    const bool negative = std::signbit(value);
    if (!std::isfinite(value)) {
        return (negative ? u"-1" : u"1") + Text(1, SessionLocale().decimalSeparator) +
               (std::isnan(value) ? u"#IND" : u"#INF");
    }
    auto [digits, exponent] = RoundedTo(precision, value);
    if (digits.empty()) {
        return u"0";
    }
    const int decimals = static_cast<int>(digits.size()) - 1 - exponent;
    if (exponent >= precision || decimals > precision) {
        return ExponentText(digits, exponent, negative);
    }
    digits.append(static_cast<std::size_t>(std::max(0, -decimals)), '0');
    return PlacePoint(digits, static_cast<std::size_t>(std::max(0, decimals)), negative);
}

/// Divides the 128-bit magnitude by ten in place; gives the remainder.
unsigned DivideByTen(std::array<std::uint32_t, 4>& magnitude) {
    std::uint64_t remainder = 0;
    for (std::uint32_t& part : magnitude) {
        const std::uint64_t dividend = (remainder << 32) | part;
        part = static_cast<std::uint32_t>(dividend / 10);
        remainder = dividend % 10;
    }
    return static_cast<unsigned>(remainder);
}

std::string DigitsOf(std::array<std::uint32_t, 4> magnitude) {
    std::string digits;
    const auto isZero = [](std::uint32_t part) { return part == 0; };
    while (!std::all_of(magnitude.begin(), magnitude.end(), isZero)) {
        digits += static_cast<char>('0' + DivideByTen(magnitude));
    }
    std::reverse(digits.begin(), digits.end());
    return digits;
}

}  // namespace

Text NumberText(double value) {
    return FloatingText(value, kDoubleDigits);
}

Text SingleText(float value) {
    return FloatingText(static_cast<double>(value), kSingleDigits);
}

Text CurrencyText(Currency value) {
    const bool negative = value.tenThousandths < 0;
    const auto units = static_cast<std::uint64_t>(value.tenThousandths);
    return PlacePoint(std::to_string(negative ? 0 - units : units), kCurrencyDecimals, negative);
}

Text DecimalText(const Decimal& value) {
    return PlacePoint(DigitsOf(value.magnitude), value.scale, value.negative);
}

double DecimalValue(const Decimal& value) {
    const std::string written =
        (value.negative ? "-0" : "0") + DigitsOf(value.magnitude) + "e-" + std::to_string(value.scale);
    double number = 0;
    std::from_chars(written.data(), written.data() + written.size(), number);
    return number;
}

}  // namespace quardele::basic
