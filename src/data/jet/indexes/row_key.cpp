#include "indexes/row_key.h"

#include <jet/collation.h>

#include "indexes/key_encoder.h"
#include "rows/long_value.h"
#include "rows/text_codec.h"

namespace quardele::jet {

std::optional<ByteString> ColumnData(const PageSource& pages, const StoredColumn& column,
                                     const RowLayout& row) {
    if (column.type == ColumnType::Boolean) {
        return ByteString{row.IsNull(column) ? std::uint8_t{0} : std::uint8_t{1}};
    }
    const auto field = row.Field(column);
    if (!field || (field->IsEmpty() && NaturalSize(column.type))) {
        return std::nullopt;
    }
    if (column.IsLong()) {
        return ReadLongValue(pages, *field);
    }
    return ByteString(field->Span().begin(), field->Span().end());
}

RowKey MakeKey(const TableDef& table, const RealIndex& index, const Format& format,
               const std::vector<std::optional<ByteString>>& values) {
    std::vector<std::optional<ByteView>> views;
    for (const auto& value : values) {
        views.push_back(value ? std::optional(ByteView(*value, table.page)) : std::nullopt);
    }
    return MakeKey(table, index, format, std::span<const std::optional<ByteView>>(views));
}

RowKey MakeKey(const TableDef& table, const RealIndex& index, const Format& format,
               std::span<const std::optional<ByteView>> values) {
    RowKey key;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const IndexColumn& part = index.columns[i];
        const StoredColumn& column = table.stored[static_cast<std::size_t>(part.column)];
        if (column.IsText() && values[i]) {
            const Text text = DecodeText(*values[i], format);
            AppendTextKey(text, part.ascending, key.bytes);
            key.known = key.known && HasSortKey(KeyPart(text));
        } else {
            AppendKey(column, part.ascending, values[i], format, key.bytes);
        }
        key.anyNull = key.anyNull || !values[i];
        key.allNull = key.allNull && !values[i];
    }
    return key;
}

}  // namespace quardele::jet
