// Conversions between types, after the rules of the Basic runtime and the session's Locale.
#pragma once

#include <cstdint>
#include <optional>

#include <basic/text.h>
#include <basic/variant.h>

namespace quardele::basic {

/// The ordinary text of a value: numbers with the locale's decimal separator and no padding, dates as the
/// short date with the time (hh:nn:ss) behind it when there is one (day 0 is left out: it is a time only),
/// "Vrai"/"Faux" for truth values, empty for Empty. Throws RuntimeError 94 for Null, 13 for binary data.
[[nodiscard]] Text CStr(const Variant& value);
/// The same, with Null as the empty text: what the joining operator & makes of a value.
[[nodiscard]] Text Joined(const Variant& value);

/// To a double. Texts: blanks around are ignored, the locale's decimal separator counts, an exponent is
/// allowed. Throws RuntimeError 13 when the text is empty or no number, 94 for Null.
[[nodiscard]] double CDbl(const Variant& value);
/// To a 16-bit or 32-bit integer, halves rounded to even. Throws 6 outside the range, else like CDbl.
[[nodiscard]] std::int16_t CInt(const Variant& value);
[[nodiscard]] std::int32_t CLng(const Variant& value);
/// To a truth value: numbers other than 0 are true; the texts "True"/"False"/"Vrai"/"Faux" in any case and
/// texts of numbers. Throws 13 for other texts, 94 for Null.
[[nodiscard]] bool CBool(const Variant& value);
/// To a date. Texts follow the session's order of day, month and year, see ParseDate; numbers are days.
/// Throws RuntimeError 13 when the text is no date, 94 for Null, 6 for days
/// outside the years 100 to 9999.
[[nodiscard]] Date CDate(const Variant& value);
/// To an amount, halves of its last decimal rounded to even. Throws 6 outside the range, else like CDbl.
[[nodiscard]] Currency CCur(const Variant& value);

/// The number at the start of a text, as far as it goes, of base 16 or 8 behind &H or &O; always uses the
/// point, ignores blanks; 0 when there is none. Throws RuntimeError 6 for a number beyond all doubles.
[[nodiscard]] double Val(TextView text);

/// Whether CDbl would succeed. Dates are not numeric, Empty is.
[[nodiscard]] bool IsNumeric(const Variant& value);
/// Whether the value is a date or a text that CDate can read.
[[nodiscard]] bool IsDate(const Variant& value);

/// A text as a date: separators "/", "-", "." and blanks; month names in French and English; a missing year
/// is the current one; years 0-29 are 2000-2029, 30-99 are 1930-1999; day and month change places when they
/// can only be read so; a month with a year of more than two digits is its first day; a time part h:m[:s] may
/// follow or stand alone. Empty when it is no date.
[[nodiscard]] std::optional<Date> ParseDate(TextView text);

/// A number as text, with the locale's separator ("1,5"), 15 significant digits at most.
[[nodiscard]] Text NumberText(double value);

/// A value as double for any number type, date or truth value (-1/0) without reading texts; empty otherwise.
[[nodiscard]] std::optional<double> NumberOf(const Variant& value);

}  // namespace quardele::basic
