#include <algorithm>
#include <iterator>
#include <utility>

#include "plan/conjuncts.h"
#include "plan/prepared_select.h"
#include "rows/row_set_data.h"
#include "sql_error.h"
#include "syntax/parser.h"
#include "syntax/printer.h"

namespace quardele::sql {
namespace {

/// An equality with a value among the parts of a condition: only rows with that value can fulfil it.
struct Equality {
    Text signature;  ///< the text of the expression that must have the value
    NodePtr expression;
    Variant value;
};

/// What names can mean when rows hold values only: the result columns, with or without their table's name.
std::vector<ResultItem> ItemsOfResults(const SelectPlan& plan) {
    std::vector<ResultItem> items;
    for (std::size_t i = 0; i < plan.columns.size(); ++i) {
        const NameMeaning meaning{NameMeaning::Kind::ResultColumn, 0, static_cast<int>(i)};
        for (const Text& name : {plan.columns[i].name, plan.QualifiedName(i)}) {
            if (!name.empty()) {
                items.push_back({name, MakeExpression(NameReference{{}, name, meaning})});
            }
        }
    }
    return items;
}

void BindNames(jet::Database& database, ExpressionPtr& expression, const SelectPlan& plan) {
    const std::vector<Source> noSources;
    const std::vector<ResultItem> results = plan.IsKeyed() ? std::vector<ResultItem>() : ItemsOfResults(plan);
    Binder binder(database, plan.IsKeyed() ? plan.sources : noSources, plan.IsKeyed() ? plan.items : results);
    binder.Bind(expression, Binder::Aliases::AheadOfSources);
    binder.RequireAllKnown();
    if (const Expression* aggregate = FindAggregate(*expression)) {
        FailNaming(error::kAggregateInWhere, Print(*aggregate));
    }
}

CompileScope ScopeOf(const SelectPlan& plan) {
    CompileScope scope = plan.SourceScope();
    for (const NodePtr& item : plan.itemNodes) {
        scope.resultTypes.push_back(item->Type());
    }
    return scope;
}

std::optional<Equality> EqualityOf(const Expression& part, const Expression& value,
                                   const CompileScope& scope) {
    NodePtr expression = Compile(part, scope);
    const NodePtr constant = Compile(value, scope);
    if (expression->Constant() != nullptr || constant->Constant() == nullptr ||
        constant->Constant()->IsNull() || ClassOf(expression->Type()) != ClassOf(constant->Type())) {
        return std::nullopt;
    }
    return Equality{Print(part), std::move(expression), *constant->Constant()};
}

std::optional<Equality> FindEquality(const ExpressionPtr& condition, const CompileScope& scope) {
    Conjuncts conjuncts;
    AppendConjuncts(condition, conjuncts);
    for (const Conjunct& conjunct : conjuncts) {
        const auto* comparison = conjunct.expression->As<Binary>();
        if (comparison == nullptr || comparison->op != BinaryOperator::Equal) {
            continue;
        }
        if (auto equality = EqualityOf(*comparison->left, *comparison->right, scope)) {
            return equality;
        }
        if (auto equality = EqualityOf(*comparison->right, *comparison->left, scope)) {
            return equality;
        }
    }
    return std::nullopt;
}

}  // namespace

struct Condition::Impl {
    Impl(std::shared_ptr<const Query> ofQuery, TextView text) : query(std::move(ofQuery)) {
        const SelectPlan& plan = query->select_->Plan();
        ExpressionPtr expression = ParseCondition(text);
        BindNames(query->select_->Database(), expression, plan);
        const CompileScope scope = ScopeOf(plan);
        node = CompileCondition(*expression, scope);
        equality = FindEquality(expression, scope);
    }

    /// Rows that have been deleted meanwhile fulfil nothing.
    [[nodiscard]] bool Fulfils(RowSet::Data& data, std::size_t row) const {
        try {
            return node->Test(data.At(row)) == Truth::True;
        } catch (const basic::RuntimeError& failure) {
            if (failure.Number() != error::kRecordDeleted) {
                throw;
            }
            return false;
        }
    }

    /// The next row at or behind `from` that can fulfil the condition, which has an equality.
    [[nodiscard]] std::optional<std::size_t> Candidate(RowSet::Data& data, std::size_t from) const {
        const auto found = Index(data).Find(equality->value, from);
        const auto changed = data.forgotten.lower_bound(from);
        if (changed == data.forgotten.end()) {
            return found;
        }
        return found ? std::min(*found, *changed) : *changed;
    }

    /// All of them, in ascending order.
    [[nodiscard]] std::vector<std::size_t> Candidates(RowSet::Data& data) const {
        const std::vector<std::size_t> rows = Index(data).RowsWith(equality->value);
        std::vector<std::size_t> candidates;
        std::set_union(rows.begin(), rows.end(), data.forgotten.begin(), data.forgotten.end(),
                       std::back_inserter(candidates));
        return candidates;
    }

    FindIndex& Index(RowSet::Data& data) const {
        data.FindAll();
        FindIndex& index = data.findIndexes[equality->signature];
        if (!index.IsBuilt()) {
            Build(index, data);
        }
        return index;
    }

    /// A row whose value cannot be had now is looked at in every search.
    void Build(FindIndex& index, RowSet::Data& data) const {
        for (std::size_t row = 0; row < data.rows.size; ++row) {
            try {
                index.Add(*equality->expression, data.At(row), row);
            } catch (const basic::RuntimeError&) {
                data.forgotten.insert(row);
            }
        }
        index.Finish();
    }

    std::shared_ptr<const Query> query;
    NodePtr node;
    std::optional<Equality> equality;
};

Condition::Condition(const std::shared_ptr<const Query>& query, TextView condition)
    : impl_(std::make_unique<Impl>(query, condition)) {}

Condition::~Condition() = default;
Condition::Condition(Condition&&) noexcept = default;
Condition& Condition::operator=(Condition&&) noexcept = default;

bool Condition::Holds(const RowSet& rows, std::size_t row) const {
    return rows.Found(row + 1) > row && impl_->node->Test(rows.data_->At(row)) == Truth::True;
}

std::optional<std::size_t> Condition::FindForward(const RowSet& rows, std::size_t from) const {
    if (rows.Found(from + 1) <= from) {
        return std::nullopt;
    }
    RowSet::Data& data = *rows.data_;
    if (impl_->equality) {
        auto candidate = impl_->Candidate(data, from);
        while (candidate && !impl_->Fulfils(data, *candidate)) {
            candidate = impl_->Candidate(data, *candidate + 1);
        }
        return candidate;
    }
    for (std::size_t row = from; data.Has(row); ++row) {
        if (impl_->Fulfils(data, row)) {
            return row;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> Condition::FindBackward(const RowSet& rows, std::size_t from) const {
    const std::size_t end = std::min(from, SIZE_MAX - 1) + 1;
    const std::size_t found = rows.Found(end);
    if (found == 0) {
        return std::nullopt;
    }
    RowSet::Data& data = *rows.data_;
    if (impl_->equality) {
        const std::vector<std::size_t> candidates = impl_->Candidates(data);
        const auto behind = std::upper_bound(candidates.begin(), candidates.end(), from);
        const auto last = std::find_if(std::make_reverse_iterator(behind), candidates.rend(),
                                       [&](std::size_t row) { return impl_->Fulfils(data, row); });
        return last == candidates.rend() ? std::nullopt : std::optional(*last);
    }
    for (std::size_t next = std::min(end, found); next > 0; --next) {
        if (impl_->Fulfils(data, next - 1)) {
            return next - 1;
        }
    }
    return std::nullopt;
}

}  // namespace quardele::sql
