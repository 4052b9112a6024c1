// What a subquery sees of the statement around it.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include <jet/database.h>

#include "expressions/types.h"
#include "syntax/ast.h"

namespace quardele::sql {

class Binder;

/// The names around one subquery, and those of them that it uses: each becomes a parameter, whose value the
/// row around gives when the subquery runs.
class OuterScope {
 public:
    /// The binder of the statement around must outlive the scope.
    explicit OuterScope(const Binder& around) : around_(around) {}

    /// The parameter that a name of the subquery stands for, empty when nothing around knows it. Throws 3079.
    [[nodiscard]] std::optional<NameMeaning> Find(const NameReference& name);
    [[nodiscard]] const std::vector<StaticType>& Types() const { return types_; }
    /// The parameters as names of the statement around.
    [[nodiscard]] std::vector<ExpressionPtr> TakeParameters() { return std::move(parameters_); }

 private:
    const Binder& around_;
    std::vector<NameMeaning> meanings_;  ///< of the parameters, in the statement around
    std::vector<ExpressionPtr> parameters_;
    std::vector<StaticType> types_;
};

/// Plans a subquery whose operand is bound already. Throws what MakeStatementPlan throws; 3306 when more than
/// one column stands where a value is asked for.
void PlanSubquery(Subquery& subquery, jet::Database& database, const Binder& around);

}  // namespace quardele::sql
