// All that running a statement needs.
#pragma once

#include <optional>
#include <vector>

#include <sql/query.h>

#include "plan/bound_select.h"
#include "plan/index_choice.h"
#include "plan/planner.h"
#include "rows/aggregate.h"

namespace quardele::sql {

struct OrderStep {
    NodePtr node;
    bool descending = false;
};

struct AggregateStep {
    AggregateKind kind;
    NodePtr argument;  ///< empty for Count(*)
    Text text;         ///< as it is written
};

/// How rows become groups. A group's result row holds the keys, then the aggregates.
struct GroupPlan {
    NodeList keys;
    std::vector<AggregateStep> aggregates;
    NodePtr having;  ///< over the group's result row; may be empty
};

/// How the rows of one table can be found one by one, in the order of the result.
struct StepPlan {
    std::optional<IndexWalk> walk;  ///< empty for physical order
};

struct SelectPlan {
    std::vector<Source> sources;
    Tables tables;
    std::vector<FromItem> from;  ///< the shape of the joins
    ExpressionPtr where;         ///< may be empty
    std::vector<bool> oneSides;  ///< see FindOneSides
    std::vector<ResultItem> items;
    std::vector<ResultColumn> columns;
    Plan plan;
    std::optional<GroupPlan> groups;
    bool distinct = false;
    bool fixedValues = false;  ///< rows hold values that could be read later
    std::optional<Top> top;
    /// Over the rows of the sources, or over the group's result row.
    NodeList itemNodes;
    /// Over the same rows as itemNodes; with DISTINCT over the result columns.
    std::vector<OrderStep> order;
    /// Empty when all rows must be found before the first is known.
    std::optional<StepPlan> steps;

    /// Whether result rows are identities of source rows, not values.
    [[nodiscard]] bool IsKeyed() const { return !fixedValues && !groups && !distinct && !tables.empty(); }
    [[nodiscard]] CompileScope SourceScope() const { return {&sources, {}, nullptr, nullptr}; }
    /// Whether rows come from a query within the statement, so that they have no identities.
    [[nodiscard]] bool ReadsQuery() const;
    /// "table.column" of a result column that is a plain column, else empty.
    [[nodiscard]] Text QualifiedName(std::size_t column) const;
};

/// Compiles a bound statement. Throws what Compile throws; 3093 for an order outside a DISTINCT's columns.
[[nodiscard]] SelectPlan MakeSelectPlan(BoundSelect bound);

}  // namespace quardele::sql
