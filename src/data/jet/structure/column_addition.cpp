#include "structure/column_addition.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "definitions/column_descriptor.h"
#include "definitions/properties.h"
#include "rows/row_codec.h"
#include "rows/row_store.h"
#include "structure/catalog_rows.h"
#include "structure/definition_pages.h"
#include "structure/table_layout.h"

namespace quardele::jet {

namespace {

void CheckRoom(const TableDef& def, const Column& column) {
    if (def.FindColumn(column.name) >= 0) {
        throw basic::RuntimeError(basic::error::kFieldExists,
                                  basic::Describe(basic::error::kFieldExists, column.name));
    }
    if (def.maxColumns >= kMostColumns) {
        throw basic::RuntimeError(basic::error::kTooManyFields);
    }
    // Rows that are there would need numbers of their own.
    const bool counts = std::any_of(def.columns.begin(), def.columns.end(), IsCounter);
    if (column.autoNumber && (def.rowCount != 0 || (IsCounter(column) && counts))) {
        ThrowImpossibleType(column);
    }
}

// Columns that were deleted have left no trace in the definition, but rows know where their fixed area ended.
std::size_t FixedAreaInRows(const TableImpl& table) {
    const TableDef& def = table.Def();
    RowScan scan = table.Scan();
    while (const auto row = scan.Next()) {
        const RowLayout layout({row->Bytes(), row->Id().page}, def, table.Layout());
        if (layout.Shape().columnCount == def.maxColumns) {
            return layout.FixedArea().Size();
        }
    }
    return 0;
}

std::size_t FixedAreaEnd(const TableImpl& table) {
    const TableDef& def = table.Def();
    std::size_t end = 0;
    for (const StoredColumn& column : def.stored) {
        if (column.fixed && column.type != ColumnType::Boolean) {
            const std::size_t size = NaturalSize(column.type).value_or(column.length);
            end = std::max(end, column.fixedOffset + size);
        }
    }
    const bool hasGaps = def.columns.size() != def.maxColumns;
    return hasGaps ? std::max(end, FixedAreaInRows(table)) : end;
}

ColumnPlace PlaceOf(const TableImpl& table, const Column& column) {
    const TableDef& def = table.Def();
    const bool lies = IsVariable(column.type);
    const std::size_t offset = FixedAreaEnd(table);
    CheckRowLength(offset + FixedSize(column.type), std::size_t{def.variableColumns} + (lies ? 1 : 0),
                   std::size_t{def.maxColumns} + 1);
    std::uint16_t display = 0;
    for (const StoredColumn& other : def.stored) {
        display = std::max(display, other.display);
    }
    const bool takesBytes = !lies && column.type != ColumnType::Boolean;
    return {.number = def.maxColumns,
            .variableIndex = def.variableColumns,
            .fixedOffset = static_cast<std::uint16_t>(takesBytes ? offset : 0),
            .display = static_cast<std::uint16_t>(display + 1)};
}

// What a row has behind its data when it has no variable column yet: where they would begin, and their
// number.
ByteString WithEmptyOffsets(const ByteView& row, std::size_t bitmap) {
    constexpr std::uint8_t kNone = 0;
    const auto bytes = row.Span();
    const auto end = static_cast<std::ptrdiff_t>(bitmap);
    ByteString wider(bytes.begin(), bytes.begin() + end);
    wider.insert(wider.end(), {static_cast<std::uint8_t>(bitmap & 0xFF),
                               static_cast<std::uint8_t>(bitmap >> 8), kNone, kNone});
    wider.insert(wider.end(), bytes.begin() + end, bytes.end());
    return wider;
}

// Rows of a table without variable columns end without offsets, and only the table tells that: with the first
// variable column all rows get them.
void GiveRowsOffsets(StructureChange& change, const TableImpl& table) {
    std::vector<RowId> ids;
    RowScan scan = table.Scan();
    while (const auto id = scan.NextId()) {
        ids.push_back(*id);
    }
    RowStore rows(change.Pages(), change.Allocator(), table.Def());
    for (const RowId id : ids) {
        const RowPlace place = rows.Find(id);
        const RowBytes stored = ReadRow(change.Pages(), place.data);
        const RowLayout layout(stored.bytes, table.Def(), table.Layout());
        rows.Replace(id, place, WithEmptyOffsets(stored.bytes, layout.Shape().bitmap));
    }
}

}  // namespace

void AppendColumn(StructureChange& change, const CatalogTable& table, const Column& column) {
    CheckColumn(column);
    const TableImpl existing = change.TableOn(table.page);
    const TableDef& def = existing.Def();
    CheckRoom(def, column);
    const ColumnPlace place = PlaceOf(existing, column);
    DefinitionParts parts = DefinitionParts::Split({def.bytes, def.page});
    parts.columns.push_back({.bytes = ColumnDescriptor(column, place), .name = column.name});
    parts.SetMaxColumns(static_cast<std::uint16_t>(def.maxColumns + 1));
    parts.SetVariableColumns(
        static_cast<std::uint16_t>(def.variableColumns + (IsVariable(column.type) ? 1 : 0)));
    if (IsLong(column.type)) {
        MapRows maps(change.Pages(), change.Allocator(), def.ownedMap.page);
        parts.longValueMaps.push_back(NewLongValueMaps(maps, place.number));
    }
    if (def.variableColumns == 0 && IsVariable(column.type)) {
        GiveRowsOffsets(change, existing);
    }
    StoreDefinition(change.Pages(), change.Allocator(), def.page, parts.Join());
    CatalogRows catalog(change);
    catalog.StoreRulesOf(table, column);
    catalog.NoteChange(table);
}

}  // namespace quardele::jet
