#include "rows/value_encoder.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <basic/conversion.h>
#include <basic/decimal.h>
#include <basic/locale.h>
#include <basic/runtime_error.h>

#include "rows/decimal_codec.h"
#include "rows/text_codec.h"
#include "rows/value_codec.h"

namespace quardele::jet {

namespace {

constexpr std::uint8_t kNegative = 0x80;

[[noreturn]] void ThrowWrongType() {
    throw basic::RuntimeError(basic::error::kTypeConversion);
}

template <class Integer>
ByteString Little(Integer value) {
    ByteString bytes(sizeof(Integer));
    StoreLittle(std::span(bytes), value);
    return bytes;
}

// Infinity and what is no number at all are values that a file never holds.
template <class Number>
Number Finite(Number value) {
    if (!std::isfinite(value)) {
        ThrowWrongType();
    }
    return value;
}

ByteString Float(float value) {
    return Little(std::bit_cast<std::uint32_t>(Finite(value)));
}
ByteString Double(double value) {
    return Little(std::bit_cast<std::uint64_t>(Finite(value)));
}

double NumberFrom(const basic::Variant& value) {
    const auto number = basic::NumberOf(value);
    return number ? *number : basic::CDbl(value);
}

// A date stays the number that it is: files hold some that are no day of the calendar.
double DaysFrom(const basic::Variant& value) {
    return value.Is<basic::Date>() ? value.As<basic::Date>().days : basic::CDate(value).days;
}

// Halves go to the even neighbour, as in every conversion of the runtime.
template <class Integer>
ByteString Integral(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
          rounded <= static_cast<double>(std::numeric_limits<Integer>::max()))) {
        ThrowWrongType();
    }
    return Little(static_cast<Integer>(rounded));
}

// Written digits are taken as they stand; a double in between would lose the last of many.
basic::Variant DecimalSource(const basic::Variant& value) {
    if (!value.IsText()) {
        return value;
    }
    const auto exact = basic::ReadDecimal(value.As<Text>(), basic::SessionLocale().decimalSeparator);
    return exact ? basic::Variant(*exact) : basic::Variant(basic::CDbl(value));
}

ByteString EncodeDecimal(const StoredColumn& column, const basic::Variant& value) {
    const auto decimal = ToDecimal(DecimalSource(value), column.scale);
    if (!decimal || DigitCount(*decimal) > column.precision) {
        ThrowWrongType();
    }
    ByteString bytes = {decimal->negative ? kNegative : std::uint8_t{0}};
    for (const std::uint32_t word : decimal->magnitude) {
        const ByteString part = Little(word);
        bytes.insert(bytes.end(), part.begin(), part.end());
    }
    return bytes;
}

ByteString EncodeGuid(const basic::Variant& value) {
    if (!value.Is<basic::Guid>()) {
        ThrowWrongType();
    }
    const auto& bytes = value.As<basic::Guid>().bytes;
    return {bytes.begin(), bytes.end()};
}

ByteString EncodeBinary(const basic::Variant& value) {
    if (!value.Is<basic::Binary>()) {
        ThrowWrongType();
    }
    return value.As<basic::Binary>();
}

ByteString EncodeUnchecked(const StoredColumn& column, const basic::Variant& value) {
    switch (column.type) {
        case ColumnType::Boolean:
            return {basic::CBool(value) ? std::uint8_t{1} : std::uint8_t{0}};
        case ColumnType::Byte:
            return Integral<std::uint8_t>(NumberFrom(value));
        case ColumnType::Integer:
            return Integral<std::int16_t>(NumberFrom(value));
        case ColumnType::Long:
            return Integral<std::int32_t>(NumberFrom(value));
        case ColumnType::Currency:
            return Little(basic::CCur(value).tenThousandths);
        case ColumnType::Single:
            return Float(static_cast<float>(NumberFrom(value)));
        case ColumnType::Double:
            return Double(NumberFrom(value));
        case ColumnType::Date:
            return Double(DaysFrom(value));
        case ColumnType::Numeric:
            return EncodeDecimal(column, value);
        case ColumnType::Guid:
            return EncodeGuid(value);
        case ColumnType::Text:
        case ColumnType::Memo:
            return EncodePlainText(TextOf(value));
        default:
            return EncodeBinary(value);
    }
}

// The smallest and largest number that a column can hold, where that is less than a double can say.
std::optional<std::pair<double, double>> RangeOf(const StoredColumn& column) {
    switch (column.type) {
        case ColumnType::Byte:
            return std::pair(0.0, 255.0);
        case ColumnType::Integer:
            return std::pair(-32768.0, 32767.0);
        case ColumnType::Long:
            return std::pair(-2147483648.0, 2147483647.0);
        case ColumnType::Currency:
            return std::pair(-922337203685477.0, 922337203685477.0);
        case ColumnType::Single:
            return std::pair(-3.4028234663852886e38, 3.4028234663852886e38);
        case ColumnType::Numeric: {
            const double limit =
                std::pow(10.0, column.precision - column.scale) - std::pow(10.0, -column.scale);
            return std::pair(-limit, limit);
        }
        default:
            return std::nullopt;
    }
}

// An exact amount needs no double in between, which would lose its last digits.
bool IsExact(const StoredColumn& column, const basic::Variant& value) {
    return (column.type == ColumnType::Currency && value.Is<basic::Currency>()) ||
           (column.type == ColumnType::Numeric && value.Is<basic::Decimal>() &&
            value.As<basic::Decimal>().scale <= column.scale);
}

}  // namespace

Text TextOf(const basic::Variant& value) {
    try {
        return value.IsText() ? value.As<Text>() : basic::CStr(value);
    } catch (const basic::RuntimeError&) {
        ThrowWrongType();
    }
}

ByteString EncodeValue(const StoredColumn& column, const basic::Variant& value) {
    try {
        return EncodeUnchecked(column, value);
    } catch (const basic::RuntimeError&) {
        ThrowWrongType();  // whatever the conversion missed, to the database it is one error
    }
}

SoughtValue EncodeSought(const StoredColumn& column, const basic::Variant& value) {
    const auto range = RangeOf(column);
    if (!range || IsExact(column, value)) {
        return {EncodeValue(column, value), 0};
    }
    double number = 0;
    try {
        number = NumberFrom(value);
    } catch (const basic::RuntimeError&) {
        ThrowWrongType();
    }
    SoughtValue sought;
    sought.bytes = EncodeValue(column, std::clamp(number, range->first, range->second));
    const double nearest = DecodeNumber(column, {sought.bytes, 0});
    sought.side = nearest < number ? -1 : nearest > number ? 1 : 0;
    return sought;
}

}  // namespace quardele::jet
