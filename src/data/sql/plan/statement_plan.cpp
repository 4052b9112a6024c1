#include "plan/statement_plan.h"

#include <utility>

#include <basic/conversion.h>

#include "plan/bound_select.h"
#include "plan/compiler.h"
#include "plan/union_columns.h"
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
        const StaticType type = UnionType(parts, i);
        const Text& name = parts.front().columns[i].name;
        const NameMeaning meaning{NameMeaning::Kind::ResultColumn, 0, static_cast<int>(i)};
        plan.items.push_back({name, MakeExpression(NameReference{{}, name, meaning})});
        plan.itemNodes.push_back(MakeResult(i, type));
        ResultColumn column;
        column.name = name;
        column.type = type.value_or(jet::ColumnType::Text);
        column.size = UnionSize(parts, i, column.type);
        plan.columns.push_back(std::move(column));
    }
}

std::vector<StaticType> TypesOf(const NodeList& nodes) {
    std::vector<StaticType> types;
    for (const NodePtr& node : nodes) {
        types.push_back(node->Type());
    }
    return types;
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

/// `part` counts from 0.
void RequireAsManyColumns(std::size_t part, std::size_t columns, std::size_t wanted) {
    const auto number = [](std::size_t count) { return basic::NumberText(static_cast<double>(count)); };
    if (columns != wanted) {
        throw basic::RuntimeError(
            error::kUnionColumns,
            u"Les requêtes réunies par UNION n'ont pas toutes le même nombre de colonnes : la "
            u"première en a " +
                number(wanted) + u", la requête n° " + number(part + 1) + u" en a " + number(columns) + u".");
    }
}

std::vector<SelectPlan> PlanParts(jet::Database& database, std::vector<Select> selects, OuterScope* outer) {
    std::vector<SelectPlan> parts;
    UnknownNames unknown;
    for (Select& select : selects) {
        try {
            parts.push_back(PlanOf(database, std::move(select), {}, outer));
        } catch (const MissingParameters& missing) {
            unknown.insert(missing.Names().begin(), missing.Names().end());
        }
    }
    if (!unknown.empty()) {
        throw MissingParameters(std::move(unknown));
    }
    for (std::size_t part = 1; part < parts.size(); ++part) {
        RequireAsManyColumns(part, parts[part].columns.size(), parts.front().columns.size());
    }
    return parts;
}

SelectPlan MakeUnionPlan(jet::Database& database, Statement statement, OuterScope* outer) {
    std::vector<SelectPlan> parts = PlanParts(database, std::move(statement.selects), outer);
    SelectPlan plan;
    DescribeUnion(parts, plan);
    CompileUnionOrder(database, statement.orderBy, plan);
    plan.distinct = !statement.unionAll.back();
    plan.plan.rows = std::make_unique<const UnionProducer>(std::move(parts), std::move(statement.unionAll),
                                                           TypesOf(plan.itemNodes));
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
