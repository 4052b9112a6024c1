// Differences and parts of dates.
#pragma once

#include <cstdint>

#include <basic/date.h>
#include <basic/weeks.h>

namespace quardele::sql {

using basic::TextView;

/// How many borders of the interval ("yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s") lie between two
/// dates. Throws 5 for another interval, 6 when the number is too large.
[[nodiscard]] std::int32_t DateDiff(TextView interval, basic::Date from, basic::Date to,
                                    std::int32_t firstDay);

/// One part of a date, by the same intervals.
[[nodiscard]] std::int32_t DatePart(TextView interval, basic::Date date, const basic::WeekRules& rules);

/// A day from numbers that may lie outside their ranges (month 14, day 0 ...); years 0-29 are 2000-2029,
/// 30-99 are 1930-1999.
[[nodiscard]] basic::Date DateSerial(std::int32_t year, std::int32_t month, std::int32_t day);

}  // namespace quardele::sql
