#include <basic/runtime_error.h>

#include "rows/long_value.h"
#include "rows/row_codec.h"
#include "rows/text_codec.h"
#include "rows/value_codec.h"
#include "table_impl.h"

namespace quardele::jet {

namespace {

constexpr double kTrue = -1;

}  // namespace

/// One column of one row.
class RowReader {
 public:
    RowReader(const Row& row, int column)
        : table_(*row.table_),
          row_(row),
          ordinal_(column),
          page_(row.id_.page),
          column_(table_.Def().stored.at(static_cast<std::size_t>(column))),
          layout_(LayoutOf(row)) {}

    [[nodiscard]] const StoredColumn& Column() const { return column_; }
    [[nodiscard]] bool IsNull() const { return layout_.IsNull(column_); }
    [[nodiscard]] std::optional<ByteView> Field() const { return layout_.Field(column_); }

    /// Calls use(bytes) with the bytes of a text, wherever they lie; false when it is null.
    template <class Use>
    bool WithText(const Use& use) const {
        const auto field = Field();
        if (field && column_.IsLong()) {
            const ByteString data = ReadLong(*field);
            use(ByteView(data, page_));
        } else if (field) {
            use(*field);
        }
        return field.has_value();
    }
    [[nodiscard]] const Format& Layout() const { return table_.Layout(); }

 private:
    static RowLayout LayoutOf(const Row& row) {
        const ByteView bytes(row.bytes_, row.id_.page);
        if (row.shape_.bitmap == 0) {
            row.shape_ = RowLayout(bytes, row.table_->Def(), row.table_->Layout()).Shape();
        }
        return {bytes, row.shape_, row.table_->Layout()};
    }

    [[nodiscard]] ByteString ReadLong(const ByteView& field) const {
        return table_.Owner().Reading([&] {
            if (!IsStored(field)) {
                throw basic::RuntimeError(basic::error::kRecordChanged);
            }
            return ReadLongValue(table_.Pages(), field);
        });
    }

    /// Whether the value lies where the row says: pages may have changed since the row was read, and the
    /// place may be another value's by now.
    [[nodiscard]] bool IsStored(const ByteView& field) const {
        const PageSource& pages = table_.Pages();
        if (IsInline(field) || pages.Read(row_.page_->number) == row_.page_) {
            return true;
        }
        const auto now = table_.Fetch(row_.id_);
        if (!now) {
            return false;
        }
        const RowReader reader(*now, ordinal_);
        const auto stored = reader.Field();
        return stored && CompareBytes(stored->Span(), field.Span()) == 0;
    }
    [[nodiscard]] static bool IsInline(const ByteView& field) {
        return field.IsEmpty() || LongValueDescriptor::Load(field).form == long_value::kInline;
    }

    const TableImpl& table_;
    const Row& row_;
    int ordinal_;
    std::uint32_t page_;
    const StoredColumn& column_;
    RowLayout layout_;
};

bool Row::IsNull(int column) const {
    const RowReader reader(*this, column);
    return reader.Column().type != ColumnType::Boolean && reader.IsNull();
}

Variant Row::Value(int column) const {
    const RowReader reader(*this, column);
    if (reader.Column().type == ColumnType::Boolean) {
        return !reader.IsNull();
    }
    Variant value = basic::Null{};
    reader.WithText(
        [&](const ByteView& data) { value = DecodeValue(reader.Column(), data, reader.Layout()); });
    return value;
}

std::optional<double> Row::Number(int column) const {
    const StoredColumn& stored = table_->Def().stored.at(static_cast<std::size_t>(column));
    const auto size = NaturalSize(stored.type);
    if (stored.fixed && size && table_->Layout().wideText) {
        const auto field = FixedField(bytes_, id_.page, stored, *size);
        return field ? std::optional(DecodeNumber(stored, *field)) : std::nullopt;
    }
    const RowReader reader(*this, column);
    if (reader.Column().type == ColumnType::Boolean) {
        return reader.IsNull() ? 0 : kTrue;
    }
    const auto field = reader.Field();
    return field ? std::optional(DecodeNumber(reader.Column(), *field)) : std::nullopt;
}

bool Row::TextAt(int column, Text& text) const {
    const RowReader reader(*this, column);
    text.clear();
    return reader.Column().IsText() &&
           reader.WithText([&](const ByteView& data) { DecodeText(data, reader.Layout(), text); });
}

bool Row::AppendUtf8At(int column, std::string& utf8) const {
    const RowReader reader(*this, column);
    return reader.Column().IsText() &&
           reader.WithText([&](const ByteView& data) { AppendUtf8(data, reader.Layout(), utf8); });
}

}  // namespace quardele::jet
