#include "plan/statement_plan.h"

#include <utility>

#include "plan/bound_select.h"
#include "plan/compiler.h"
#include "rows/union_producer.h"
#include "sql_error.h"

namespace quardele::sql {
namespace {

SelectPlan PlanOf(jet::Database& database, Select select, std::vector<OrderItem> orderBy, OuterScope* outer) {
    return MakeSelectPlan(BindSelect(database, std::move(select), std::move(orderBy), outer));
}

/// The columns of a union have the names of its first part, and the types that all parts have in common.
void DescribeUnion(const std::vector<SelectPlan>& parts, SelectPlan& plan) {
    for (std::size_t i = 0; i < parts.front().columns.size(); ++i) {
        StaticType type = parts.front().itemNodes[i]->Type();
        for (const SelectPlan& part : parts) {
            type = CommonType(type, part.itemNodes[i]->Type());
        }
        const Text& name = parts.front().columns[i].name;
        const NameMeaning meaning{NameMeaning::Kind::ResultColumn, 0, static_cast<int>(i)};
        plan.items.push_back({name, MakeExpression(NameReference{{}, name, meaning})});
        plan.itemNodes.push_back(MakeResult(i, type));
        ResultColumn column;
        column.name = name;
        column.type = type.value_or(jet::ColumnType::Text);
        plan.columns.push_back(std::move(column));
    }
}

/// The order of a union goes by its result columns.
void CompileUnionOrder(jet::Database& database, std::vector<OrderItem>& orderBy, SelectPlan& plan) {
    const std::vector<Source> noSources;
    Binder binder(database, noSources, plan.items);
    CompileScope scope = plan.SourceScope();
    for (const NodePtr& item : plan.itemNodes) {
        scope.resultTypes.push_back(item->Type());
    }
    for (OrderItem& item : orderBy) {
        binder.BindOrder(item.expression);
    }
    binder.RequireAllKnown();
    for (const OrderItem& item : orderBy) {
        plan.order.push_back({Compile(*item.expression, scope), item.descending});
    }
}

SelectPlan MakeUnionPlan(jet::Database& database, Statement statement, OuterScope* outer) {
    std::vector<SelectPlan> parts;
    for (Select& select : statement.selects) {
        parts.push_back(PlanOf(database, std::move(select), {}, outer));
        if (parts.back().columns.size() != parts.front().columns.size()) {
            throw basic::RuntimeError(
                error::kUnionColumns,
                u"Les requêtes réunies par UNION n'ont pas toutes le même nombre de colonnes.");
        }
    }
    SelectPlan plan;
    DescribeUnion(parts, plan);
    CompileUnionOrder(database, statement.orderBy, plan);
    plan.distinct = !statement.unionAll.back();
    plan.plan.rows = std::make_unique<const UnionProducer>(std::move(parts), std::move(statement.unionAll));
    return plan;
}

}  // namespace

SelectPlan MakeStatementPlan(jet::Database& database, Statement statement, OuterScope* outer) {
    if (statement.selects.size() > 1) {
        return MakeUnionPlan(database, std::move(statement), outer);
    }
    return PlanOf(database, std::move(statement.selects.front()), std::move(statement.orderBy), outer);
}

}  // namespace quardele::sql
