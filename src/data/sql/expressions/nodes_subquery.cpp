#include "expressions/nodes_subquery.h"

#include <cstring>
#include <type_traits>

#include "expressions/compare.h"
#include "rows/executor.h"
#include "rows/subquery_results.h"
#include "sql_error.h"

namespace quardele::sql {
namespace {

class ParameterNode final : public Node {
 public:
    ParameterNode(std::size_t position, StaticType type) : Node(type), position_(position) {}

    Variant Value(RowContext& row) const override { return row.Parameter(position_); }
    const Variant& Peek(RowContext& row, Variant&) const override { return row.Parameter(position_); }

 private:
    std::size_t position_;
};

class QueryColumnNode final : public Node {
 public:
    QueryColumnNode(std::size_t source, std::size_t column, StaticType type)
        : Node(type), source_(source), column_(column) {}

    Variant Value(RowContext& row) const override { return row.QueryValue(source_, column_); }
    const Variant& Peek(RowContext& row, Variant&) const override { return row.QueryValue(source_, column_); }

 private:
    std::size_t source_;
    std::size_t column_;
};

/// Writes values so that only the same ones, of the same type, are written alike.
struct ExactWriter {
    std::string& bytes;

    void operator()(const Text& text) const { Append(text.data(), text.size() * sizeof(char16_t)); }
    void operator()(const basic::Binary& binary) const { Append(binary.data(), binary.size()); }
    void operator()(const basic::Decimal& decimal) const {
        bytes += decimal.negative ? '-' : '+';
        bytes += static_cast<char>(decimal.scale);
        Append(decimal.magnitude.data(), sizeof(decimal.magnitude));
    }
    template <class T>
    void operator()(const T& value) const {
        static_assert(std::is_trivially_copyable_v<T>);
        Append(&value, std::is_empty_v<T> ? 0 : sizeof(value));
    }

    void Append(const void* data, std::size_t size) const {
        bytes.append(std::to_string(size) + ":");
        const std::size_t start = bytes.size();
        bytes.resize(start + size);
        if (size > 0) {
            std::memcpy(bytes.data() + start, data, size);
        }
    }
};

/// A plan with what it asks of the row around it.
class Subplan {
 public:
    Subplan(std::shared_ptr<const SelectPlan> plan, NodeList parameters)
        : plan_(std::move(plan)), parameters_(std::move(parameters)) {}

    /// What `make` makes of the rows; only when it is not known already.
    template <class Make>
    const SubqueryResult& Result(RowContext& row, Make make) const {
        std::vector<Variant> values;
        std::string key;
        for (const NodePtr& parameter : parameters_) {
            values.push_back(parameter->Value(row));
            key += static_cast<char>(values.back().Stored().index());
            std::visit(ExactWriter{key}, values.back().Stored());
        }
        const std::shared_ptr<SubqueryResults> results = row.Subqueries();
        if (const SubqueryResult* known = results->Find(*plan_, key)) {
            return *known;
        }
        return results->Add(*plan_, key, make(Execute(*plan_, RunEnvironment{values, results})));
    }

    [[nodiscard]] StaticType TypeOfColumn() const { return plan_->itemNodes.front()->Type(); }

 private:
    std::shared_ptr<const SelectPlan> plan_;
    NodeList parameters_;
};

class ScalarNode final : public Node {
 public:
    ScalarNode(Subplan subplan, Text statement)
        : Node(subplan.TypeOfColumn()), subplan_(std::move(subplan)), statement_(std::move(statement)) {}

    Variant Value(RowContext& row) const override { return Known(row); }
    const Variant& Peek(RowContext& row, Variant& scratch) const override {
        scratch = Known(row);
        return scratch;
    }

 private:
    [[nodiscard]] const Variant& Known(RowContext& row) const {
        return subplan_.Result(row, [this](ResultRows rows) { return OnlyValue(std::move(rows)); }).value;
    }

    [[nodiscard]] SubqueryResult OnlyValue(ResultRows rows) const {
        if (rows.size > 1) {
            throw basic::RuntimeError(
                error::kSubqueryRows,
                u"Une sous-requête qui sert de valeur ne peut donner qu'un seul enregistrement : " +
                    Quoted(statement_) + u".");
        }
        SubqueryResult result;
        if (rows.size == 1) {
            result.value = std::move(rows.values.front());
        }
        return result;
    }

    Subplan subplan_;
    Text statement_;
};

class ExistsNode final : public Node {
 public:
    explicit ExistsNode(Subplan subplan) : Node(jet::ColumnType::Boolean), subplan_(std::move(subplan)) {}

    Variant Value(RowContext& row) const override {
        return subplan_
            .Result(row,
                    [](const ResultRows& rows) {
                        SubqueryResult result;
                        result.value = rows.size > 0;
                        return result;
                    })
            .value;
    }

 private:
    Subplan subplan_;
};

class QuantifiedNode final : public Node {
 public:
    QuantifiedNode(BinaryOperator op, bool all, NodePtr operand, Subplan subplan)
        : Node(jet::ColumnType::Boolean),
          op_(op),
          all_(all),
          operand_(std::move(operand)),
          subplan_(std::move(subplan)) {}

    Variant Value(RowContext& row) const override { return ValueOfTruth(Test(row)); }

    Truth Test(RowContext& row) const override {
        const ValueSummary& summary = subplan_.Result(row, Summarize).summary;
        Variant scratch;
        return summary.Compare(op_, all_, operand_->Peek(row, scratch));
    }

 private:
    static SubqueryResult Summarize(const ResultRows& rows) {
        SubqueryResult result;
        for (const Variant& value : rows.values) {
            result.summary.Add(value);
        }
        return result;
    }

    BinaryOperator op_;
    bool all_;
    NodePtr operand_;
    Subplan subplan_;
};

}  // namespace

NodePtr MakeParameter(std::size_t position, StaticType type) {
    return std::make_unique<const ParameterNode>(position, type);
}

NodePtr MakeQueryColumn(std::size_t source, std::size_t column, StaticType type) {
    return std::make_unique<const QueryColumnNode>(source, column, type);
}

NodePtr MakeScalarSubquery(std::shared_ptr<const SelectPlan> plan, NodeList parameters, Text statement) {
    return std::make_unique<const ScalarNode>(Subplan(std::move(plan), std::move(parameters)),
                                              std::move(statement));
}

NodePtr MakeExists(std::shared_ptr<const SelectPlan> plan, NodeList parameters) {
    return std::make_unique<const ExistsNode>(Subplan(std::move(plan), std::move(parameters)));
}

NodePtr MakeQuantified(BinaryOperator op, bool all, NodePtr operand, std::shared_ptr<const SelectPlan> plan,
                       NodeList parameters) {
    Subplan subplan(std::move(plan), std::move(parameters));
    RequireComparable(operand->Type(), subplan.TypeOfColumn());
    return std::make_unique<const QuantifiedNode>(op, all, std::move(operand), std::move(subplan));
}

}  // namespace quardele::sql
