#include "rows/value_codec.h"

#include <algorithm>

#include "rows/decimal_codec.h"
#include "rows/text_codec.h"

namespace quardele::jet {

namespace {

constexpr std::uint8_t kNegative = 0x80;
constexpr double kCurrencyUnit = 10000;

basic::Decimal DecodeDecimal(const StoredColumn& column, const ByteView& bytes) {
    basic::Decimal value;
    value.negative = (bytes.U8(0) & kNegative) != 0;
    value.scale = column.scale;
    for (std::size_t i = 0; i < value.magnitude.size(); ++i) {
        value.magnitude[i] = bytes.U32(1 + i * 4);
    }
    return value;
}

basic::Guid DecodeGuid(const ByteView& bytes) {
    basic::Guid guid;
    std::copy(bytes.Span().begin(), bytes.Span().end(), guid.bytes.begin());
    return guid;
}

}  // namespace

basic::Variant DecodeValue(const StoredColumn& column, const ByteView& bytes, const Format& format) {
    if (IsMissing(column, bytes)) {
        return basic::Null{};
    }
    CheckSize(column, bytes);
    switch (column.type) {
        case ColumnType::Byte:
            return bytes.U8(0);
        case ColumnType::Integer:
            return bytes.I16(0);
        case ColumnType::Long:
            return bytes.I32(0);
        case ColumnType::Currency:
            return basic::Currency{bytes.I64(0)};
        case ColumnType::Single:
            return bytes.F32(0);
        case ColumnType::Double:
            return bytes.F64(0);
        case ColumnType::Date:
            return basic::Date{bytes.F64(0)};
        case ColumnType::Text:
        case ColumnType::Memo:
            return DecodeText(bytes, format);
        case ColumnType::Guid:
            return DecodeGuid(bytes);
        case ColumnType::Numeric:
            return DecodeDecimal(column, bytes);
        default:
            return basic::Binary(bytes.Span().begin(), bytes.Span().end());
    }
}

double DecodeNumber(const StoredColumn& column, const ByteView& bytes) {
    if (bytes.IsEmpty()) {
        return 0;
    }
    CheckSize(column, bytes);
    switch (column.type) {
        case ColumnType::Byte:
            return bytes.U8(0);
        case ColumnType::Integer:
            return bytes.I16(0);
        case ColumnType::Long:
            return bytes.I32(0);
        case ColumnType::Currency:
            return static_cast<double>(bytes.I64(0)) / kCurrencyUnit;
        case ColumnType::Single:
            return static_cast<double>(bytes.F32(0));
        case ColumnType::Double:
        case ColumnType::Date:
            return bytes.F64(0);
        case ColumnType::Numeric:
            return DecimalNumber(DecodeDecimal(column, bytes));
        default:
            return 0;
    }
}

}  // namespace quardele::jet
