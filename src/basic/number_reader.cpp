#include "number_reader.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>
#include <system_error>

#include <basic/characters.h>

namespace quardele::basic {
namespace {

constexpr int kLargestExponent = 99999;
constexpr int kCurrencyDecimals = 4;
/// The largest magnitude of a negative amount; a positive one may be one less.
constexpr std::uint64_t kAmountLimit = std::uint64_t{1} << 63;

/// Walks over a text, unit by unit.
class Scanner {
 public:
    explicit Scanner(TextView text) : text_(text) {}

    [[nodiscard]] std::size_t Position() const { return position_; }
    void GoBackTo(std::size_t position) { position_ = position; }
    [[nodiscard]] bool AtDigit() const { return position_ < text_.size() && IsDigit(text_[position_]); }

    /// Steps over one of the units; gives it, or 0 when something else stands there.
    char16_t Take(TextView units) {
        if (position_ == text_.size() || units.find(text_[position_]) == TextView::npos) {
            return 0;
        }
        return text_[position_++];
    }

    void TakeDigits(std::string& digits) {
        while (AtDigit()) {
            digits += static_cast<char>(text_[position_++]);
        }
    }

 private:
    TextView text_;
    std::size_t position_ = 0;
};

/// The exponent at the scanner; without digits behind it, "e" is no part of the number.
int ReadExponent(Scanner& scanner) {
    const std::size_t start = scanner.Position();
    if (scanner.Take(u"eEdD") == 0) {
        return 0;
    }
    const bool negative = scanner.Take(u"+-") == u'-';
    if (!scanner.AtDigit()) {
        scanner.GoBackTo(start);
        return 0;
    }
    std::string digits;
    scanner.TakeDigits(digits);
    int exponent = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    if (read.ec != std::errc() || exponent > kLargestExponent) {
        exponent = kLargestExponent;
    }
    return negative ? -exponent : exponent;
}

/// The power of ten of the first digit that is not 0, to tell too large numbers from too small ones.
long MagnitudeOf(const WrittenNumber& number) {
    const auto first = static_cast<long>(number.digits.find_first_of("123456789"));
    const auto point = static_cast<long>(number.digits.find('.'));
    return point - first + number.exponent;
}

/// Whether digits behind the last one kept make it one more: halves go to the even neighbour.
bool RoundsUp(std::string_view rest, bool lastIsOdd) {
    if (rest.empty() || rest.front() != '5') {
        return !rest.empty() && rest.front() > '5';
    }
    return lastIsOdd || rest.find_first_not_of('0', 1) != std::string_view::npos;
}

}  // namespace

double WrittenNumber::Value() const {
    const std::string written = digits + "e" + std::to_string(exponent);
    double value = 0;
    const auto read = std::from_chars(written.data(), written.data() + written.size(), value);
    if (read.ec == std::errc::result_out_of_range) {
        value = MagnitudeOf(*this) > 0 ? std::numeric_limits<double>::infinity() : 0;
    }
    return negative && value != 0 ? -value : value;
}

std::optional<std::int64_t> WrittenNumber::TenThousandths() const {
    const std::size_t point = digits.find('.');
    const std::string all = digits.substr(0, point) + digits.substr(point + 1);
    const auto kept = static_cast<long>(point) + exponent + kCurrencyDecimals;
    if (kept < 0) {
        return 0;
    }
    std::string whole = "0" + all.substr(0, static_cast<std::size_t>(kept));
    whole.resize(static_cast<std::size_t>(kept) + 1, '0');
    std::uint64_t amount = 0;
    const auto read = std::from_chars(whole.data(), whole.data() + whole.size(), amount);
    if (read.ec != std::errc() || amount > kAmountLimit) {
        return {};
    }
    const std::string_view rest =
        std::string_view(all).substr(std::min(all.size(), static_cast<std::size_t>(kept)));
    amount += RoundsUp(rest, amount % 2 != 0) ? 1 : 0;
    const std::uint64_t limit = negative ? kAmountLimit : kAmountLimit - 1;
    if (amount > limit) {
        return {};
    }
    return static_cast<std::int64_t>(negative ? 0 - amount : amount);
}

std::optional<double> ReadNumberOfBase(TextView text) {
    Scanner scanner(text);
    if (scanner.Take(u"&") == 0) {
        return {};
    }
    const bool hexadecimal = scanner.Take(u"hH") != 0;
    if (!hexadecimal && scanner.Take(u"oO") == 0) {
        return {};
    }
    const TextView digits = hexadecimal ? u"0123456789abcdefABCDEF" : u"01234567";
    std::string written = "0";
    while (const char16_t digit = scanner.Take(digits)) {
        written += static_cast<char>(digit);
    }
    std::uint32_t number = 0;
    const auto read =
        std::from_chars(written.data(), written.data() + written.size(), number, hexadecimal ? 16 : 8);
    if (read.ec != std::errc()) {
        return std::numeric_limits<double>::infinity();
    }
    const bool isShort = number <= std::numeric_limits<std::uint16_t>::max() && scanner.Take(u"&") == 0;
    return isShort ? static_cast<std::int16_t>(number) : static_cast<std::int32_t>(number);
}

std::optional<WrittenNumber> ReadNumber(TextView text, char16_t decimalSeparator) {
    Scanner scanner(text);
    WrittenNumber number;
    number.negative = scanner.Take(u"+-") == u'-';
    scanner.TakeDigits(number.digits);
    number.digits += '.';
    if (scanner.Take(TextView(&decimalSeparator, 1)) != 0) {
        scanner.TakeDigits(number.digits);
    }
    if (number.digits == ".") {
        return {};
    }
    number.exponent = ReadExponent(scanner);
    number.length = scanner.Position();
    return number;
}

}  // namespace quardele::basic
