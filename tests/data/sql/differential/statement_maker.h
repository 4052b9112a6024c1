// Makes SELECT statements over the tables.
#pragma once

#include "expression_maker.h"

namespace quardele::sql::differential {

class StatementMaker {
 public:
    explicit StatementMaker(Random& random) : random_(random) {}

    [[nodiscard]] Select Make();

 private:
    using Leaves = std::vector<Expression>;

    /// What a query around it lends to a subquery.
    [[nodiscard]] ExpressionMaker::MakeSubquery SubqueriesIn(const Leaves& around);
    [[nodiscard]] Expression Subquery(Kind kind, const Leaves& around);
    [[nodiscard]] Expression ConditionSubquery(const Leaves& around);
    [[nodiscard]] Expression Quantified(Kind kind, const Leaves& around);
    [[nodiscard]] Expression ScalarSubquery(Kind kind, const Leaves& around);
    /// One table and a condition; no items yet. `known` gets its columns.
    [[nodiscard]] Select InnerSelect(const Leaves& around, Leaves& known);
    [[nodiscard]] Expression InnerWhere(const Leaves& around, const Leaves& known);

    [[nodiscard]] From AnyFrom(int tables, Leaves& known);
    [[nodiscard]] From OneTable(Leaves& known);
    [[nodiscard]] From OneQuery(Leaves& known);
    [[nodiscard]] Expression On(const Leaves& left, const Leaves& right);

    /// FROM and WHERE.
    [[nodiscard]] Select Start(Leaves& known);
    void AddPlainItems(Select& select, const Leaves& known);
    void AddGroups(Select& select, const Leaves& known);
    [[nodiscard]] Leaves Aggregates(const Leaves& known);
    void AddOrder(Select& select);
    void AddTop(Select& select);
    void AddOwnOrder(Select& select);
    void AddUnion(Select& select);

    Random& random_;
    int aliases_ = 0;
    int level_ = 0;
    bool anyOfEqualTexts_ = false;
};

}  // namespace quardele::sql::differential
