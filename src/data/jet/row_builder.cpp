#include "row_builder.h"

#include <algorithm>

#include "row_codec.h"

namespace quardele::jet {

namespace {

void AppendU16(ByteString& row, std::size_t value) {
    row.push_back(static_cast<std::uint8_t>(value & 0xFF));
    row.push_back(static_cast<std::uint8_t>(value >> 8 & 0xFF));
}

void PlaceFixed(const TableDef& table, const RowFields& fields, ByteString& area) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const StoredColumn& column = table.stored[i];
        if (!column.fixed || column.type == ColumnType::Boolean) {
            continue;
        }
        const std::size_t length = NaturalSize(column.type).value_or(column.length);
        area.resize(std::max(area.size(), column.fixedOffset + length));
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
        const StoredColumn& column = table.stored[i];
        if (!column.fixed && column.type != ColumnType::Boolean && fields[i]) {
            data.at(column.variableIndex) = &*fields[i];
        }
    }
    std::vector<std::size_t> offsets;
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
    ByteString bitmap((table.maxColumns + std::size_t{7}) / 8);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const StoredColumn& column = table.stored[i];
        const bool set =
            column.type == ColumnType::Boolean ? fields[i] && fields[i]->front() != 0 : fields[i].has_value();
        if (set) {
            bitmap.at(column.number / 8u) |= static_cast<std::uint8_t>(1u << column.number % 8);
        }
    }
    row.insert(row.end(), bitmap.begin(), bitmap.end());
}

// A definition may contradict itself; rows are not written after such a one.
void CheckColumns(const TableDef& table) {
    for (const StoredColumn& column : table.stored) {
        const bool misplaced = !column.fixed && column.type != ColumnType::Boolean &&
                               column.variableIndex >= table.variableColumns;
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

ByteString BuildRow(const TableDef& table, const RowFields& fields, ByteString fixedArea) {
    CheckColumns(table);
    ByteString row;
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
