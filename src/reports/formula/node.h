// The tree of a formula.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <optional>
#include <vector>

#include <formula/formula.h>

#include "functions.h"
#include "operators.h"

namespace quardele::formula {

class Node {
 public:
    virtual ~Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    [[nodiscard]] virtual Variant Evaluate(const Values& values) const = 0;
    /// The value of a constant; null for others.
    [[nodiscard]] virtual const Variant* AsConstant() const { return nullptr; }
    /// The number of a reference.
    [[nodiscard]] virtual std::optional<std::size_t> AsReference() const { return std::nullopt; }
    /// Adds what has to hold for this to be true.
    virtual void Require(std::vector<Requirement>& /*requirements*/) const {}
    /// Levels of the tree from here down.
    [[nodiscard]] int Depth() const { return depth_; }

 protected:
    explicit Node(int depth = 1) : depth_(depth) {}

 private:
    int depth_;
};

using NodePtr = std::unique_ptr<const Node>;

[[nodiscard]] NodePtr ConstantNode(Variant value);
[[nodiscard]] NodePtr ReferenceNode(std::size_t reference);
[[nodiscard]] NodePtr NegationNode(NodePtr operand);
[[nodiscard]] NodePtr NotNode(NodePtr operand);
[[nodiscard]] NodePtr OperatorNode(BinaryOperator apply, NodePtr left, NodePtr right);
[[nodiscard]] NodePtr ComparisonNode(Comparison comparison, NodePtr left, NodePtr right);
[[nodiscard]] NodePtr AndNode(NodePtr left, NodePtr right);
[[nodiscard]] NodePtr OrNode(NodePtr left, NodePtr right);
/// Without an "else" the formula has no value where the condition does not hold.
[[nodiscard]] NodePtr IfNode(NodePtr condition, NodePtr whenTrue, NodePtr otherwise);
[[nodiscard]] NodePtr CallNode(const Function& function, std::vector<NodePtr> arguments);

}  // namespace quardele::formula
