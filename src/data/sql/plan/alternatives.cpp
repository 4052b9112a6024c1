#include "plan/alternatives.h"

#include <algorithm>

#include "expressions/operators.h"

namespace quardele::sql {
namespace {

constexpr std::size_t kMostAlternatives = 32;

bool IsColumnOf(const ExpressionPtr& expression, SourceSet sources) {
    const auto column = ColumnOf(*expression);
    return column && IsWithin(SetOf(column->source), sources);
}

void AppendWays(const Expression& condition, std::vector<ExpressionPtr>& ways) {
    const auto* chain = condition.As<Junction>();
    const auto* list = condition.As<InList>();
    if (ways.size() > kMostAlternatives) {
        return;
    }
    if (chain != nullptr && !chain->isAnd) {
        for (const ExpressionPtr& operand : chain->operands) {
            AppendWays(*operand, ways);
        }
    } else if (list != nullptr && !list->negated && list->items.size() <= kMostAlternatives) {
        for (const ExpressionPtr& item : list->items) {
            ways.push_back(
                MakeExpression(Binary{BinaryOperator::Equal, Clone(*list->operand), Clone(*item)}));
        }
    } else {
        ways.push_back(Clone(condition));
    }
}

}  // namespace

std::vector<ExpressionPtr> AlternativesOf(const Expression& condition) {
    std::vector<ExpressionPtr> ways;
    AppendWays(condition, ways);
    if (ways.size() == 1 || ways.size() > kMostAlternatives) {
        ways.clear();
    }
    return ways;
}

bool RefusesMissing(const Expression& condition, SourceSet sources) {
    if (const auto* comparison = condition.As<Binary>()) {
        return (IsComparison(comparison->op) || comparison->op == BinaryOperator::Like) &&
               (IsColumnOf(comparison->left, sources) || IsColumnOf(comparison->right, sources));
    }
    if (const auto* null = condition.As<IsNull>()) {
        return null->negated && IsColumnOf(null->operand, sources);
    }
    if (const auto* chain = condition.As<Junction>(); chain != nullptr && !chain->isAnd) {
        return std::all_of(chain->operands.begin(), chain->operands.end(),
                           [sources](const auto& operand) { return RefusesMissing(*operand, sources); });
    }
    const auto* between = condition.As<Between>();
    const auto* list = condition.As<InList>();
    return (between != nullptr && !between->negated && IsColumnOf(between->operand, sources)) ||
           (list != nullptr && IsColumnOf(list->operand, sources));
}

}  // namespace quardele::sql
