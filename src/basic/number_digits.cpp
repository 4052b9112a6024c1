#include "number_digits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include <basic/characters.h>
#include <basic/conversion.h>
#include <basic/locale.h>

namespace quardele::basic {
namespace {

constexpr int kDoubleDigits = 15;
constexpr int kSingleDigits = 7;

NumberDigits WithoutZerosAhead(std::string digits, int point) {
    const std::size_t first = std::min(digits.find_first_not_of('0'), digits.size());
    const int zeros = static_cast<int>(first);
    digits.erase(0, first);
    const bool zero = digits.empty();
    return {std::move(digits), zero ? 0 : point - zeros};
}

/// Of a number whose text has no exponent.
NumberDigits PlainDigits(const Text& text) {
    std::string digits;
    int point = 0;
    bool decimals = false;
    for (const char16_t unit : text) {
        if (unit == SessionLocale().decimalSeparator) {
            decimals = true;
        } else if (IsDigit(unit)) {
            digits += static_cast<char>(unit);
            point += decimals ? 0 : 1;
        }
    }
    return WithoutZerosAhead(std::move(digits), point);
}

NumberDigits FloatingDigits(double number, int precision) {
    std::array<char, 64> written{};
    const auto end = std::to_chars(written.data(), written.data() + written.size(), std::fabs(number),
                                   std::chars_format::scientific, precision - 1);
    const std::string all(written.data(), end.ptr);
    const std::size_t e = all.find('e');
    return WithoutZerosAhead(all.substr(0, 1) + all.substr(2, e - 2), std::stoi(all.substr(e + 1)) + 1);
}

}  // namespace

void NumberDigits::RoundTo(int decimals) {
    const int kept = point + decimals;
    if (kept < 0) {
        digits.clear();
    }
    if (kept < 0 || kept >= static_cast<int>(digits.size())) {
        return;
    }
    const bool up = digits[static_cast<std::size_t>(kept)] >= '5';
    digits.resize(static_cast<std::size_t>(kept));
    if (!up) {
        return;
    }
    const std::size_t nines = digits.size() - (digits.find_last_not_of('9') + 1);
    digits.resize(digits.size() - nines);
    if (digits.empty()) {
        digits = "1";
        ++point;
    } else {
        ++digits.back();
    }
}

std::string NumberDigits::Whole() const {
    std::string whole;
    for (int i = 0; i < point; ++i) {
        whole += At(i);
    }
    return whole;
}

int NumberDigits::Decimals() const {
    const std::size_t used = digits.find_last_not_of('0') + 1;
    return std::max(0, static_cast<int>(used) - point);
}

char NumberDigits::Decimal(int position) const {
    return At(point + position);
}

char NumberDigits::At(int position) const {
    return position < 0 || position >= static_cast<int>(digits.size())
               ? '0'
               : digits[static_cast<std::size_t>(position)];
}

NumberDigits DigitsOf(const Variant& value) {
    if (value.Is<Currency>() || value.Is<Decimal>()) {
        return PlainDigits(CStr(value));
    }
    return FloatingDigits(CDbl(value), value.Is<float>() ? kSingleDigits : kDoubleDigits);
}

}  // namespace quardele::basic
