#include "plan/binder.h"

#include <algorithm>

#include "syntax/printer.h"
#include "syntax/token.h"

namespace quardele::sql {
namespace {

/// Aliases that name each other can make a short statement huge.
constexpr std::size_t kMostParts = 100000;

Text FullName(const NameReference& name) {
    return name.qualifier.empty() ? name.name : name.qualifier + u"." + name.name;
}

}  // namespace

void Binder::Bind(ExpressionPtr& expression, Aliases aliases) {
    aliases_ = aliases;
    Bind(expression, 1);
}

void Binder::BindOrder(ExpressionPtr& expression) {
    const auto* literal = expression->As<Literal>();
    if (literal == nullptr || !literal->value.Is<std::int32_t>()) {
        Bind(expression, Aliases::AheadOfSources);
        return;
    }
    const std::int32_t position = literal->value.As<std::int32_t>();
    if (position < 1 || static_cast<std::size_t>(position) > results_.size()) {
        const Text place = Print(*expression);
        FailSyntax(error::kSyntaxInOrderBy, u"position hors de la liste SELECT", place, place);
    }
    expression = Clone(*results_[static_cast<std::size_t>(position) - 1].expression);
}

void Binder::Restrict(std::size_t first, std::size_t last) {
    firstSource_ = first;
    lastSource_ = last;
}

void Binder::RequireAllKnown() const {
    if (!unknown_.empty()) {
        throw MissingParameters(unknown_);
    }
}

std::optional<NameMeaning> Binder::FindColumn(TextView qualifier, TextView name) const {
    std::optional<NameMeaning> found;
    for (std::size_t i = firstSource_; i < std::min(lastSource_, sources_.size()); ++i) {
        if (!qualifier.empty() && !basic::EqualNoCase(qualifier, sources_[i].label)) {
            continue;
        }
        const int column = sources_[i].FindColumn(name);
        if (column < 0) {
            continue;
        }
        if (found) {
            FailNaming(error::kAmbiguousName, name);
        }
        found = NameMeaning{NameMeaning::Kind::SourceColumn, i, column};
    }
    return found;
}

void Binder::Bind(ExpressionPtr& expression, int depth) {
    if (depth > kDeepestTree || ++visited_ > kMostParts) {
        FailTooComplex(u"expression trop longue");
    }
    if (auto* name = expression->As<NameReference>()) {
        BindName(expression, *name, depth);
        return;
    }
    for (ExpressionPtr* part : PartsOf(*expression)) {
        Bind(*part, depth + 1);
    }
    if (auto* subquery = expression->As<Subquery>(); subquery != nullptr && !subquery->plan) {
        try {
            PlanSubquery(*subquery, database_, *this);
        } catch (const MissingParameters& missing) {
            unknown_.insert(missing.Names().begin(), missing.Names().end());
        }
    }
}

void Binder::BindName(ExpressionPtr& expression, NameReference& name, int depth) {
    if (name.meaning || (aliases_ == Aliases::AheadOfSources && BindToResult(expression, depth))) {
        return;
    }
    name.meaning = FindColumn(name.qualifier, name.name);
    if (name.meaning || (aliases_ == Aliases::BehindSources && BindToResult(expression, depth))) {
        return;
    }
    name.meaning = outer_ != nullptr ? outer_->Find(name) : std::nullopt;
    if (name.meaning) {
        return;
    }
    const bool plain = name.qualifier.empty() && !name.bracketed;
    if (const auto truth = plain ? TruthWord(name.name) : std::nullopt) {
        expression = MakeExpression(Literal{*truth});
        return;
    }
    const Text written = FullName(name);
    unknown_.emplace(basic::UCase(written), written);
}

std::optional<NameMeaning> Binder::FindAround(const NameReference& name) const {
    const auto meaning = FindColumn(name.qualifier, name.name);
    return meaning || outer_ == nullptr ? meaning : outer_->Find(name);
}

StaticType Binder::TypeOf(const NameMeaning& meaning) const {
    return meaning.kind == NameMeaning::Kind::Parameter
               ? outer_->Types()[static_cast<std::size_t>(meaning.column)]
               : sources_[meaning.source].ColumnType(meaning.column);
}

bool Binder::BindToResult(ExpressionPtr& expression, int depth) {
    const auto& name = *expression->As<NameReference>();
    const ResultItem* item = FindResult(name);
    if (item == nullptr) {
        return false;
    }
    if (std::find(open_.begin(), open_.end(), item) != open_.end()) {
        FailNaming(error::kCircularAlias, name.name);
    }
    open_.push_back(item);
    expression = Clone(*item->expression);
    Bind(expression, depth);
    open_.pop_back();
    return true;
}

/// The result column of that name; the same column twice counts once.
const ResultItem* Binder::FindResult(const NameReference& name) const {
    const Text fullName = FullName(name);
    const ResultItem* found = nullptr;
    for (const ResultItem& item : results_) {
        const bool offered = item.aliased || aliases_ == Aliases::AheadOfSources;
        if (!offered || !basic::EqualNoCase(item.name, fullName)) {
            continue;
        }
        if (found != nullptr && !SameExpression(*found->expression, *item.expression)) {
            FailNaming(error::kAmbiguousName, name.name);
        }
        found = &item;
    }
    return found;
}

}  // namespace quardele::sql
