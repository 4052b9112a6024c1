// Copies of statements: a nested query is bound once for each place that a copy of it stands in.
#include "syntax/ast.h"

namespace quardele::sql {
namespace {

ExpressionPtr CloneOrNull(const ExpressionPtr& expression) {
    return expression ? Clone(*expression) : nullptr;
}

FromItem CloneFrom(const FromItem& item) {
    const auto* join = std::get_if<Join>(&item.node);
    if (join == nullptr) {
        const auto* table = std::get_if<TableName>(&item.node);
        return table != nullptr ? FromItem{*table, item.depth}
                                : FromItem{std::get<NestedQuery>(item.node), item.depth};
    }
    Join copy;
    copy.kind = join->kind;
    copy.left = std::make_unique<FromItem>(CloneFrom(*join->left));
    copy.right = std::make_unique<FromItem>(CloneFrom(*join->right));
    copy.on = CloneOrNull(join->on);
    return FromItem{std::move(copy), item.depth};
}

Select CloneSelect(const Select& select) {
    Select copy;
    copy.distinct = select.distinct;
    copy.distinctRows = select.distinctRows;
    copy.top = select.top;
    for (const SelectItem& item : select.items) {
        copy.items.push_back({CloneOrNull(item.expression), item.alias, item.starQualifier});
    }
    for (const FromItem& item : select.from) {
        copy.from.push_back(CloneFrom(item));
    }
    copy.where = CloneOrNull(select.where);
    for (const ExpressionPtr& key : select.groupBy) {
        copy.groupBy.push_back(Clone(*key));
    }
    copy.having = CloneOrNull(select.having);
    return copy;
}

}  // namespace

Statement Clone(const Statement& statement) {
    Statement copy;
    for (const Select& select : statement.selects) {
        copy.selects.push_back(CloneSelect(select));
    }
    copy.unionAll = statement.unionAll;
    for (const OrderItem& item : statement.orderBy) {
        copy.orderBy.push_back({Clone(*item.expression), item.descending});
    }
    return copy;
}

}  // namespace quardele::sql
