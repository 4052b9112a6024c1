#include "rows/decimal_codec.h"

#include <cmath>

#include <basic/conversion.h>

namespace quardele::jet {

namespace {

using Magnitude = decltype(basic::Decimal::magnitude);

constexpr int kMostDigits = 28;
constexpr std::uint8_t kCurrencyScale = 4;
constexpr double kWord = 4294967296.0;

[[nodiscard]] bool IsZero(const Magnitude& magnitude) {
    return magnitude == Magnitude{};
}

// Multiplies by ten; false when the result needs more than 128 bits.
[[nodiscard]] bool TimesTen(Magnitude& magnitude) {
    std::uint64_t carry = 0;
    for (std::size_t i = magnitude.size(); i-- > 0;) {
        carry += std::uint64_t{magnitude[i]} * 10;
        magnitude[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    return carry == 0;
}

// Divides by ten and gives the remainder.
[[nodiscard]] std::uint32_t DivideByTen(Magnitude& magnitude) {
    std::uint64_t remainder = 0;
    for (std::uint32_t& word : magnitude) {
        const std::uint64_t part = remainder << 32 | word;
        word = static_cast<std::uint32_t>(part / 10);
        remainder = part % 10;
    }
    return static_cast<std::uint32_t>(remainder);
}

void AddOne(Magnitude& magnitude) {
    for (std::size_t i = magnitude.size(); i-- > 0;) {
        if (++magnitude[i] != 0) {
            return;
        }
    }
}

[[nodiscard]] std::optional<basic::Decimal> Rescale(basic::Decimal value, std::uint8_t scale) {
    for (; value.scale < scale; ++value.scale) {
        if (!TimesTen(value.magnitude)) {
            return std::nullopt;
        }
    }
    std::uint32_t lastDigit = 0;
    for (; value.scale > scale; --value.scale) {
        lastDigit = DivideByTen(value.magnitude);
    }
    if (lastDigit >= 5) {
        AddOne(value.magnitude);
    }
    if (DigitCount(value) > kMostDigits) {
        return std::nullopt;
    }
    value.negative = value.negative && !IsZero(value.magnitude);
    return value;
}

[[nodiscard]] std::optional<basic::Decimal> FromDouble(double number, std::uint8_t scale) {
    double rest = std::round(std::abs(number) * std::pow(10.0, scale));
    if (!(rest < 1e28)) {
        return std::nullopt;
    }
    basic::Decimal value;
    value.scale = scale;
    value.negative = number < 0 && rest > 0;
    for (std::size_t i = value.magnitude.size(); i-- > 0;) {
        const double word = std::fmod(rest, kWord);
        value.magnitude[i] = static_cast<std::uint32_t>(word);
        rest = (rest - word) / kWord;
    }
    return value;
}

[[nodiscard]] basic::Decimal FromInteger(std::int64_t number, std::uint8_t scale) {
    basic::Decimal value;
    value.scale = scale;
    value.negative = number < 0;
    const auto bits = static_cast<std::uint64_t>(number);
    const std::uint64_t magnitude = value.negative ? ~bits + 1 : bits;
    value.magnitude = {0, 0, static_cast<std::uint32_t>(magnitude >> 32),
                       static_cast<std::uint32_t>(magnitude)};
    return value;
}

}  // namespace

int DigitCount(const basic::Decimal& value) {
    Magnitude rest = value.magnitude;
    int digits = 0;
    for (; !IsZero(rest); ++digits) {
        static_cast<void>(DivideByTen(rest));
    }
    return digits;
}

double DecimalNumber(const basic::Decimal& value) {
    double number = 0;
    for (const std::uint32_t word : value.magnitude) {
        number = number * kWord + word;
    }
    number /= std::pow(10.0, value.scale);
    return value.negative ? -number : number;
}

std::optional<basic::Decimal> ToDecimal(const basic::Variant& value, std::uint8_t scale) {
    if (value.Is<basic::Decimal>()) {
        return Rescale(value.As<basic::Decimal>(), scale);
    }
    if (value.Is<basic::Currency>()) {
        return Rescale(FromInteger(value.As<basic::Currency>().tenThousandths, kCurrencyScale), scale);
    }
    const auto number = basic::NumberOf(value);
    return number ? FromDouble(*number, scale) : std::nullopt;
}

}  // namespace quardele::jet
