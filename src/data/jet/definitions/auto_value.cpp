#include "definitions/auto_value.h"

#include <random>

namespace quardele::jet {

namespace {

/// The default expression of AutoNumber columns with random numbers.
constexpr TextView kRandomNumber = u"GenUniqueID()";

std::uint32_t Random() {
    static std::random_device device;
    return std::uniform_int_distribution<std::uint32_t>()(device);
}

ByteString Little(std::uint32_t value) {
    ByteString bytes(sizeof(value));
    StoreLittle(std::span(bytes), value);
    return bytes;
}

// All bits are random but those that say so: version 4, in the high half of the third group, and the variant.
ByteString RandomGuid() {
    constexpr std::size_t kSize = 16;
    constexpr std::size_t kVersion = 7;
    constexpr std::size_t kVariant = 8;
    ByteString bytes(kSize);
    for (std::size_t at = 0; at < kSize; at += sizeof(std::uint32_t)) {
        StoreLittle(std::span(bytes).subspan(at), Random());
    }
    bytes[kVersion] = static_cast<std::uint8_t>((bytes[kVersion] & 0x0F) | 0x40);
    bytes[kVariant] = static_cast<std::uint8_t>((bytes[kVariant] & 0x3F) | 0x80);
    return bytes;
}

/// Whether an AutoNumber column draws its numbers instead of counting.
bool IsRandom(const Column& column) {
    return basic::EqualNoCase(column.defaultValue, kRandomNumber);
}

}  // namespace

void NoteAutoValue(const Column& column, const ByteString& bytes, TableCounters& counters) {
    if (column.type == ColumnType::Long && !IsRandom(column)) {
        counters.UseAutoNumber(ByteView(bytes, 0).I32(0));
    }
}

ByteString NextAutoValue(const Column& column, const TableCounters& counters) {
    if (column.type == ColumnType::Guid) {
        return RandomGuid();
    }
    return Little(IsRandom(column) ? Random() : static_cast<std::uint32_t>(counters.NextAutoNumber()));
}

}  // namespace quardele::jet
