// Values written after a pattern, as Format() of statements and ToText() of formulas do.
#pragma once

#include <basic/variant.h>
#include <basic/weeks.h>

namespace quardele::basic {

/// Signs between quotes or behind a "\" stand for themselves. What else a pattern holds tells what it is for:
///
/// Numbers, with "0" or "#": "0" is a digit always shown, "#" one shown when it counts; "." the decimal
/// point;
/// "," thousands apart between digits, and division by 1000 behind the last whole digit; "%" per cent; "E+"
/// and "E-" the power of ten. Up to four sections stand for numbers above 0, below 0, 0 and Null; where the
/// second or third is missing or empty the first one serves, with "-" ahead of numbers below 0 of which more
/// than zeros shows. The digits shown are rounded, halves away from zero.
///
/// Dates: d dd ddd dddd, ddddd the short and dddddd the long date, w ww the day of the week and the week of
/// the year, m mm mmm mmmm, q, y the day of the year, yy yyyy, h hh, n nn (m mm behind hours), s ss, ttttt
/// the time, c the ordinary text, AM/PM am/pm A/P a/p; "/" is the session's separator. `rules` count the
/// weeks.
///
/// Texts: "@" is a character or a blank, "&" a character or nothing, filled from the right or, with "!", from
/// the left; "<" makes small letters, ">" capitals. A second section is for the empty text and Null.
///
/// Anything else stands as it is. Texts that are no numbers or dates stay as they are under their patterns;
/// Null gives the empty text where no section is made for it. Throws 5 for rules that do not exist.
[[nodiscard]] Text FormatValue(const Variant& value, TextView pattern, const WeekRules& rules = {});

}  // namespace quardele::basic
