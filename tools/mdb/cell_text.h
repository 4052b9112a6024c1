// Values as text, the same in all formats: what import reads back.
#pragma once

#include <cstdint>
#include <span>

#include <basic/variant.h>

#include "text_buffer.h"

namespace quardele::mdb {

// Each appends to `text`.

void AppendInteger(std::int64_t value, TextBuffer& text);
/// The shortest digits that mean this number and no other.
void AppendDouble(double value, TextBuffer& text);
void AppendSingle(float value, TextBuffer& text);
/// YYYY-MM-DD HH:MM:SS, and a fraction of the second where there is one: a text that MomentDays makes just
/// this number of days of. False, and the number of days, for what has none: outside the years 100 to 9999,
/// between -1 and 0, and fractions of more than twelve digits.
bool AppendMoment(double days, TextBuffer& text);
/// The number of days of a moment: a whole day, and seconds, which count forward from midnight on both sides
/// of day 0.
[[nodiscard]] double MomentDays(double day, double seconds);
/// All four decimals.
void AppendAmount(basic::Currency amount, TextBuffer& text);
void AppendDecimal(const basic::Decimal& decimal, TextBuffer& text);
/// {XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}
void AppendGuid(const basic::Guid& guid, TextBuffer& text);
/// Two lower-case digits per byte.
void AppendHex(std::span<const std::uint8_t> bytes, TextBuffer& text);

}  // namespace quardele::mdb
