// Nodes that say in which expression a failure happened.
#include <utility>

#include "expressions/node.h"
#include "sql_error.h"

namespace quardele::sql {
namespace {

/// What evaluating gives; a failure names the expression.
template <class Evaluation>
decltype(auto) Placed(TextView expression, Evaluation evaluate) {
    try {
        return evaluate();
    } catch (const basic::RuntimeError& failure) {
        FailIn(failure, expression);
    }
}

class PlacedNode final : public Node {
 public:
    PlacedNode(NodePtr node, Text expression)
        : Node(node->Type()), node_(std::move(node)), expression_(std::move(expression)) {}

    Variant Value(RowContext& row) const override {
        return Placed(expression_, [&] { return node_->Value(row); });
    }
    const Variant& Peek(RowContext& row, Variant& scratch) const override {
        return Placed(expression_, [&]() -> const Variant& { return node_->Peek(row, scratch); });
    }
    std::optional<double> Number(RowContext& row) const override {
        return Placed(expression_, [&] { return node_->Number(row); });
    }
    std::optional<TextView> Characters(RowContext& row, Text& buffer) const override {
        return Placed(expression_, [&] { return node_->Characters(row, buffer); });
    }
    bool IsNull(RowContext& row) const override {
        return Placed(expression_, [&] { return node_->IsNull(row); });
    }
    Truth Test(RowContext& row) const override {
        return Placed(expression_, [&] { return node_->Test(row); });
    }

 private:
    NodePtr node_;
    Text expression_;
};

}  // namespace

NodePtr MakePlaced(NodePtr node, Text expression) {
    return std::make_unique<const PlacedNode>(std::move(node), std::move(expression));
}

}  // namespace quardele::sql
