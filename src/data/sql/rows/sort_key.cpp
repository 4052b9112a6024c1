#include "rows/sort_key.h"

#include <bit>
#include <optional>

#include <basic/conversion.h>
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
        key += kText;
        key += jet::SortKey(value.As<Text>());
    } else if (const auto number = basic::NumberOf(value)) {
        key += kNumber;
        AppendNumber(key, *number);
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
    for (std::size_t i = start; descending && i < key.size(); ++i) {
        key[i] = static_cast<char>(~key[i]);
    }
}

}  // namespace quardele::sql
