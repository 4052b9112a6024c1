#include "expressions/node.h"

#include <algorithm>

#include <basic/conversion.h>
#include <basic/runtime_error.h>

#include "expressions/compare.h"

namespace quardele::sql {
namespace {

class ConstantNode final : public Node {
 public:
    ConstantNode(Variant value, StaticType type)
        : Node(type), value_(std::move(value)), number_(basic::NumberOf(value_)) {}

    Variant Value(RowContext&) const override { return value_; }
    const Variant& Peek(RowContext&, Variant&) const override { return value_; }
    std::optional<double> Number(RowContext&) const override { return number_; }
    std::optional<TextView> Characters(RowContext&, Text&) const override {
        return value_.IsText() ? std::optional<TextView>(value_.As<Text>()) : std::nullopt;
    }
    const Variant* Constant() const override { return &value_; }
    bool NeverFails() const override { return true; }

 private:
    Variant value_;
    std::optional<double> number_;
};

class ColumnNode final : public Node {
 public:
    ColumnNode(std::size_t source, int column, StaticType type)
        : Node(type), source_(source), column_(column) {}

    Variant Value(RowContext& row) const override {
        const jet::Row* stored = row.RowOf(source_);
        return stored == nullptr ? Variant(basic::Null()) : stored->Value(column_);
    }
    std::optional<double> Number(RowContext& row) const override {
        const jet::Row* stored = row.RowOf(source_);
        return stored == nullptr ? std::nullopt : stored->Number(column_);
    }
    std::optional<TextView> Characters(RowContext& row, Text& buffer) const override {
        const jet::Row* stored = row.RowOf(source_);
        if (stored == nullptr || !stored->TextAt(column_, buffer)) {
            return std::nullopt;
        }
        return buffer;
    }
    bool IsNull(RowContext& row) const override {
        const jet::Row* stored = row.RowOf(source_);
        return stored == nullptr || stored->IsNull(column_);
    }
    /// Long values lie elsewhere and may have been replaced by the time they are read.
    bool NeverFails() const override {
        return Type() != jet::ColumnType::Memo && Type() != jet::ColumnType::Ole;
    }

 private:
    std::size_t source_;
    int column_;
};

class ResultNode final : public Node {
 public:
    ResultNode(std::size_t column, StaticType type) : Node(type), column_(column) {}

    Variant Value(RowContext& row) const override { return row.Result(column_); }
    const Variant& Peek(RowContext& row, Variant&) const override { return row.Result(column_); }
    std::optional<TextView> Characters(RowContext& row, Text&) const override {
        const Variant& value = row.Result(column_);
        return value.IsText() ? std::optional<TextView>(value.As<Text>()) : std::nullopt;
    }
    /// The value lies there already, but it may be none that fits.
    bool NeverFails() const override { return Type().has_value(); }

 private:
    std::size_t column_;
};

}  // namespace

const Variant& Node::Peek(RowContext& row, Variant& scratch) const {
    scratch = Value(row);
    return scratch;
}

std::optional<double> Node::Number(RowContext& row) const {
    Variant scratch;
    return basic::NumberOf(Peek(row, scratch));
}

std::optional<TextView> Node::Characters(RowContext& row, Text& buffer) const {
    Variant scratch;
    const Variant& value = Peek(row, scratch);
    if (!value.IsText()) {
        return std::nullopt;
    }
    buffer = value.As<Text>();
    return buffer;
}

bool Node::IsNull(RowContext& row) const {
    Variant scratch;
    return Peek(row, scratch).IsNull();
}

Truth Node::Test(RowContext& row) const {
    Variant scratch;
    return TruthOfValue(Peek(row, scratch));
}

bool AllTrue(const NodeList& conditions, RowContext& row) {
    return std::all_of(conditions.begin(), conditions.end(),
                       [&row](const NodePtr& condition) { return condition->Test(row) == Truth::True; });
}

bool AllConstant(const NodeList& nodes) {
    return std::all_of(nodes.begin(), nodes.end(),
                       [](const NodePtr& node) { return node->Constant() != nullptr; });
}

NodePtr MakeConstant(Variant value, StaticType type) {
    return std::make_unique<const ConstantNode>(std::move(value), type);
}

NodePtr MakeColumn(std::size_t source, int column, StaticType type) {
    return std::make_unique<const ColumnNode>(source, column, type);
}

NodePtr MakeResult(std::size_t column, StaticType type) {
    return std::make_unique<const ResultNode>(column, type);
}

NodePtr WorkedOut(NodePtr node, bool partsAreConstant) {
    if (!partsAreConstant) {
        return node;
    }
    try {
        static const Tables kNoTables;
        RowContext nothing(kNoTables);
        return MakeConstant(node->Value(nothing), node->Type());
    } catch (const basic::RuntimeError&) {
        return node;
    }
}

}  // namespace quardele::sql
