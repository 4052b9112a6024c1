#include <basic/weeks.h>

#include <cmath>

#include <basic/date.h>
#include <basic/runtime_error.h>

namespace quardele::basic {
namespace {

constexpr int kDaysOfWeek = 7;
constexpr std::int32_t kMonday = 2;
constexpr std::int32_t kFourDays = 2;
constexpr std::int32_t kWholeWeek = 3;
constexpr int kLastYear = 9999;

/// The day on which the first week of a year begins.
std::int64_t FirstWeekStart(int year, std::int32_t firstDay, std::int32_t firstWeek) {
    const Date newYear = DateOf(year, 1, 1);
    const std::int32_t daysBefore = Weekday(newYear, firstDay) - 1;
    const bool nextWeek =
        (firstWeek == kFourDays && daysBefore > 3) || (firstWeek == kWholeWeek && daysBefore > 0);
    return DayNumber(newYear) - daysBefore + (nextWeek ? kDaysOfWeek : 0);
}

}  // namespace

std::int64_t DayNumber(Date date) {
    return static_cast<std::int64_t>(std::trunc(date.days));
}

std::int32_t DayOfYear(Date date) {
    return static_cast<std::int32_t>(DayNumber(date) - DayNumber(DateOf(CivilOf(date).year, 1, 1))) + 1;
}

std::int32_t Weekday(Date date, std::int32_t firstDay) {
    if (firstDay < 0 || firstDay > kDaysOfWeek) {
        throw RuntimeError(error::kInvalidCall);
    }
    const std::int32_t first = firstDay == 0 ? kMonday : firstDay;
    // Day 0 of the count, 30 December 1899, was a Saturday: six days behind a Sunday.
    const std::int64_t fromFirst = DayNumber(date) + kDaysOfWeek - first;
    const std::int64_t rest = fromFirst % kDaysOfWeek;
    return static_cast<std::int32_t>(rest < 0 ? rest + kDaysOfWeek : rest) + 1;
}

std::int32_t WeekOfYear(Date date, const WeekRules& rules) {
    if (rules.firstWeek < 0 || rules.firstWeek > kWholeWeek) {
        throw RuntimeError(error::kInvalidCall);
    }
    const std::int32_t rule = rules.firstWeek == 0 ? kFourDays : rules.firstWeek;
    const int year = CivilOf(date).year;
    const std::int64_t day = DayNumber(date);
    std::int64_t start = FirstWeekStart(year, rules.firstDay, rule);
    if (day < start) {
        start = FirstWeekStart(year - 1, rules.firstDay, rule);
    } else if (rule == kFourDays && year < kLastYear &&
               day >= FirstWeekStart(year + 1, rules.firstDay, rule)) {
        return 1;
    }
    return static_cast<std::int32_t>((day - start) / kDaysOfWeek) + 1;
}

}  // namespace quardele::basic
