#include "definitions/column_descriptor.h"

#include <basic/runtime_error.h>

#include "structure/object_names.h"

namespace quardele::jet {

namespace {

constexpr int kMostUnits = 255;
constexpr int kMostBytes = 510;
constexpr std::uint8_t kMostDigits = 28;
constexpr std::size_t kSignatureAt = 1;

[[nodiscard]] bool IsKnown(ColumnType type) {
    switch (type) {
        case ColumnType::Boolean:
        case ColumnType::Text:
        case ColumnType::Binary:
        case ColumnType::Memo:
        case ColumnType::Ole:
            return true;
        default:
            return NaturalSize(type).has_value();
    }
}

[[nodiscard]] bool HasPossibleSize(const Column& column) {
    switch (column.type) {
        case ColumnType::Text:
            return column.size >= 0 && column.size <= kMostUnits;
        case ColumnType::Binary:
            return column.size >= 0 && column.size <= kMostBytes;
        case ColumnType::Numeric:
            return column.precision >= 1 && column.precision <= kMostDigits &&
                   column.scale <= column.precision;
        default:
            return true;
    }
}

[[nodiscard]] bool MayCount(const Column& column) {
    return !column.autoNumber || column.type == ColumnType::Long || column.type == ColumnType::Guid;
}

std::uint16_t StoredLength(const Column& column) {
    switch (column.type) {
        case ColumnType::Boolean:
            return 1;
        case ColumnType::Text:
            return static_cast<std::uint16_t>(2 * (column.size == 0 ? kMostUnits : column.size));
        case ColumnType::Binary:
            return static_cast<std::uint16_t>(column.size == 0 ? kMostBytes : column.size);
        default:
            return FixedSize(column.type);
    }
}

std::uint8_t Flags(const Column& column) {
    std::uint8_t flags = column_flag::kMayBeNull;
    if (!IsVariable(column.type)) {
        flags |= column_flag::kFixed;
    }
    if (column.autoNumber) {
        flags |= column.type == ColumnType::Guid ? column_flag::kAutoGuid : column_flag::kAutoNumber;
    }
    return flags;
}

}  // namespace

bool IsVariable(ColumnType type) {
    return type == ColumnType::Text || type == ColumnType::Binary || IsLong(type);
}

bool IsLong(ColumnType type) {
    return type == ColumnType::Memo || type == ColumnType::Ole;
}

std::uint16_t FixedSize(ColumnType type) {
    return static_cast<std::uint16_t>(NaturalSize(type).value_or(0));
}

void CheckColumn(const Column& column) {
    CheckName(column.name);
    if (!IsKnown(column.type) || !HasPossibleSize(column) || !MayCount(column)) {
        ThrowImpossibleType(column);
    }
}

void ThrowImpossibleType(const Column& column) {
    throw basic::RuntimeError(basic::error::kOperationNotSupported,
                              u"Le champ « " + column.name + u" » ne peut pas avoir ce type.");
}

// A row of Nulls has at least its count, its fixed area, an offset for each variable column and the end,
// their number, and the bits.
void CheckRowLength(std::size_t fixedArea, std::size_t variable, std::size_t columns) {
    const std::size_t shortest = 2 + fixedArea + (variable == 0 ? 0 : 2 * (variable + 2)) + (columns + 7) / 8;
    if (shortest > kLargestRow) {
        throw basic::RuntimeError(basic::error::kRecordTooLarge);
    }
}

ByteString ColumnDescriptor(const Column& column, const ColumnPlace& place) {
    const auto& at = kJet4.column;
    ByteString bytes(at.size);
    const auto target = std::span(bytes);
    bytes[at.type] = static_cast<std::uint8_t>(column.type);
    StoreLittle(target.subspan(kSignatureAt), kSignature);
    StoreLittle(target.subspan(at.number), place.number);
    StoreLittle(target.subspan(at.variableIndex), place.variableIndex);
    StoreLittle(target.subspan(at.display), place.display);
    if (column.type == ColumnType::Numeric) {
        bytes[at.precision] = column.precision;
        bytes[at.scale] = column.scale;
    } else {
        StoreLittle(target.subspan(at.lcid), kGeneralLcid);
    }
    bytes[at.flags] = Flags(column);
    bytes[at.extraFlags] = column.type == ColumnType::Text ? column_flag::kCompressed : std::uint8_t{0};
    StoreLittle(target.subspan(at.fixedOffset), place.fixedOffset);
    StoreLittle(target.subspan(at.length), StoredLength(column));
    return bytes;
}

}  // namespace quardele::jet
