// Nodes that calculate and join.
#include <basic/conversion.h>

#include "expressions/arithmetic.h"
#include "expressions/node.h"

namespace quardele::sql {
namespace {

class ArithmeticNode final : public Node {
 public:
    ArithmeticNode(BinaryOperator op, NodePtr left, NodePtr right)
        : Node(ArithmeticType(op, left->Type(), right->Type())),
          op_(op),
          left_(std::move(left)),
          right_(std::move(right)) {}

    Variant Value(RowContext& row) const override {
        Variant leftScratch;
        Variant rightScratch;
        return Calculate(op_, left_->Peek(row, leftScratch), right_->Peek(row, rightScratch));
    }

 private:
    BinaryOperator op_;
    NodePtr left_;
    NodePtr right_;
};

class NegativeNode final : public Node {
 public:
    explicit NegativeNode(NodePtr operand)
        : Node(ArithmeticType(BinaryOperator::Subtract, jet::ColumnType::Long, operand->Type())),
          operand_(std::move(operand)) {}

    Variant Value(RowContext& row) const override {
        Variant scratch;
        return Negative(operand_->Peek(row, scratch));
    }

 private:
    NodePtr operand_;
};

/// Its buffers keep their memory from row to row: expressions belong to one thread.
class ConcatenationNode final : public Node {
 public:
    ConcatenationNode(NodePtr left, NodePtr right)
        : Node(jet::ColumnType::Text), left_(std::move(left)), right_(std::move(right)) {}

    Variant Value(RowContext& row) const override {
        Variant leftScratch;
        Variant rightScratch;
        return Concatenated(left_->Peek(row, leftScratch), right_->Peek(row, rightScratch));
    }
    std::optional<TextView> Characters(RowContext& row, Text& buffer) const override {
        const TextView left = Operand(*left_, row, leftBuffer_);
        const TextView right = Operand(*right_, row, rightBuffer_);
        if (right.empty()) {
            return left;
        }
        buffer.assign(left);
        buffer += right;
        return buffer;
    }
    bool IsNull(RowContext&) const override { return false; }
    /// Numbers and texts have a text, other values have none.
    bool NeverFails() const override { return HasText(*left_) && HasText(*right_); }

 private:
    static bool HasText(const Node& node) {
        const TypeClass typeClass = ClassOf(node.Type());
        return (typeClass == TypeClass::Texts || typeClass == TypeClass::Numbers) && node.NeverFails();
    }
    /// A Null adds nothing.
    static TextView Operand(const Node& node, RowContext& row, Text& buffer) {
        if (ClassOf(node.Type()) == TypeClass::Texts) {
            return node.Characters(row, buffer).value_or(TextView());
        }
        Variant scratch;
        buffer = basic::Joined(node.Peek(row, scratch));
        return buffer;
    }

    NodePtr left_;
    NodePtr right_;
    mutable Text leftBuffer_;
    mutable Text rightBuffer_;
};

}  // namespace

NodePtr MakeArithmetic(BinaryOperator op, NodePtr left, NodePtr right) {
    const bool constant = left->Constant() != nullptr && right->Constant() != nullptr;
    return WorkedOut(std::make_unique<const ArithmeticNode>(op, std::move(left), std::move(right)), constant);
}

NodePtr MakeNegative(NodePtr operand) {
    return MakeFolded<NegativeNode>(std::move(operand));
}

NodePtr MakeConcatenation(NodePtr left, NodePtr right) {
    return MakeFolded<ConcatenationNode>(std::move(left), std::move(right));
}

}  // namespace quardele::sql
