#include "plan/bound_select.h"

#include <algorithm>
#include <utility>

#include <basic/conversion.h>

#include "plan/conjuncts.h"
#include "rows/aggregate.h"
#include "sql_error.h"
#include "syntax/printer.h"

namespace quardele::sql {
namespace {

using Aliases = Binder::Aliases;

/// The first number of names that expressions without an alias get.
constexpr std::size_t kFirstExpressionName = 1000;

[[noreturn]] void FailUnknownStar(TextView table) {
    if (table.empty()) {
        FailSyntax(error::kSyntaxInSelect, u"« * » sans table", {}, u"*");
    }
    FailSyntax(error::kSyntaxInSelect, u"table absente de la clause FROM", Text(table) + u".*", table);
}

class SelectBinder {
 public:
    SelectBinder(jet::Database& database, Select select, std::vector<OrderItem> orderBy, OuterScope* outer)
        : binder_(database, bound_.sources, bound_.items, outer) {
        bound_.select = std::move(select);
        bound_.orderBy = std::move(orderBy);
        bound_.sources = OpenSources(database, bound_.select.from, outer);
        bound_.parameterTypes = outer != nullptr ? &outer->Types() : nullptr;
    }

    BoundSelect Bind() {
        ExpandItems();
        std::size_t nextSource = 0;
        for (FromItem& item : bound_.select.from) {
            BindJoins(item, nextSource);
        }
        binder_.Restrict(0, bound_.sources.size());
        for (ResultItem& item : bound_.items) {
            binder_.Bind(item.expression, Aliases::BehindSources);
        }
        BindClause(bound_.select.where, error::kAggregateInWhere);
        for (ExpressionPtr& key : bound_.select.groupBy) {
            BindClause(key, error::kAggregateInGroupBy);
        }
        if (bound_.select.having) {
            binder_.Bind(bound_.select.having, Aliases::None);
        }
        for (OrderItem& order : bound_.orderBy) {
            binder_.BindOrder(order.expression);
        }
        binder_.RequireAllKnown();
        FindGrouping();
        FinishNames();
        return std::move(bound_);
    }

 private:
    void ExpandItems() {
        for (SelectItem& item : bound_.select.items) {
            if (item.expression) {
                AddExpression(item);
                continue;
            }
            bool known = item.starQualifier.empty() && !bound_.sources.empty();
            for (std::size_t source = 0; source < bound_.sources.size(); ++source) {
                if (item.starQualifier.empty() ||
                    basic::EqualNoCase(item.starQualifier, bound_.sources[source].label)) {
                    AddColumns(source);
                    known = true;
                }
            }
            if (!known) {
                FailUnknownStar(item.starQualifier);
            }
        }
    }

    void AddExpression(SelectItem& item) {
        Text name = item.alias;
        if (const auto* column = item.expression->As<NameReference>(); column && name.empty()) {
            name = column->name;
        }
        if (name.empty()) {
            const std::size_t number = kFirstExpressionName + bound_.items.size();
            name = u"Expr" + basic::NumberText(static_cast<double>(number));
        }
        bound_.items.push_back({std::move(name), std::move(item.expression), !item.alias.empty()});
    }

    void AddColumns(std::size_t source) {
        const Source& from = bound_.sources[source];
        for (int i = 0; i < static_cast<int>(from.ColumnCount()); ++i) {
            const NameMeaning meaning{NameMeaning::Kind::SourceColumn, source, i};
            bound_.items.push_back(
                {from.ColumnName(i), MakeExpression(NameReference{from.label, from.ColumnName(i), meaning})});
        }
    }

    /// An ON condition sees the tables of its own join only.
    void BindJoins(FromItem& item, std::size_t& nextSource) {
        auto* join = std::get_if<Join>(&item.node);
        if (join == nullptr) {
            ++nextSource;
            return;
        }
        const std::size_t first = nextSource;
        BindJoins(*join->left, nextSource);
        BindJoins(*join->right, nextSource);
        binder_.Restrict(first, nextSource);
        BindClause(join->on, error::kAggregateInJoin);
    }

    void BindClause(ExpressionPtr& expression, int aggregateError) {
        if (!expression) {
            return;
        }
        binder_.Bind(expression, Aliases::None);
        if (const Expression* aggregate = FindAggregate(*expression)) {
            FailNaming(aggregateError, Print(*aggregate));
        }
    }

    void FindGrouping() {
        bound_.grouped = !bound_.select.groupBy.empty() || bound_.select.having != nullptr;
        for (const ResultItem& item : bound_.items) {
            FindAggregates(*item.expression);
        }
        if (bound_.select.having) {
            FindAggregates(*bound_.select.having);
        }
        for (const OrderItem& order : bound_.orderBy) {
            FindAggregates(*order.expression);
        }
    }

    void FindAggregates(const Expression& expression) {
        const auto* call = expression.As<Call>();
        const bool aggregate = call != nullptr && AggregateOf(*call);
        bound_.grouped = bound_.grouped || aggregate;
        for (const Expression* part : PartsOf(expression)) {
            if (aggregate && sql::FindAggregate(*part) != nullptr) {
                FailNaming(error::kNestedAggregate, Print(expression));
            }
            FindAggregates(*part);
        }
    }

    /// Plain columns are spelled as in their table, and qualified where two would have the same name.
    void FinishNames() {
        std::vector<Text> qualified(bound_.items.size());
        for (std::size_t i = 0; i < bound_.items.size(); ++i) {
            ResultItem& item = bound_.items[i];
            const auto column = ColumnOf(*item.expression);
            if (column && !item.aliased) {
                const Source& source = bound_.sources[column->source];
                item.name = source.ColumnName(column->column);
                qualified[i] = source.label + u"." + item.name;
            }
        }
        std::vector<bool> repeated(bound_.items.size());
        for (std::size_t i = 0; i < bound_.items.size(); ++i) {
            repeated[i] =
                std::count_if(bound_.items.begin(), bound_.items.end(), [&](const ResultItem& other) {
                    return basic::EqualNoCase(other.name, bound_.items[i].name);
                }) > 1;
        }
        for (std::size_t i = 0; i < bound_.items.size(); ++i) {
            if (repeated[i] && !qualified[i].empty()) {
                bound_.items[i].name = qualified[i];
            }
        }
    }

    BoundSelect bound_;
    Binder binder_;
};

}  // namespace

BoundSelect BindSelect(jet::Database& database, Select select, std::vector<OrderItem> orderBy,
                       OuterScope* outer) {
    return SelectBinder(database, std::move(select), std::move(orderBy), outer).Bind();
}

}  // namespace quardele::sql
