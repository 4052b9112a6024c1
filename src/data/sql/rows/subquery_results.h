// What the subqueries of a statement came to during one run, so that none runs again without need.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "expressions/truth.h"
#include "rows/key_table.h"
#include "rows/row_context.h"
#include "syntax/ast.h"

namespace quardele::sql {

/// The values of a subquery, as far as comparisons with all or any of them need to know them.
class ValueSummary {
 public:
    void Add(const Variant& value);
    /// Whether the comparison of a value with all of them, or with any, is true. Throws 3464.
    [[nodiscard]] Truth Compare(BinaryOperator op, bool all, const Variant& value) const;

 private:
    [[nodiscard]] Truth EqualsAny(const Variant& value) const;
    [[nodiscard]] Truth ComparesToEnds(BinaryOperator op, bool all, const Variant& value) const;

    KeyTable keys_;
    bool hasNull_ = false;
    std::optional<Variant> least_;
    std::optional<Variant> greatest_;
};

struct SubqueryResult {
    /// Of a scalar subquery; of EXISTS a truth value.
    Variant value = basic::Null();
    ValueSummary summary;
};

class SubqueryResults {
 public:
    /// The result of a subquery for its parameters, null when it is not known yet.
    [[nodiscard]] const SubqueryResult* Find(const SelectPlan& subquery, const std::string& parameters) const;
    /// Results stay until too many of one subquery are known.
    const SubqueryResult& Add(const SelectPlan& subquery, const std::string& parameters,
                              SubqueryResult result);

 private:
    using OfSubquery = std::unordered_map<std::string, std::unique_ptr<const SubqueryResult>>;
    std::map<const SelectPlan*, OfSubquery> results_;
};

}  // namespace quardele::sql
