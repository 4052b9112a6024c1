// Reading dates from texts as operators type them.
#include <algorithm>
#include <optional>
#include <vector>

#include <basic/characters.h>
#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/locale.h>

#include "calendar_names.h"

namespace quardele::basic {
namespace {

constexpr int kLongestNumber = 4;
/// Years of one or two digits: up to this one they are 2000 and so on, above it 1900 and so on.
constexpr int kLastYearOf2000s = 29;

/// On one line.
constexpr bool IsSpace(char16_t c) {
    return c == u' ' || c == u'\t' || c == 0x00A0;
}
constexpr bool IsSeparator(char16_t c) {
    return c == u'/' || c == u'-' || c == u'.';
}
constexpr bool IsNameLetter(char16_t c) {
    return !IsDigit(c) && !IsSpace(c) && !IsSeparator(c) && c != u':';
}

/// A number or the name of a month, with the number of units it is written with.
struct Part {
    bool isMonthName = false;
    int value = 0;
    int length = 0;

    [[nodiscard]] bool IsLongYear() const { return !isMonthName && length > 2; }
};

/// Cuts a text into its parts. Each step gives empty or false when something else stands there.
class Scanner {
 public:
    explicit Scanner(TextView text) : rest_(text) { SkipBlanks(); }

    [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

    std::optional<Part> TakeNumber() {
        const TextView digits = TakeWhile(IsDigit);
        if (digits.empty() || digits.size() > kLongestNumber) {
            return {};
        }
        Part part;
        part.length = static_cast<int>(digits.size());
        for (const char16_t digit : digits) {
            part.value = part.value * 10 + (digit - u'0');
        }
        return part;
    }

    /// With the point that a shortened name may have ("janv.").
    std::optional<Part> TakeMonthName() {
        const auto month = MonthOfName(TakeWhile(IsNameLetter));
        if (!month) {
            return {};
        }
        Take(u'.');
        return Part{true, *month, 0};
    }

    std::optional<Part> TakePart() {
        return !AtEnd() && IsDigit(rest_.front()) ? TakeNumber() : TakeMonthName();
    }

    /// Steps over blanks with at most one separator among them, which must not end the text.
    bool TakeGap() {
        const std::size_t before = rest_.size();
        SkipBlanks();
        if (!AtEnd() && IsSeparator(rest_.front())) {
            rest_.remove_prefix(1);
            SkipBlanks();
            return !AtEnd();
        }
        return rest_.size() < before;
    }

    /// Steps over one unit.
    bool Take(char16_t unit) {
        if (AtEnd() || rest_.front() != unit) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    /// Whether a number with a colon behind it stands here.
    [[nodiscard]] bool AtTime() const {
        const std::size_t behind = CountWhile(IsDigit);
        return behind > 0 && behind < rest_.size() && rest_[behind] == u':';
    }

    void SkipBlanks() { TakeWhile(IsSpace); }

 private:
    [[nodiscard]] std::size_t CountWhile(bool (*belongs)(char16_t)) const {
        return static_cast<std::size_t>(std::find_if_not(rest_.begin(), rest_.end(), belongs) -
                                        rest_.begin());
    }

    TextView TakeWhile(bool (*belongs)(char16_t)) {
        const TextView taken = rest_.substr(0, CountWhile(belongs));
        rest_.remove_prefix(taken.size());
        return taken;
    }

    TextView rest_;
};

int FullYear(const Part& part) {
    if (part.IsLongYear()) {
        return part.value;
    }
    return part.value + (part.value <= kLastYearOf2000s ? 2000 : 1900);
}

int CurrentYear() {
    return CivilOf(Today()).year;
}

std::optional<CivilDate> ValidDay(int year, int month, int day) {
    return IsValidDay(year, month, day) ? std::optional(CivilDate{year, month, day}) : std::nullopt;
}

/// Day and month in the order told, or the other way round when they can only be read so.
std::optional<CivilDate> WithDayAndMonth(int year, const Part& first, const Part& second, bool dayFirst) {
    if (first.IsLongYear() || second.IsLongYear()) {
        return {};
    }
    const Part& day = dayFirst ? first : second;
    const Part& month = dayFirst ? second : first;
    const auto asTold = ValidDay(year, month.value, day.value);
    return asTold ? asTold : ValidDay(year, day.value, month.value);
}

std::optional<CivilDate> FromMonthAndYear(const Part& month, const Part& year) {
    return month.IsLongYear() ? std::nullopt : ValidDay(FullYear(year), month.value, 1);
}

/// A month's name with the one or two numbers beside it: day and year, or one of them.
std::optional<CivilDate> FromNamedMonth(const Part& name, const std::vector<Part>& numbers) {
    if (numbers.size() == 1) {
        const Part& number = numbers.front();
        return number.IsLongYear() ? FromMonthAndYear(name, number)
                                   : ValidDay(CurrentYear(), name.value, number.value);
    }
    const bool yearFirst = numbers.front().IsLongYear();
    const Part& year = yearFirst ? numbers.front() : numbers.back();
    const Part& day = yearFirst ? numbers.back() : numbers.front();
    return day.IsLongYear() ? std::nullopt : ValidDay(FullYear(year), name.value, day.value);
}

std::optional<CivilDate> FromTwoNumbers(const Part& first, const Part& second) {
    if (second.IsLongYear()) {
        return FromMonthAndYear(first, second);
    }
    if (first.IsLongYear()) {
        return FromMonthAndYear(second, first);
    }
    const bool dayFirst = SessionLocale().dateOrder == DateOrder::DayMonthYear;
    return WithDayAndMonth(CurrentYear(), first, second, dayFirst);
}

std::optional<CivilDate> FromThreeNumbers(const Part& first, const Part& second, const Part& third) {
    const DateOrder order = SessionLocale().dateOrder;
    const bool yearFirst = first.IsLongYear() || (order == DateOrder::YearMonthDay && !third.IsLongYear());
    if (yearFirst) {
        return WithDayAndMonth(FullYear(first), second, third, false);
    }
    return WithDayAndMonth(FullYear(third), first, second, order == DateOrder::DayMonthYear);
}

std::optional<CivilDate> FromParts(std::vector<Part> parts) {
    const auto name =
        std::find_if(parts.begin(), parts.end(), [](const Part& part) { return part.isMonthName; });
    if (name != parts.end()) {
        const Part month = *name;
        parts.erase(name);
        const bool hasNumbers =
            !parts.empty() &&
            std::none_of(parts.begin(), parts.end(), [](const Part& part) { return part.isMonthName; });
        return hasNumbers ? FromNamedMonth(month, parts) : std::nullopt;
    }
    switch (parts.size()) {
        case 2:
            return FromTwoNumbers(parts[0], parts[1]);
        case 3:
            return FromThreeNumbers(parts[0], parts[1], parts[2]);
        default:
            return {};
    }
}

/// The parts of the date, up to the time or the end of the text.
std::optional<std::vector<Part>> TakeDateParts(Scanner& scanner) {
    constexpr std::size_t kMostParts = 3;
    std::vector<Part> parts;
    while (!scanner.AtEnd() && !scanner.AtTime()) {
        const auto part = scanner.TakePart();
        if (!part || parts.size() == kMostParts) {
            return {};
        }
        parts.push_back(*part);
        if (!scanner.AtEnd() && !scanner.TakeGap()) {
            return {};
        }
    }
    return parts;
}

/// hours:minutes[:seconds], which must end the text.
std::optional<TimeOfDay> TakeTime(Scanner& scanner) {
    const auto hour = scanner.TakeNumber();
    scanner.Take(u':');
    const auto minute = scanner.TakeNumber();
    const auto second = scanner.Take(u':') ? scanner.TakeNumber() : Part{};
    scanner.SkipBlanks();
    if (!scanner.AtEnd() || !hour || !minute || !second || hour->value > 23 || minute->value > 59 ||
        second->value > 59) {
        return {};
    }
    return TimeOfDay{hour->value, minute->value, second->value};
}

}  // namespace

std::optional<Date> ParseDate(TextView text) {
    Scanner scanner(text);
    const auto parts = TakeDateParts(scanner);
    if (!parts || (parts->empty() && scanner.AtEnd())) {
        return {};
    }
    const auto day = parts->empty() ? CivilDate() : FromParts(*parts);
    const auto time = scanner.AtEnd() ? TimeOfDay() : TakeTime(scanner);
    if (!day || !time) {
        return {};
    }
    return DateOf(day->year, day->month, day->day, time->hour, time->minute, time->second);
}

}  // namespace quardele::basic
