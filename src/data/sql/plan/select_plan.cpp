#include "plan/select_plan.h"

#include <algorithm>
#include <utility>

#include "plan/conjuncts.h"
#include "plan/index_choice.h"
#include "plan/one_side.h"
#include "rows/query_producer.h"
#include "sql_error.h"
#include "syntax/printer.h"

namespace quardele::sql {
namespace {

class PlanMaker {
 public:
    explicit PlanMaker(BoundSelect bound) : bound_(std::move(bound)) {
        for (const Source& source : bound_.sources) {
            plan_.tables.push_back(source.table);
        }
        scope_.sources = &bound_.sources;
        scope_.parameterTypes = bound_.parameterTypes;
        plan_.distinct = bound_.select.distinct;
        plan_.top = bound_.select.top;
        plan_.fixedValues = plan_.ReadsQuery();
    }

    SelectPlan Make() {
        plan_.oneSides = FindOneSides(bound_.select, plan_.tables);
        plan_.plan = MakePlan(bound_.select, scope_);
        if (bound_.grouped) {
            CompileGroups();
        } else if (bound_.select.distinctRows) {
            LeaveOutRepeatedRows();
        }
        for (const ResultItem& item : bound_.items) {
            plan_.itemNodes.push_back(Compile(*item.expression, scope_));
        }
        DescribeColumns();
        for (const OrderItem& item : bound_.orderBy) {
            plan_.order.push_back({CompileOrder(*item.expression), item.descending});
        }
        if (plan_.IsKeyed() && plan_.tables.size() == 1) {
            OrderSingleTable();
        }
        if (GroupsComeInOrder()) {
            plan_.order.clear();
        }
        plan_.from = std::move(bound_.select.from);
        plan_.where = std::move(bound_.select.where);
        plan_.sources = std::move(bound_.sources);
        plan_.items = std::move(bound_.items);
        return std::move(plan_);
    }

 private:
    /// DISTINCTROW asks for the rows of the tables that the result shows, each once.
    void LeaveOutRepeatedRows() {
        SourceSet shown = 0;
        for (const ResultItem& item : bound_.items) {
            shown |= SourcesOf(*item.expression);
        }
        std::vector<std::size_t> sources;
        for (std::size_t source = 0; source < bound_.sources.size(); ++source) {
            if (IsWithin(SetOf(source), shown)) {
                sources.push_back(source);
            }
        }
        if (!sources.empty() && sources.size() < bound_.sources.size()) {
            plan_.plan.rows =
                std::make_unique<const DistinctRowProducer>(std::move(plan_.plan.rows), std::move(sources));
        }
    }

    /// Compiles the keys and aggregates over source rows; from here on the scope is the group's row.
    void CompileGroups() {
        GroupPlan groups;
        CompileScope groupScope = scope_;
        for (const ExpressionPtr& key : bound_.select.groupBy) {
            groups.keys.push_back(Compile(*key, scope_));
            groupScope.resultTypes.push_back(groups.keys.back()->Type());
            parts_.push_back(key.get());
        }
        for (const ResultItem& item : bound_.items) {
            AddAggregates(*item.expression, groups, groupScope);
        }
        for (const OrderItem& order : bound_.orderBy) {
            AddAggregates(*order.expression, groups, groupScope);
        }
        if (bound_.select.having) {
            AddAggregates(*bound_.select.having, groups, groupScope);
        }
        scope_ = std::move(groupScope);
        scope_.grouped = &parts_;
        if (bound_.select.having) {
            groups.having = CompileCondition(*bound_.select.having, scope_);
        }
        plan_.groups = std::move(groups);
    }

    void AddAggregates(const Expression& expression, GroupPlan& groups, CompileScope& groupScope) {
        const auto* call = expression.As<Call>();
        const auto kind = call == nullptr ? std::nullopt : AggregateOf(*call);
        if (!kind) {
            for (const Expression* part : PartsOf(expression)) {
                AddAggregates(*part, groups, groupScope);
            }
            return;
        }
        const bool known = std::any_of(parts_.begin(), parts_.end(), [&expression](const Expression* part) {
            return SameExpression(*part, expression);
        });
        if (known) {
            return;
        }
        if (!call->star && call->arguments.size() != 1) {
            throw basic::RuntimeError(
                error::kSyntaxError,
                u"Nombre d'arguments incorrect pour la fonction « " + call->function + u" ».");
        }
        NodePtr argument = call->star ? nullptr : Compile(*call->arguments.front(), scope_);
        groupScope.resultTypes.push_back(AggregateType(*kind, argument ? argument->Type() : std::nullopt));
        groups.aggregates.push_back({*kind, std::move(argument), Print(expression)});
        parts_.push_back(&expression);
    }

    void DescribeColumns() {
        for (std::size_t i = 0; i < bound_.items.size(); ++i) {
            ResultColumn column;
            column.name = bound_.items[i].name;
            column.type = plan_.itemNodes[i]->Type().value_or(jet::ColumnType::Text);
            if (const auto meaning = ColumnOf(*bound_.items[i].expression)) {
                column.size = bound_.sources[meaning->source].ColumnSize(meaning->column);
                if (!plan_.ReadsQuery()) {
                    column.source = meaning->source;
                    column.sourceColumn = meaning->column;
                }
            }
            plan_.columns.push_back(std::move(column));
        }
    }

    NodePtr CompileOrder(const Expression& expression) {
        if (!plan_.distinct) {
            return Compile(expression, scope_);
        }
        for (std::size_t i = 0; i < bound_.items.size(); ++i) {
            if (SameExpression(*bound_.items[i].expression, expression)) {
                return MakeResult(i, plan_.itemNodes[i]->Type());
            }
        }
        FailNaming(error::kOrderOutsideDistinct, Print(expression));
    }

    /// Rows of one table come in the order of its primary key when nothing else is asked for. An order that
    /// an index has needs no sorting when no condition is to be tested: the rows need not even be read.
    void OrderSingleTable() {
        const jet::Table& table = *plan_.tables.front();
        const bool natural = bound_.orderBy.empty();
        const auto order = natural ? PrimaryOrder(table) : PlainOrder();
        const TableProducer* rows = plan_.plan.rows->AsTable();
        const auto indexed = IndexForOrder(table, order);
        // Whoever steps through rows meets no errors on the way.
        const bool canStep = rows != nullptr && !rows->HasRange() && !plan_.top && rows->NeverFails();
        if (canStep && (indexed || (natural && order.empty()))) {
            plan_.steps = StepPlan{indexed};
        }
        // TOP keeps all rows that are equal to the last one, for which it must know the order.
        const bool needsKeys = plan_.top && !natural;
        const auto walk = rows != nullptr && !rows->HasConditions() && !needsKeys ? indexed : std::nullopt;
        if (walk) {
            plan_.plan.rows =
                std::make_unique<const IndexOrderProducer>(0, table, walk->index, walk->backwards);
            plan_.order.clear();
        } else if (natural) {
            for (const ColumnOrder& column : order) {
                const jet::ColumnType type = table.Columns()[static_cast<std::size_t>(column.column)].type;
                plan_.order.push_back({MakeColumn(0, column.column, type), column.descending});
            }
        }
    }

    /// Groups come in the order of their keys. TOP must know the order all the same, to keep rows that are
    /// equal to the last one.
    [[nodiscard]] bool GroupsComeInOrder() const {
        const std::vector<ExpressionPtr>& keys = bound_.select.groupBy;
        const std::vector<OrderItem>& order = bound_.orderBy;
        return plan_.groups && !plan_.distinct && !plan_.top && order.size() <= keys.size() &&
               std::equal(order.begin(), order.end(), keys.begin(),
                          [](const OrderItem& item, const ExpressionPtr& key) {
                              return !item.descending && SameExpression(*item.expression, *key);
                          });
    }

    /// The ORDER BY when it consists of plain columns, else empty.
    [[nodiscard]] std::vector<ColumnOrder> PlainOrder() const {
        std::vector<ColumnOrder> order;
        for (const OrderItem& item : bound_.orderBy) {
            const auto column = ColumnOf(*item.expression);
            if (!column) {
                return {};
            }
            order.push_back({column->column, item.descending});
        }
        return order;
    }

    BoundSelect bound_;
    SelectPlan plan_;
    CompileScope scope_;
    std::vector<const Expression*> parts_;  ///< of the group's result row
};

}  // namespace

Text SelectPlan::QualifiedName(std::size_t column) const {
    const ResultColumn& result = columns[column];
    if (!result.source) {
        return {};
    }
    const Source& source = sources[*result.source];
    return source.label + u"." + source.table->Columns()[static_cast<std::size_t>(result.sourceColumn)].name;
}

bool SelectPlan::ReadsQuery() const {
    return std::find(tables.begin(), tables.end(), nullptr) != tables.end();
}

SelectPlan MakeSelectPlan(BoundSelect bound) {
    return PlanMaker(std::move(bound)).Make();
}

}  // namespace quardele::sql
