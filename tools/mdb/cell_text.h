// Values as text, the same in all formats: what import reads back.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include <basic/variant.h>

namespace quardele::mdb {

// Each appends to `text`.

void AppendInteger(std::int64_t value, std::string& text);
/// The shortest digits that mean this number and no other.
void AppendDouble(double value, std::string& text);
void AppendSingle(float value, std::string& text);
/// YYYY-MM-DD HH:MM:SS, and a fraction of the second where there is one: a text that MomentDays makes just
/// this number of days of. False, and the number of days, for what has none: outside the years 100 to 9999,
/// between -1 and 0, and fractions of more than twelve digits.
bool AppendMoment(double days, std::string& text);
/// The number of days of a moment: a whole day, and seconds, which count forward from midnight on both sides
/// of day 0.
[[nodiscard]] double MomentDays(double day, double seconds);
/// All four decimals.
void AppendAmount(basic::Currency amount, std::string& text);
void AppendDecimal(const basic::Decimal& decimal, std::string& text);
/// {XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}
void AppendGuid(const basic::Guid& guid, std::string& text);
/// Two lower-case digits per byte.
void AppendHex(std::span<const std::uint8_t> bytes, std::string& text);

}  // namespace quardele::mdb
