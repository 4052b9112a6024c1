#include "expressions/types.h"

#include "sql_error.h"

namespace quardele::sql {
namespace {

using jet::ColumnType;

struct TypeVisitor {
    StaticType operator()(bool) const { return ColumnType::Boolean; }
    StaticType operator()(std::uint8_t) const { return ColumnType::Byte; }
    StaticType operator()(std::int16_t) const { return ColumnType::Integer; }
    StaticType operator()(std::int32_t) const { return ColumnType::Long; }
    StaticType operator()(basic::Currency) const { return ColumnType::Currency; }
    StaticType operator()(float) const { return ColumnType::Single; }
    StaticType operator()(double) const { return ColumnType::Double; }
    StaticType operator()(basic::Date) const { return ColumnType::Date; }
    StaticType operator()(const basic::Decimal&) const { return ColumnType::Numeric; }
    StaticType operator()(const basic::Guid&) const { return ColumnType::Guid; }
    StaticType operator()(const Text&) const { return ColumnType::Text; }
    StaticType operator()(const basic::Binary&) const { return ColumnType::Binary; }
    template <class T>
    StaticType operator()(const T&) const {
        return std::nullopt;
    }
};

bool IsWhole(ColumnType type) {
    return type == ColumnType::Boolean || type == ColumnType::Byte || type == ColumnType::Integer ||
           type == ColumnType::Long;
}

bool IsText(ColumnType type) {
    return type == ColumnType::Text || type == ColumnType::Memo;
}

/// Whole numbers, amounts and decimals.
bool IsExact(ColumnType type) {
    return IsWhole(type) || type == ColumnType::Currency || type == ColumnType::Numeric;
}

/// The type of what two numbers make that are not both whole: exact when both are.
ColumnType ExactOrDouble(ColumnType left, ColumnType right) {
    if (!IsExact(left) || !IsExact(right)) {
        return ColumnType::Double;
    }
    const bool decimal = left == ColumnType::Numeric || right == ColumnType::Numeric;
    return decimal ? ColumnType::Numeric : ColumnType::Currency;
}

StaticType SumType(BinaryOperator op, ColumnType left, ColumnType right) {
    if (op == BinaryOperator::Add && IsText(left) && IsText(right)) {
        return ColumnType::Text;
    }
    const bool leftDate = left == ColumnType::Date;
    const bool rightDate = right == ColumnType::Date;
    if (leftDate || rightDate) {
        const bool difference = op == BinaryOperator::Subtract && leftDate && rightDate;
        return difference ? ColumnType::Double : ColumnType::Date;
    }
    return std::nullopt;
}

}  // namespace

TypeClass ClassOf(StaticType type) {
    if (!type) {
        return TypeClass::Unknown;
    }
    switch (*type) {
        case ColumnType::Text:
        case ColumnType::Memo:
            return TypeClass::Texts;
        case ColumnType::Binary:
        case ColumnType::Ole:
        case ColumnType::Opaque:
            return TypeClass::Bytes;
        case ColumnType::Guid:
            return TypeClass::Guids;
        default:
            return TypeClass::Numbers;
    }
}

void RequireComparable(StaticType left, StaticType right) {
    const TypeClass a = ClassOf(left);
    const TypeClass b = ClassOf(right);
    if (a != b && a != TypeClass::Unknown && b != TypeClass::Unknown) {
        throw basic::RuntimeError(error::kDataTypeMismatch);
    }
}

void RequireCondition(StaticType type) {
    RequireComparable(type, ColumnType::Boolean);
}

StaticType TypeOf(const Variant& value) {
    return std::visit(TypeVisitor(), value.Stored());
}

StaticType CommonType(StaticType left, StaticType right) {
    if (left == right) {
        return left;
    }
    if (!left || !right || ClassOf(left) != ClassOf(right)) {
        return std::nullopt;
    }
    switch (ClassOf(left)) {
        case TypeClass::Texts:
            return ColumnType::Memo;
        case TypeClass::Numbers:
            if (*left == ColumnType::Date || *right == ColumnType::Date) {
                return ColumnType::Date;
            }
            if (IsWhole(*left) && IsWhole(*right)) {
                return ColumnType::Long;
            }
            return ExactOrDouble(*left, *right);
        default:
            return left;
    }
}

StaticType ArithmeticType(BinaryOperator op, StaticType left, StaticType right) {
    switch (op) {
        case BinaryOperator::Divide:
        case BinaryOperator::Power:
            return ColumnType::Double;
        case BinaryOperator::IntegerDivide:
        case BinaryOperator::Modulo:
            return ColumnType::Long;
        default:
            break;
    }
    if (!left || !right) {
        return std::nullopt;
    }
    if (op != BinaryOperator::Multiply) {
        if (const StaticType type = SumType(op, *left, *right)) {
            return type;
        }
    }
    if (IsWhole(*left) && IsWhole(*right)) {
        return ColumnType::Long;
    }
    return ExactOrDouble(*left, *right);
}

}  // namespace quardele::sql
