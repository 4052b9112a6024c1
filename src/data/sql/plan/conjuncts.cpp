#include "plan/conjuncts.h"

#include <algorithm>
#include <iterator>

namespace quardele::sql {
namespace {

void AppendParts(const Expression& condition, Conjuncts& conjuncts) {
    const auto* chain = condition.As<Junction>();
    if (chain == nullptr || !chain->isAnd) {
        conjuncts.push_back({&condition, SourcesOf(condition)});
        return;
    }
    for (const ExpressionPtr& operand : chain->operands) {
        AppendParts(*operand, conjuncts);
    }
}

}  // namespace

SourceSet SourcesOf(const Expression& expression) {
    if (const auto column = ColumnOf(expression)) {
        return SetOf(column->source);
    }
    SourceSet sources = 0;
    for (const Expression* part : PartsOf(expression)) {
        sources |= SourcesOf(*part);
    }
    return sources;
}

void AppendConjuncts(const ExpressionPtr& condition, Conjuncts& conjuncts) {
    if (condition) {
        AppendParts(*condition, conjuncts);
    }
}

Conjuncts TakeWithin(Conjuncts& conjuncts, SourceSet set) {
    const auto outside =
        std::stable_partition(conjuncts.begin(), conjuncts.end(),
                              [set](const Conjunct& conjunct) { return IsWithin(conjunct.sources, set); });
    Conjuncts within(conjuncts.begin(), outside);
    conjuncts.erase(conjuncts.begin(), outside);
    return within;
}

std::optional<NameMeaning> ColumnOf(const Expression& expression) {
    const auto* name = expression.As<NameReference>();
    if (name == nullptr || !name->meaning || name->meaning->kind != NameMeaning::Kind::SourceColumn) {
        return std::nullopt;
    }
    return name->meaning;
}

std::optional<Link> LinkOf(const Expression& condition) {
    const auto* comparison = condition.As<Binary>();
    if (comparison == nullptr || comparison->op != BinaryOperator::Equal) {
        return std::nullopt;
    }
    const auto left = ColumnOf(*comparison->left);
    const auto right = ColumnOf(*comparison->right);
    return left && right && left->source != right->source ? std::optional(Link{*left, *right}) : std::nullopt;
}

}  // namespace quardele::sql
