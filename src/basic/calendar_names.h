// The names of days and months that formats write and dates in texts are read from.
#pragma once

#include <optional>

#include <basic/text.h>

namespace quardele::basic {

/// French names in small letters; month 1-12, weekday 0 is Sunday.
[[nodiscard]] TextView MonthName(int month);
[[nodiscard]] TextView ShortMonthName(int month);
[[nodiscard]] TextView WeekdayName(int weekday);
[[nodiscard]] TextView ShortWeekdayName(int weekday);

/// The month of a French or English name in any case, with or without accents, whole or cut to three letters
/// or more. Empty when no month or more than one begins so ("jui" may be June or July).
[[nodiscard]] std::optional<int> MonthOfName(TextView name);

}  // namespace quardele::basic
