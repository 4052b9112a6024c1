#include "cell_parser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <type_traits>

#include <basic/date.h>
#include <basic/runtime_error.h>

#include "cell_text.h"
#include "failure.h"
#include "utf8_text.h"

namespace quardele::mdb {

namespace {

constexpr Message kNoTruth{"« |1 » n'est ni 1 ni 0", "\"|1\" is neither 1 nor 0"};
constexpr Message kNoNumber{"« |1 » n'est pas un nombre pour cette colonne",
                            "\"|1\" is no number for this column"};
constexpr Message kNoDate{"« |1 » n'est pas une date (AAAA-MM-JJ HH:MM:SS)",
                          "\"|1\" is no date (YYYY-MM-DD HH:MM:SS)"};
constexpr Message kNoHex{"« |1 » n'est pas en chiffres hexadécimaux", "\"|1\" is not in hexadecimal digits"};
constexpr Message kNoGuid{"« |1 » n'est pas un GUID", "\"|1\" is no GUID"};
constexpr Message kNoWay{"aucune valeur ne peut être importée dans cette colonne",
                         "no value can be imported into this column"};

using basic::Variant;

// The words for infinity and for what is no number are none: a column cannot hold them.
template <class Number>
std::optional<Number> NumberOf(std::string_view text) {
    Number value{};
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (failure != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    if constexpr (std::is_floating_point_v<Number>) {
        if (!std::isfinite(value)) {
            return std::nullopt;
        }
    }
    return value;
}

template <class Number>
Variant ParseNumber(const std::string& text) {
    if (const auto number = NumberOf<Number>(text)) {
        return *number;
    }
    throw Failure(kNoNumber, {text});
}

Variant ParseTruth(const std::string& text) {
    if (text != "1" && text != "0") {
        throw Failure(kNoTruth, {text});
    }
    return text == "1";
}

bool IsDigit(char unit) {
    return unit >= '0' && unit <= '9';
}

/// A number with a fixed number of decimals, as its digits without the point.
struct Scaled {
    bool negative = false;
    std::string digits;
};

// Fewer decimals are filled up; more are allowed only when they are zeros.
std::optional<Scaled> ParseScaled(std::string_view text, std::size_t scale) {
    Scaled number;
    number.negative = text.starts_with('-');
    text.remove_prefix(number.negative || text.starts_with('+') ? 1 : 0);
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string decimals(point == text.size() ? std::string_view() : text.substr(point + 1));
    const std::size_t last = decimals.find_last_not_of('0');
    if (decimals.size() > scale && last != std::string::npos && last >= scale) {
        return std::nullopt;
    }
    decimals.resize(scale, '0');
    const std::string_view whole = text.substr(0, point);
    number.digits = std::string(whole) + decimals;
    const bool hasDigits = !whole.empty() || point + 1 < text.size();
    if (!hasDigits || !std::all_of(number.digits.begin(), number.digits.end(), IsDigit)) {
        return std::nullopt;
    }
    return number;
}

Variant ParseAmount(const std::string& text) {
    constexpr std::size_t kDecimals = 4;
    if (const auto scaled = ParseScaled(text, kDecimals)) {
        if (const auto amount = NumberOf<std::int64_t>((scaled->negative ? "-" : "") + scaled->digits)) {
            return basic::Currency{*amount};
        }
    }
    throw Failure(kNoNumber, {text});
}

// magnitude * 10 + digit; false when it does not fit.
bool AppendDigit(char digit, std::array<std::uint32_t, 4>& magnitude) {
    std::uint64_t carry = static_cast<std::uint64_t>(digit - '0');
    for (std::size_t i = magnitude.size(); i-- > 0;) {
        carry += std::uint64_t{magnitude[i]} * 10;
        magnitude[i] = static_cast<std::uint32_t>(carry & 0xFFFFFFFF);
        carry >>= 32;
    }
    return carry == 0;
}

Variant ParseDecimal(const std::string& text, const jet::Column& column) {
    const auto scaled = ParseScaled(text, column.scale);
    if (!scaled) {
        throw Failure(kNoNumber, {text});
    }
    basic::Decimal decimal{.negative = scaled->negative, .scale = column.scale};
    for (const char digit : scaled->digits) {
        if (!AppendDigit(digit, decimal.magnitude)) {
            throw Failure(kNoNumber, {text});
        }
    }
    return decimal;
}

// The digits at the places of a pattern, where other characters stand for themselves.
bool MatchesPattern(std::string_view text, std::string_view pattern) {
    return text.size() == pattern.size() &&
           std::equal(text.begin(), text.end(), pattern.begin(), [](char unit, char expected) {
               return expected == '0' ? IsDigit(unit) : unit == expected;
           });
}

int NumberAt(std::string_view text, std::size_t at, std::size_t length) {
    return NumberOf<int>(text.substr(at, length)).value_or(0);
}

/// What stands behind HH:MM: seconds, whole or with a fraction.
std::optional<double> ParseSeconds(std::string_view text) {
    const bool isPlain = text.size() == 2 || (text.size() > 3 && text[2] == '.');
    const std::string_view fraction = text.size() > 3 ? text.substr(3) : std::string_view();
    if (!isPlain || !IsDigit(text[0]) || !IsDigit(text[1]) ||
        !std::all_of(fraction.begin(), fraction.end(), IsDigit)) {
        return std::nullopt;
    }
    return NumberOf<double>(text);
}

/// HH:MM:SS, perhaps with a fraction, in seconds.
std::optional<double> ParseTime(std::string_view text) {
    constexpr std::string_view kMinutes = "00:00:";
    if (!MatchesPattern(text.substr(0, kMinutes.size()), kMinutes)) {
        return std::nullopt;
    }
    const auto minutes = text.substr(0, kMinutes.size());
    const auto written = text.substr(kMinutes.size());
    const int hour = NumberAt(minutes, 0, 2);
    const int minute = NumberAt(minutes, 3, 2);
    const auto seconds = ParseSeconds(written);
    if (!seconds || hour > 23 || minute > 59 || *seconds >= 60) {
        return std::nullopt;
    }
    // One number from all digits, as they were one when they were written.
    const std::string whole = std::to_string((hour * 60 + minute) * 60 + NumberAt(written, 0, 2));
    return NumberOf<double>(whole + std::string(written.substr(2)));
}

std::optional<basic::Date> ParseMoment(std::string_view text) {
    constexpr std::string_view kDay = "0000-00-00";
    const bool hasTime = text.size() > kDay.size();
    const auto seconds = hasTime ? ParseTime(text.substr(kDay.size() + 1)) : std::optional(0.0);
    if (!MatchesPattern(text.substr(0, kDay.size()), kDay) || !seconds ||
        (hasTime && text[kDay.size()] != ' ')) {
        return std::nullopt;
    }
    try {
        const basic::Date day =
            basic::DateOf(NumberAt(text, 0, 4), NumberAt(text, 5, 2), NumberAt(text, 8, 2));
        return basic::Date{MomentDays(day.days, *seconds)};
    } catch (const basic::RuntimeError&) {
        return std::nullopt;  // 30 February
    }
}

// What dump writes as a number of days because no text of a date means it.
bool IsWithoutText(double days) {
    TextBuffer unused;
    return !AppendMoment(days, unused);
}

// Of a file's numbers of days some are no date; dump writes these numbers. Any other bare number is rather a
// year or a date in another notation.
Variant ParseDate(const std::string& text) {
    if (const auto moment = ParseMoment(text)) {
        return *moment;
    }
    if (const auto days = NumberOf<double>(text); days && IsWithoutText(*days)) {
        return basic::Date{*days};
    }
    throw Failure(kNoDate, {text});
}

std::optional<unsigned> HexDigit(char unit) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const char lower = unit >= 'A' && unit <= 'F' ? static_cast<char>(unit - 'A' + 'a') : unit;
    const std::size_t digit = kDigits.find(lower);
    return digit == std::string_view::npos ? std::nullopt : std::optional(static_cast<unsigned>(digit));
}

std::optional<basic::Binary> BytesOf(std::string_view hex) {
    basic::Binary bytes;
    if (hex.size() % 2 != 0) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        const auto high = HexDigit(hex[i]);
        const auto low = HexDigit(hex[i + 1]);
        if (!high || !low) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<std::uint8_t>(*high << 4 | *low));
    }
    return bytes;
}

Variant ParseBinary(const std::string& text) {
    if (auto bytes = BytesOf(text)) {
        return std::move(*bytes);
    }
    throw Failure(kNoHex, {text});
}

// The digits of {01234567-89AB-CDEF-0123-456789ABCDEF}, whose braces may be missing together.
std::string GuidDigits(std::string_view text) {
    constexpr std::string_view kGroups = "00000000-0000-0000-0000-000000000000";
    if (text.size() == kGroups.size() + 2 && text.front() == '{' && text.back() == '}') {
        text = text.substr(1, kGroups.size());
    }
    std::string digits;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.size() != kGroups.size() || (text[i] == '-') != (kGroups[i] == '-')) {
            return {};
        }
        if (text[i] != '-') {
            digits += text[i];
        }
    }
    return digits;
}

// The first three groups are numbers, stored little-endian.
Variant ParseGuid(const std::string& text) {
    const auto bytes = BytesOf(GuidDigits(text));
    basic::Guid guid;
    if (!bytes || bytes->size() != guid.bytes.size()) {
        throw Failure(kNoGuid, {text});
    }
    std::copy(bytes->begin(), bytes->end(), guid.bytes.begin());
    std::reverse(guid.bytes.begin(), guid.bytes.begin() + 4);
    std::reverse(guid.bytes.begin() + 4, guid.bytes.begin() + 6);
    std::reverse(guid.bytes.begin() + 6, guid.bytes.begin() + 8);
    return guid;
}

}  // namespace

Variant ParseCell(const CsvField& field, const jet::Column& column) {
    const std::string& text = field.text;
    if (text.empty() && !field.quoted) {
        return column.type == jet::ColumnType::Boolean ? Variant(false) : Variant(basic::Null{});
    }
    switch (column.type) {
        case jet::ColumnType::Boolean:
            return ParseTruth(text);
        case jet::ColumnType::Byte:
            return ParseNumber<std::uint8_t>(text);
        case jet::ColumnType::Integer:
            return ParseNumber<std::int16_t>(text);
        case jet::ColumnType::Long:
            return ParseNumber<std::int32_t>(text);
        case jet::ColumnType::Currency:
            return ParseAmount(text);
        case jet::ColumnType::Single:
            return ParseNumber<float>(text);
        case jet::ColumnType::Double:
            return ParseNumber<double>(text);
        case jet::ColumnType::Numeric:
            return ParseDecimal(text, column);
        case jet::ColumnType::Date:
            return ParseDate(text);
        case jet::ColumnType::Text:
        case jet::ColumnType::Memo:
            return TextOf(text);
        case jet::ColumnType::Binary:
        case jet::ColumnType::Ole:
            return ParseBinary(text);
        case jet::ColumnType::Guid:
            return ParseGuid(text);
        case jet::ColumnType::Opaque:
            break;
    }
    throw Failure(kNoWay);
}

}  // namespace quardele::mdb
