// Dates as statements write them, whatever the workstation's settings: #12/31/2026#.
#pragma once

#include <optional>

#include <basic/variant.h>

namespace quardele::basic {

/// What stands between the hash signs: month first ("12/31/2026", "12/31/26 10:30"), with a month name
/// ("31-dec-2026"), year first ("2026-12-31") or a time alone ("10:30 PM"). When the first number can be no
/// month, day and month change places; years 0-29 are 2000-2029, 30-99 are 1930-1999; a missing year is the
/// current one. Empty when it is no date.
[[nodiscard]] std::optional<Date> ReadDateLiteral(TextView text);

/// The literal of a date, hash signs included.
[[nodiscard]] Text WriteDateLiteral(Date date);

}  // namespace quardele::basic
