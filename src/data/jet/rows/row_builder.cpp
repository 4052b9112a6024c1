#include "rows/row_builder.h"

#include <algorithm>
#include <numeric>

#include "rows/row_codec.h"

namespace quardele::jet {

namespace {

void AppendU16(ByteString& row, std::size_t value) {
    row.push_back(static_cast<std::uint8_t>(value & 0xFF));
    row.push_back(static_cast<std::uint8_t>(value >> 8 & 0xFF));
}

bool HasFixedBytes(const StoredColumn& column) {
    return column.fixed && column.type != ColumnType::Boolean;
}

bool IsVariable(const StoredColumn& column) {
    return !column.fixed && column.type != ColumnType::Boolean;
}

std::size_t FixedLength(const StoredColumn& column) {
    return NaturalSize(column.type).value_or(column.length);
}

std::size_t FixedAreaLength(const TableDef& table, std::size_t atLeast) {
    for (const StoredColumn& column : table.stored) {
        if (HasFixedBytes(column)) {
            atLeast = std::max(atLeast, column.fixedOffset + FixedLength(column));
        }
    }
    return atLeast;
}

std::size_t BitmapLength(const TableDef& table) {
    return (table.maxColumns + std::size_t{7}) / 8;
}

void PlaceFixed(const TableDef& table, const RowFields& fields, ByteString& area) {
    area.resize(FixedAreaLength(table, area.size()));
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const StoredColumn& column = table.stored[i];
        if (!HasFixedBytes(column)) {
            continue;
        }
        const std::size_t length = FixedLength(column);
        const auto target = area.begin() + column.fixedOffset;
        std::fill_n(target, length, std::uint8_t{0});
        if (fields[i]) {
            std::copy_n(fields[i]->begin(), std::min(length, fields[i]->size()), target);
        }
    }
}

// Data in the order of the variable columns, then the offsets from the last to the first, then their number.
void AppendVariable(const TableDef& table, const RowFields& fields, ByteString& row) {
    std::vector<const ByteString*> data(table.variableColumns, nullptr);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (IsVariable(table.stored[i]) && fields[i]) {
            data.at(table.stored[i].variableIndex) = &*fields[i];
        }
    }
    std::vector<std::size_t> offsets;
    offsets.reserve(data.size());
    for (const ByteString* bytes : data) {
        offsets.push_back(row.size());
        if (bytes != nullptr) {
            row.insert(row.end(), bytes->begin(), bytes->end());
        }
    }
    AppendU16(row, row.size());
    for (std::size_t i = offsets.size(); i-- > 0;) {
        AppendU16(row, offsets[i]);
    }
    AppendU16(row, offsets.size());
}

void AppendNullBitmap(const TableDef& table, const RowFields& fields, ByteString& row) {
    const std::size_t start = row.size();
    row.resize(start + BitmapLength(table));
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const StoredColumn& column = table.stored[i];
        const bool set =
            column.type == ColumnType::Boolean ? fields[i] && fields[i]->front() != 0 : fields[i].has_value();
        if (set) {
            row.at(start + column.number / 8u) |= static_cast<std::uint8_t>(1u << column.number % 8);
        }
    }
}

// A definition may contradict itself; rows are not written after such a one.
void CheckColumns(const TableDef& table) {
    for (const StoredColumn& column : table.stored) {
        const bool misplaced = IsVariable(column) && column.variableIndex >= table.variableColumns;
        if (column.number >= table.maxColumns || misplaced) {
            ThrowDamaged(table.page, u"colonne hors de sa table");
        }
    }
}

}  // namespace

RowFields SplitRow(const ByteView& row, const TableDef& table, const Format& format, ByteString& fixedArea) {
    const RowLayout layout(row, table, format);
    const auto fixed = layout.FixedArea().Span();
    fixedArea.assign(fixed.begin(), fixed.end());
    RowFields fields;
    for (const StoredColumn& column : table.stored) {
        if (column.type == ColumnType::Boolean) {
            fields.emplace_back(ByteString{layout.IsNull(column) ? std::uint8_t{0} : std::uint8_t{1}});
        } else if (const auto field = layout.Field(column)) {
            fields.emplace_back(ByteString(field->Span().begin(), field->Span().end()));
        } else {
            fields.emplace_back();
        }
    }
    return fields;
}

std::size_t FrameLength(const TableDef& table, std::size_t fixedArea) {
    const std::size_t offsets =
        table.variableColumns == 0 ? 0 : (table.variableColumns + std::size_t{2}) * sizeof(std::uint16_t);
    return sizeof(std::uint16_t) + FixedAreaLength(table, fixedArea) + offsets + BitmapLength(table);
}

ByteString BuildRow(const TableDef& table, const RowFields& fields, ByteString fixedArea) {
    CheckColumns(table);
    ByteString row;
    row.reserve(std::accumulate(fields.begin(), fields.end(), FrameLength(table, fixedArea.size()),
                                [](std::size_t length, const std::optional<ByteString>& field) {
                                    return length + (field ? field->size() : 0);
                                }));
    AppendU16(row, table.maxColumns);
    PlaceFixed(table, fields, fixedArea);
    row.insert(row.end(), fixedArea.begin(), fixedArea.end());
    if (table.variableColumns != 0) {
        AppendVariable(table, fields, row);
    }
    AppendNullBitmap(table, fields, row);
    return row;
}

}  // namespace quardele::jet
