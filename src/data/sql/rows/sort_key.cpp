#include "rows/sort_key.h"

#include <array>
#include <bit>
#include <optional>

#include <basic/conversion.h>
#include <basic/decimal_arithmetic.h>
#include <jet/collation.h>

namespace quardele::sql {
namespace {

using basic::Text;

enum Marker : char { kNull, kNumber, kText, kBytes, kGuid };

constexpr std::uint64_t kSignBit = std::uint64_t{1} << 63;

void AppendNumber(std::string& key, double number) {
    // Both zeros are one number.
    auto bits = std::bit_cast<std::uint64_t>(number == 0 ? 0.0 : number);
    bits = (bits & kSignBit) != 0 ? ~bits : bits | kSignBit;
    for (int shift = 56; shift >= 0; shift -= 8) {
        key += static_cast<char>(bits >> shift & 0xFF);
    }
}

// What follows the eight bytes of a number. Decimals can have more digits than a double holds: those that lie
// beside the digits that the double is written with say how, and then their own value.
constexpr char kBelow = '\x7F';
constexpr char kExact = '\x80';
constexpr char kAbove = '\x81';

/// The decimal itself, in units of its finest scale, in the order of the numbers.
void AppendUnits(std::string& key, const basic::Decimal& decimal) {
    const std::array<std::uint8_t, 32> units = basic::UnitBytes(decimal);
    for (const std::uint8_t byte : units) {
        key += static_cast<char>(decimal.negative ? ~byte : byte);
    }
}

void AppendRest(std::string& key, const Variant& value, double number) {
    const auto* decimal = std::get_if<basic::Decimal>(&value.Stored());
    const auto written = decimal != nullptr ? basic::ShortestDecimal(number) : std::nullopt;
    const auto order = written ? basic::Compare(*decimal, *written) : std::strong_ordering::equal;
    if (order == 0) {
        key += kExact;
        return;
    }
    key += order < 0 ? kBelow : kAbove;
    AppendUnits(key, *decimal);
}

/// A zero byte is written as 00 FF, so that 00 00 can end the value.
void AppendBytes(std::string& key, const basic::Binary& bytes) {
    for (const std::uint8_t byte : bytes) {
        key += static_cast<char>(byte);
        if (byte == 0) {
            key += '\xFF';
        }
    }
    key.append(2, '\0');
}

void AppendValue(std::string& key, const Variant& value) {
    if (value.IsText()) {
        AppendTextKey(key, value.As<Text>());
    } else if (const auto number = basic::NumberOf(value)) {
        key += kNumber;
        AppendNumber(key, *number);
        AppendRest(key, value, *number);
    } else if (value.Is<basic::Binary>()) {
        key += kBytes;
        AppendBytes(key, value.As<basic::Binary>());
    } else if (value.Is<basic::Guid>()) {
        key += kGuid;
        const auto& bytes = value.As<basic::Guid>().bytes;
        key.append(bytes.begin(), bytes.end());
    } else {
        key += kNull;
    }
}

}  // namespace

void AppendSortKey(std::string& key, const Variant& value, bool descending) {
    const std::size_t start = key.size();
    AppendValue(key, value);
    if (descending) {
        InvertKey(key, start);
    }
}

void AppendTextKey(std::string& key, basic::TextView text) {
    key += kText;
    jet::AppendSortKey(text, key);
}

void InvertKey(std::string& key, std::size_t start) {
    for (std::size_t i = start; i < key.size(); ++i) {
        key[i] = static_cast<char>(~key[i]);
    }
}

}  // namespace quardele::sql
