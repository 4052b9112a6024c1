// Differences and parts of dates, and the counting of weeks.
#pragma once

#include <cstdint>

#include <basic/date.h>

namespace quardele::sql {

using basic::TextView;

/// Days of the week count from Sunday = 1; 0 stands for the workstation's own first day, Monday.
inline constexpr std::int32_t kSunday = 1;

/// Which week is a year's first: 0 the workstation's own (as 2), 1 the one with 1 January, 2 the first with
/// four days in the year, 3 the first whole one.
inline constexpr std::int32_t kWeekOfNewYear = 1;

/// Position of a date's day in a week that begins on `firstDay`, from 1.
[[nodiscard]] std::int32_t Weekday(basic::Date date, std::int32_t firstDay);

/// How many borders of the interval ("yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s") lie between two
/// dates. Throws 5 for another interval, 6 when the number is too large.
[[nodiscard]] std::int32_t DateDiff(TextView interval, basic::Date from, basic::Date to,
                                    std::int32_t firstDay);

/// One part of a date, by the same intervals.
[[nodiscard]] std::int32_t DatePart(TextView interval, basic::Date date, std::int32_t firstDay,
                                    std::int32_t firstWeek);

/// A day from numbers that may lie outside their ranges (month 14, day 0 ...); years 0-29 are 2000-2029,
/// 30-99 are 1930-1999.
[[nodiscard]] basic::Date DateSerial(std::int32_t year, std::int32_t month, std::int32_t day);

}  // namespace quardele::sql
