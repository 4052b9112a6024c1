#include <jet/row_cells.h>

#include "rows/row_codec.h"
#include "rows/text_codec.h"
#include "rows/value_codec.h"
#include "table_impl.h"

namespace quardele::jet {

namespace {

using Kind = Cell::Kind;

Kind SetWhole(Cell& cell, std::int32_t value) {
    cell.whole = value;
    return Kind::Whole;
}

Kind SetNumber(Cell& cell, double value, Kind kind) {
    cell.number = value;
    return kind;
}

// The same cases, with the same checks, as DecodeValue has.
Kind ReadField(const StoredColumn& column, const ByteView& field, const Format& format, Cell& cell,
               std::string& text) {
    if (column.type == ColumnType::Text) {
        cell.text = Utf8Of(field, format, text);
        return Kind::Utf8;
    }
    if (column.type == ColumnType::Memo) {
        return Kind::Memo;
    }
    if (IsMissing(column, field)) {
        return Kind::Null;
    }
    CheckSize(column, field);
    switch (column.type) {
        case ColumnType::Byte:
            return SetWhole(cell, field.U8(0));
        case ColumnType::Integer:
            return SetWhole(cell, field.I16(0));
        case ColumnType::Long:
            return SetWhole(cell, field.I32(0));
        case ColumnType::Double:
            return SetNumber(cell, field.F64(0), Kind::Number);
        case ColumnType::Date:
            return SetNumber(cell, field.F64(0), Kind::Date);
        default:
            return Kind::Other;
    }
}

Kind ReadCell(const StoredColumn& column, const RowLayout& layout, const Format& format, Cell& cell,
              std::string& text) {
    const bool isNull = layout.IsNull(column);
    if (column.type == ColumnType::Boolean) {
        cell.whole = isNull ? 0 : 1;
        return Kind::Truth;
    }
    return isNull ? Kind::Null : ReadField(column, layout.StoredBytes(column), format, cell, text);
}

}  // namespace

RowCells::RowCells(const Table& table)
    : table_(table.Impl()), cells_(table.Columns().size()), texts_(table.Columns().size()) {}

std::span<const Cell> RowCells::Of(const Row& row) {
    const Format& format = table_.Layout();
    const RowLayout layout(ByteView(row.Bytes(), row.Id().page), table_.Def(), format);
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        cells_[i].kind = ReadCell(table_.Def().stored[i], layout, format, cells_[i], texts_[i]);
    }
    return cells_;
}

}  // namespace quardele::jet
