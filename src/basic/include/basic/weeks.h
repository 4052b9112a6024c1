// The counting of weeks.
#pragma once

#include <cstdint>

#include <basic/variant.h>

namespace quardele::basic {

/// Days of the week count from Sunday = 1; 0 stands for the workstation's own first day, Monday.
inline constexpr std::int32_t kSunday = 1;

/// Which week is a year's first: 0 the workstation's own (as 2), 1 the one with 1 January, 2 the first with
/// four days in the year, 3 the first whole one.
inline constexpr std::int32_t kWeekOfNewYear = 1;

/// How weeks are counted.
struct WeekRules {
    std::int32_t firstDay = kSunday;
    std::int32_t firstWeek = kWeekOfNewYear;
};

/// Position of a date's day in a week that begins on `firstDay`, from 1. Throws 5 when there is no such day.
[[nodiscard]] std::int32_t Weekday(Date date, std::int32_t firstDay);

/// The number of a date's week in its year, from 1. Throws 5 for rules that do not exist.
[[nodiscard]] std::int32_t WeekOfYear(Date date, const WeekRules& rules);

/// The number of a date's day in its year, from 1.
[[nodiscard]] std::int32_t DayOfYear(Date date);

/// The whole days of a date.
[[nodiscard]] std::int64_t DayNumber(Date date);

}  // namespace quardele::basic
