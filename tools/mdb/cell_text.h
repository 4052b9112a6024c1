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
/// YYYY-MM-DD HH:MM:SS. False, and the number of days, for what lies outside the years 100 to 9999.
bool AppendMoment(double days, std::string& text);
/// All four decimals.
void AppendAmount(basic::Currency amount, std::string& text);
void AppendDecimal(const basic::Decimal& decimal, std::string& text);
/// {XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}
void AppendGuid(const basic::Guid& guid, std::string& text);
/// Two lower-case digits per byte.
void AppendHex(std::span<const std::uint8_t> bytes, std::string& text);

}  // namespace quardele::mdb
