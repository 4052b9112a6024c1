#include "long_value.h"
#include "row_codec.h"
#include "table_impl.h"
#include "text_codec.h"
#include "value_codec.h"

namespace quardele::jet {

namespace {

constexpr double kTrue = -1;

const StoredColumn& ColumnOf(const TableImpl& table, int column) {
    return table.Def().stored.at(static_cast<std::size_t>(column));
}

RowLayout LayoutOf(const TableImpl& table, RowId id, std::span<const std::uint8_t> bytes) {
    return {{bytes, id.page}, table.Def(), table.Layout()};
}

}  // namespace

bool Row::IsNull(int column) const {
    const StoredColumn& stored = ColumnOf(*table_, column);
    return stored.type != ColumnType::Boolean && LayoutOf(*table_, id_, bytes_).IsNull(stored);
}

Variant Row::Value(int column) const {
    const StoredColumn& stored = ColumnOf(*table_, column);
    const RowLayout layout = LayoutOf(*table_, id_, bytes_);
    if (stored.type == ColumnType::Boolean) {
        return !layout.IsNull(stored);
    }
    const auto field = layout.Field(stored);
    if (!field) {
        return basic::Null{};
    }
    if (!stored.IsLong()) {
        return DecodeValue(stored, *field, table_->Layout());
    }
    const std::vector<std::uint8_t> data = ReadLongValue(table_->Pages(), *field);
    return DecodeValue(stored, {data, id_.page}, table_->Layout());
}

double Row::NumberAt(int column) const {
    const StoredColumn& stored = ColumnOf(*table_, column);
    const RowLayout layout = LayoutOf(*table_, id_, bytes_);
    if (stored.type == ColumnType::Boolean) {
        return layout.IsNull(stored) ? 0 : kTrue;
    }
    const auto field = layout.Field(stored);
    return field ? DecodeNumber(stored, *field) : 0;
}

bool Row::TextAt(int column, Text& text) const {
    const StoredColumn& stored = ColumnOf(*table_, column);
    const auto field = LayoutOf(*table_, id_, bytes_).Field(stored);
    text.clear();
    if (!field || !stored.IsText()) {
        return false;
    }
    if (stored.IsLong()) {
        const std::vector<std::uint8_t> data = ReadLongValue(table_->Pages(), *field);
        DecodeText({data, id_.page}, table_->Layout(), text);
    } else {
        DecodeText(*field, table_->Layout(), text);
    }
    return true;
}

}  // namespace quardele::jet
