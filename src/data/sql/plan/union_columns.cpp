#include "plan/union_columns.h"

#include <algorithm>

namespace quardele::sql {
namespace {

using jet::ColumnType;

/// The longest text of a column.
constexpr int kLongestText = 255;

bool IsNullLiteral(const Node& node) {
    return node.Constant() != nullptr && node.Constant()->IsNull();
}

bool IsTextOrNumber(StaticType type) {
    return ClassOf(type) == TypeClass::Texts || ClassOf(type) == TypeClass::Numbers;
}

/// Types that disagree meet in texts, as far as values can be written as such. A type that is not known, that
/// of calculating with Null for one, goes by the other.
StaticType Met(StaticType left, StaticType right) {
    if (!left || !right) {
        return left ? left : right;
    }
    if (const StaticType common = CommonType(left, right)) {
        return common;
    }
    if (!IsTextOrNumber(left) || !IsTextOrNumber(right)) {
        return std::nullopt;
    }
    return left == ColumnType::Memo || right == ColumnType::Memo ? ColumnType::Memo : ColumnType::Text;
}

}  // namespace

StaticType UnionType(const std::vector<SelectPlan>& parts, std::size_t column) {
    StaticType type;
    bool first = true;
    for (const SelectPlan& part : parts) {
        const Node& item = *part.itemNodes[column];
        if (!IsNullLiteral(item)) {
            type = first ? item.Type() : Met(type, item.Type());
            first = false;
        }
    }
    return type;
}

int UnionSize(const std::vector<SelectPlan>& parts, std::size_t column, jet::ColumnType type) {
    int size = 0;
    for (const SelectPlan& part : parts) {
        const ResultColumn& own = part.columns[column];
        if (IsNullLiteral(*part.itemNodes[column])) {
            continue;
        }
        const bool same = own.type == type && own.size > 0;
        if (!same && type != ColumnType::Text) {
            return 0;
        }
        size = std::max(size, same ? own.size : kLongestText);
    }
    return size;
}

}  // namespace quardele::sql
