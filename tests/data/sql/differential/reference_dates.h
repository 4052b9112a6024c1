// Dates as the reference functions see them: days since 30/12/1899, not before it.
#pragma once

#include <string>

namespace quardele::sql::differential {

[[nodiscard]] double DateSerial(int year, int month, int day);
/// "yyyy", "q", "m", "d", "y", "w" (Sunday is 1), "h".
[[nodiscard]] int DatePart(const std::string& interval, double date);
[[nodiscard]] double DateAdd(const std::string& interval, int number, double date);
/// How often the interval begins behind `from`, up to `to`; "w" counts whole weeks.
[[nodiscard]] int DateDiff(const std::string& interval, double from, double to);

}  // namespace quardele::sql::differential
