#include "expressions/calendar.h"

#include <cmath>
#include <limits>

#include "sql_error.h"

namespace quardele::sql {
namespace {

constexpr int kDaysOfWeek = 7;
constexpr std::int64_t kSecondsOfDay = 86400;

enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

Interval IntervalOf(TextView name) {
    constexpr TextView kNames[] = {u"yyyy", u"q", u"m", u"y", u"d", u"w", u"ww", u"h", u"n", u"s"};
    for (std::size_t i = 0; i < std::size(kNames); ++i) {
        if (basic::EqualNoCase(name, kNames[i])) {
            return static_cast<Interval>(i);
        }
    }
    throw basic::RuntimeError(error::kInvalidCall);
}

std::int64_t SecondNumber(basic::Date date) {
    const basic::TimeOfDay time = basic::TimeOf(date);
    const basic::CivilDate day = basic::CivilOf(date);
    const std::int64_t days = basic::DayNumber(basic::DateOf(day.year, day.month, day.day));
    const int seconds = time.hour * 3600 + time.minute * 60 + time.second;
    return days * kSecondsOfDay + seconds;
}

std::int64_t FloorDivided(std::int64_t number, std::int64_t by) {
    return number / by - (number % by < 0 ? 1 : 0);
}

std::int64_t WeekStart(basic::Date date, std::int32_t firstDay) {
    return basic::DayNumber(date) - (basic::Weekday(date, firstDay) - 1);
}

std::int64_t Difference(Interval interval, basic::Date from, basic::Date to, std::int32_t firstDay) {
    const basic::CivilDate a = basic::CivilOf(from);
    const basic::CivilDate b = basic::CivilOf(to);
    switch (interval) {
        case Interval::Year:
            return b.year - a.year;
        case Interval::Quarter:
            return (b.year * 4 + (b.month - 1) / 3) - (a.year * 4 + (a.month - 1) / 3);
        case Interval::Month:
            return (b.year * 12 + b.month) - (a.year * 12 + a.month);
        case Interval::DayOfYear:
        case Interval::Day:
            return basic::DayNumber(to) - basic::DayNumber(from);
        case Interval::Weekday:
            return (basic::DayNumber(to) - basic::DayNumber(from)) / kDaysOfWeek;
        case Interval::Week:
            return (WeekStart(to, firstDay) - WeekStart(from, firstDay)) / kDaysOfWeek;
        case Interval::Hour:
            return FloorDivided(SecondNumber(to), 3600) - FloorDivided(SecondNumber(from), 3600);
        case Interval::Minute:
            return FloorDivided(SecondNumber(to), 60) - FloorDivided(SecondNumber(from), 60);
        default:
            return SecondNumber(to) - SecondNumber(from);
    }
}

}  // namespace

std::int32_t DateDiff(TextView interval, basic::Date from, basic::Date to, std::int32_t firstDay) {
    const std::int64_t difference = Difference(IntervalOf(interval), from, to, firstDay);
    if (difference < std::numeric_limits<std::int32_t>::min() ||
        difference > std::numeric_limits<std::int32_t>::max()) {
        throw basic::RuntimeError(error::kOverflow);
    }
    return static_cast<std::int32_t>(difference);
}

std::int32_t DatePart(TextView interval, basic::Date date, const basic::WeekRules& rules) {
    const basic::CivilDate day = basic::CivilOf(date);
    const basic::TimeOfDay time = basic::TimeOf(date);
    switch (IntervalOf(interval)) {
        case Interval::Year:
            return day.year;
        case Interval::Quarter:
            return (day.month - 1) / 3 + 1;
        case Interval::Month:
            return day.month;
        case Interval::DayOfYear:
            return basic::DayOfYear(date);
        case Interval::Day:
            return day.day;
        case Interval::Weekday:
            return basic::Weekday(date, rules.firstDay);
        case Interval::Week:
            return basic::WeekOfYear(date, rules);
        case Interval::Hour:
            return time.hour;
        case Interval::Minute:
            return time.minute;
        default:
            return time.second;
    }
}

basic::Date DateSerial(std::int32_t year, std::int32_t month, std::int32_t day) {
    const std::int32_t fullYear = year < 0 || year > 99 ? year : year + (year < 30 ? 2000 : 1900);
    const basic::Date start =
        basic::DateAdd(u"m", static_cast<double>(month) - 1, basic::DateOf(fullYear, 1, 1));
    return basic::DateAdd(u"d", static_cast<double>(day) - 1, start);
}

}  // namespace quardele::sql
