#include "field_value.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include <basic/conversion.h>
#include <basic/runtime_error.h>

namespace quardele::dao {
namespace {

namespace error = basic::error;
using basic::RuntimeError;

[[noreturn]] void ThrowConversion() {
    throw RuntimeError(error::kTypeConversion);
}

std::uint8_t AsByte(const Variant& value) {
    const std::int32_t number = basic::CLng(value);
    if (number < 0 || number > std::numeric_limits<std::uint8_t>::max()) {
        ThrowConversion();
    }
    return static_cast<std::uint8_t>(number);
}

float AsSingle(const Variant& value) {
    const double number = basic::CDbl(value);
    if (std::abs(number) > double{std::numeric_limits<float>::max()}) {
        ThrowConversion();
    }
    return static_cast<float>(number);
}

/// A value that only its own type can stand for.
template <class T>
Variant OnlyAs(const Variant& value) {
    return value.As<T>();
}

Variant Converted(FieldType type, const Variant& value) {
    switch (type) {
        case FieldType::Boolean:
            return basic::CBool(value);
        case FieldType::Byte:
            return AsByte(value);
        case FieldType::Integer:
            return basic::CInt(value);
        case FieldType::Long:
            return basic::CLng(value);
        case FieldType::Currency:
            return basic::CCur(value);
        case FieldType::Single:
            return AsSingle(value);
        case FieldType::Double:
            return basic::CDbl(value);
        case FieldType::Date:
            return basic::CDate(value);
        case FieldType::Text:
        case FieldType::Memo:
            return basic::CStr(value);
        case FieldType::Decimal:
            return value.IsNumber() ? value : Variant(basic::CDbl(value));
        case FieldType::Guid:
            return OnlyAs<basic::Guid>(value);
        case FieldType::Binary:
        case FieldType::LongBinary:
            return OnlyAs<basic::Binary>(value);
    }
    ThrowConversion();
}

}  // namespace

Variant ConvertedFor(FieldType type, const Variant& value) {
    if (value.IsNull() || value.IsEmpty()) {
        return type == FieldType::Boolean ? Variant(false) : Variant(basic::Null{});
    }
    try {
        return Converted(type, value);
    } catch (const RuntimeError&) {
        ThrowConversion();
    }
}

Variant CheckedFor(const Field& field, const Variant& value) {
    Variant converted = ConvertedFor(field.type, value);
    if (!converted.IsText()) {
        return converted;
    }
    const std::size_t length = converted.As<Text>().size();
    if (length == 0 && !field.allowZeroLength) {
        throw RuntimeError(error::kEmptyText, basic::Describe(error::kEmptyText, field.name));
    }
    if (field.size > 0 && length > static_cast<std::size_t>(field.size)) {
        throw RuntimeError(error::kTextTooLong, basic::Describe(error::kTextTooLong, field.name));
    }
    return converted;
}

}  // namespace quardele::dao
