#include "cell_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string_view>

namespace quardele::mdb {

namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";
constexpr std::string_view kUpperHexDigits = "0123456789ABCDEF";
constexpr double kSecondsPerDay = 86400;

template <class Number>
void AppendNumber(Number value, TextBuffer& text) {
    constexpr std::size_t kMost = 40;
    char* const at = text.Room(kMost);
    text.EndAt(std::to_chars(at, at + kMost, value).ptr);
}

// Few decimals, as amounts have them. Of at most fifteen digits there is one text for a number and it is the
// shortest, within these bounds without an exponent as well. False, and nothing appended, for all others.
bool AppendFewDecimals(double value, TextBuffer& text) {
    constexpr double kLeast = 0.001;
    constexpr double kEnd = 100000;
    constexpr unsigned kUnit = 10000;
    const double magnitude = std::abs(value);
    if (!(magnitude >= kLeast && magnitude < kEnd)) {
        return false;
    }
    const auto units = static_cast<unsigned>(magnitude * kUnit + 0.5);
    if (static_cast<double>(units) / kUnit != magnitude) {
        return false;
    }
    constexpr std::size_t kMost = 11;  // -99999.9999
    char* at = text.Room(kMost);
    char* const end = at + kMost;
    *at = '-';
    at = std::to_chars(at + (value < 0 ? 1 : 0), end, units / kUnit).ptr;
    if (unsigned rest = units % kUnit; rest != 0) {
        *at++ = '.';
        for (; rest != 0; rest = rest * 10 % kUnit) {
            *at++ = static_cast<char>('0' + rest * 10 / kUnit);
        }
    }
    text.EndAt(at);
    return true;
}

/// The texts of 0 to 99, two digits each.
constexpr auto kTwoDigits = [] {
    std::array<char, 200> digits{};
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        digits[i] = static_cast<char>('0' + i / 20);
        digits[i + 1] = static_cast<char>('0' + i / 2 % 10);
    }
    return digits;
}();

void PutTwo(unsigned value, char* at) {
    std::copy_n(kTwoDigits.data() + std::size_t{2} * value, 2, at);
}

struct Day {
    unsigned year, month, day;
};

// The day of the Gregorian calendar, from days since 30/12/1899. Counts in years that begin in March, so that
// the day that comes and goes is the last one; eras are the 400 years after which the calendar repeats.
Day DayOf(std::int64_t days) {
    constexpr std::int64_t kDaysPerEra = 146097;
    constexpr std::int64_t kFromEpoch = 693899;  // 01/03/0000 to 30/12/1899
    const std::int64_t shifted = days + kFromEpoch;
    const std::int64_t era = shifted / kDaysPerEra;
    const auto inEra = static_cast<unsigned>(shifted % kDaysPerEra);
    const unsigned yearOfEra = (inEra - inEra / 1460 + inEra / 36524 - inEra / 146096) / 365;
    const unsigned inYear = inEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const unsigned march = (5 * inYear + 2) / 153;
    const unsigned month = march < 10 ? march + 3 : march - 9;
    return {static_cast<unsigned>(era * 400) + yearOfEra + (month <= 2 ? 1 : 0), month,
            inYear - (153 * march + 2) / 5 + 1};
}

bool IsMoment(double days) {
    constexpr double kFirst = -657434;  // 01/01/0100
    constexpr double kEnd = 2958466;    // behind 31/12/9999
    return days > kFirst - 1 && days < kEnd;
}

struct ExactTime {
    std::int64_t day;
    unsigned second;
    std::string fraction;  ///< of the second, with its point; empty for whole ones
};

// A whole second, where the number of days is just that one. What rounds to midnight belongs to the next day.
std::optional<ExactTime> WholeSecondOf(double day, double seconds, double days) {
    const double rounded = std::floor(seconds + 0.5);
    const bool isMidnight = rounded == kSecondsPerDay;
    const double wholeDay = isMidnight ? day + 1 : day;
    const double second = isMidnight ? 0 : rounded;
    if (MomentDays(wholeDay, second) != days) {
        return std::nullopt;
    }
    return ExactTime{static_cast<std::int64_t>(wholeDay), static_cast<unsigned>(second), {}};
}

// The time of day that means this number of days and no other, with as few digits as that takes. None for
// numbers that need more digits than any clock has, and for those between -1 and 0: their times are those
// between 0 and 1.
std::optional<ExactTime> ExactTimeOf(double days) {
    constexpr int kMostDigits = 12;
    const double day = std::trunc(days);
    const double seconds = std::abs(days - day) * kSecondsPerDay;
    if (auto whole = WholeSecondOf(day, seconds, days)) {
        return whole;
    }
    std::array<char, 32> buffer;
    for (int digits = 1; digits <= kMostDigits; ++digits) {
        const int length = std::snprintf(buffer.data(), buffer.size(), "%.*f", digits, seconds);
        const std::string_view written(buffer.data(), static_cast<std::size_t>(length));
        double value = 0;
        std::from_chars(written.data(), written.data() + written.size(), value);
        if (value < kSecondsPerDay && MomentDays(day, value) == days) {
            return ExactTime{static_cast<std::int64_t>(day), static_cast<unsigned>(value),
                             std::string(written.substr(written.find('.')))};
        }
    }
    return std::nullopt;
}

void AppendDayAndTime(std::int64_t day, unsigned second, TextBuffer& text) {
    constexpr std::string_view kForm = "YYYY-MM-DD 00:00:00";
    const Day date = DayOf(day);
    char* const at = std::copy(kForm.begin(), kForm.end(), text.Room(kForm.size())) - kForm.size();
    PutTwo(date.year / 100, at);
    PutTwo(date.year % 100, at + 2);
    PutTwo(date.month, at + 5);
    PutTwo(date.day, at + 8);
    if (second != 0) {
        PutTwo(second / 3600, at + 11);
        PutTwo(second / 60 % 60, at + 14);
        PutTwo(second % 60, at + 17);
    }
    text.EndAt(at + kForm.size());
}

// Digits with a point before the last `scale` of them.
void AppendScaled(std::string digits, bool negative, std::size_t scale, TextBuffer& text) {
    if (digits.size() <= scale) {
        digits.insert(0, scale + 1 - digits.size(), '0');
    }
    if (scale > 0) {
        digits.insert(digits.size() - scale, 1, '.');
    }
    if (negative) {
        text += '-';
    }
    text += digits;
}

std::string DigitsOf(basic::Decimal decimal) {
    std::string digits;
    bool isZero = false;
    while (!isZero) {
        std::uint64_t remainder = 0;
        isZero = true;
        for (std::uint32_t& word : decimal.magnitude) {
            const std::uint64_t part = remainder << 32 | word;
            word = static_cast<std::uint32_t>(part / 10);
            remainder = part % 10;
            isZero = isZero && word == 0;
        }
        digits.insert(digits.begin(), static_cast<char>('0' + remainder));
    }
    return digits;
}

}  // namespace

void AppendInteger(std::int64_t value, TextBuffer& text) {
    AppendNumber(value, text);
}

void AppendDouble(double value, TextBuffer& text) {
    if (!AppendFewDecimals(value, text)) {
        AppendNumber(value, text);
    }
}

void AppendSingle(float value, TextBuffer& text) {
    AppendNumber(value, text);
}

double MomentDays(double day, double seconds) {
    const double time = seconds / kSecondsPerDay;
    return day < 0 ? day - time : day + time;
}

bool AppendMoment(double days, TextBuffer& text) {
    // Whole days, the most by far, need no look at the time.
    const bool isMoment = IsMoment(days);
    if (const auto whole = isMoment ? static_cast<std::int64_t>(days) : 0;
        isMoment && static_cast<double>(whole) == days) {
        AppendDayAndTime(whole, 0, text);
        return true;
    }
    const auto time = isMoment ? ExactTimeOf(days) : std::nullopt;
    if (!time) {
        AppendNumber(days, text);
        return false;
    }
    AppendDayAndTime(time->day, time->second, text);
    text += time->fraction;
    return true;
}

void AppendAmount(basic::Currency amount, TextBuffer& text) {
    const bool negative = amount.tenThousandths < 0;
    const auto bits = static_cast<std::uint64_t>(amount.tenThousandths);
    constexpr std::size_t kDecimals = 4;
    AppendScaled(std::to_string(negative ? ~bits + 1 : bits), negative, kDecimals, text);
}

void AppendDecimal(const basic::Decimal& decimal, TextBuffer& text) {
    AppendScaled(DigitsOf(decimal), decimal.negative, decimal.scale, text);
}

// As people write them: the first three groups are numbers, stored little-endian.
void AppendGuid(const basic::Guid& guid, TextBuffer& text) {
    constexpr std::array<std::size_t, 16> kOrder = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    text += '{';
    for (std::size_t i = 0; i < kOrder.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) {
            text += '-';
        }
        const std::uint8_t byte = guid.bytes[kOrder[i]];
        text += kUpperHexDigits[byte >> 4];
        text += kUpperHexDigits[byte & 0x0F];
    }
    text += '}';
}

void AppendHex(std::span<const std::uint8_t> bytes, TextBuffer& text) {
    for (const std::uint8_t byte : bytes) {
        text += kHexDigits[byte >> 4];
        text += kHexDigits[byte & 0x0F];
    }
}

}  // namespace quardele::mdb
