#include "plan/outer_scope.h"

#include <algorithm>

#include "plan/binder.h"
#include "plan/statement_plan.h"
#include "sql_error.h"
#include "syntax/printer.h"

namespace quardele::sql {
namespace {

void RequireOneColumn(const SelectPlan& plan, const Statement& statement) {
    if (plan.columns.size() != 1) {
        throw basic::RuntimeError(error::kSubqueryColumns,
                                  u"Une sous-requête qui sert de valeur doit donner un seul champ ; seule "
                                  u"EXISTS en admet plusieurs : " +
                                      Quoted(Print(statement)) + u".");
    }
}

/// Leaves out what the kind of subquery does not ask for: an order, and rows behind those that decide.
void Trim(SelectPlan& plan, Subquery::Kind kind) {
    if (plan.top) {
        return;
    }
    plan.order.clear();
    if (kind == Subquery::Kind::Exists) {
        plan.top = Top{1};
    } else if (kind == Subquery::Kind::Scalar) {
        plan.top = Top{2};
    }
}

}  // namespace

std::optional<NameMeaning> OuterScope::Find(const NameReference& name) {
    const auto meaning = around_.FindAround(name);
    if (!meaning) {
        return std::nullopt;
    }
    const auto known = std::find(meanings_.begin(), meanings_.end(), *meaning);
    const auto position = known - meanings_.begin();
    if (known == meanings_.end()) {
        meanings_.push_back(*meaning);
        parameters_.push_back(MakeExpression(NameReference{name.qualifier, name.name, meaning}));
        types_.push_back(around_.TypeOf(*meaning));
    }
    return NameMeaning{NameMeaning::Kind::Parameter, 0, static_cast<int>(position)};
}

void PlanSubquery(Subquery& subquery, jet::Database& database, const Binder& around) {
    OuterScope outer(around);
    SelectPlan plan = MakeStatementPlan(database, Clone(*subquery.statement), &outer);
    if (subquery.kind != Subquery::Kind::Exists) {
        RequireOneColumn(plan, *subquery.statement);
        plan.fixedValues = true;
    }
    Trim(plan, subquery.kind);
    subquery.parameters = outer.TakeParameters();
    subquery.plan = std::make_shared<const SelectPlan>(std::move(plan));
}

}  // namespace quardele::sql
