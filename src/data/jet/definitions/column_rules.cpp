#include "definitions/column_rules.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "rows/text_codec.h"
#include "rows/value_encoder.h"

namespace quardele::jet {

namespace {

[[noreturn]] void Throw(int number, const Column& column) {
    throw basic::RuntimeError(number, basic::Describe(number, column.name));
}

// Text of the column's own length, filled up with blanks.
ByteString Padded(const Column& column, Text text) {
    text.resize(static_cast<std::size_t>(column.size), u' ');
    return EncodeText(text, false);
}

ByteString TextBytes(const Column& column, const StoredColumn& stored, const Text& text) {
    if (stored.type == ColumnType::Text && text.size() > static_cast<std::size_t>(column.size)) {
        Throw(basic::error::kTextTooLong, column);
    }
    if (text.empty() && !column.allowZeroLength) {
        Throw(basic::error::kEmptyText, column);
    }
    if (stored.fixed) {
        return Padded(column, text);
    }
    // A memo that stays in its row is compressed whatever the column's flag says; a longer one never is.
    const bool compress = stored.type == ColumnType::Memo
                              ? text.size() * sizeof(char16_t) <= long_value::kLargestInline
                              : stored.compressed;
    return EncodeText(text, compress);
}

}  // namespace

std::optional<ByteString> AcceptedValue(const Column& column, const StoredColumn& stored,
                                        const basic::Variant& value) {
    if (value.IsNull() || value.IsEmpty()) {
        if (stored.type == ColumnType::Boolean) {
            return ByteString{0};
        }
        if (column.required) {
            Throw(basic::error::kNullRequired, column);
        }
        return std::nullopt;
    }
    if (stored.IsText()) {
        return TextBytes(column, stored, TextOf(value));
    }
    ByteString bytes = EncodeValue(stored, value);
    if (stored.type == ColumnType::Binary && bytes.size() > stored.length) {
        Throw(basic::error::kTextTooLong, column);
    }
    return bytes;
}

}  // namespace quardele::jet
