#include <utility>

#include "node.h"

namespace quardele::formula {
namespace {

int DepthOver(std::initializer_list<const Node*> parts) {
    int deepest = 0;
    for (const Node* part : parts) {
        deepest = std::max(deepest, part->Depth());
    }
    return deepest + 1;
}

int DepthOver(const std::vector<NodePtr>& parts) {
    int deepest = 0;
    for (const NodePtr& part : parts) {
        deepest = std::max(deepest, part->Depth());
    }
    return deepest + 1;
}

class Constant : public Node {
 public:
    explicit Constant(Variant value) : value_(std::move(value)) {}
    Variant Evaluate(const Values& /*values*/) const override { return value_; }
    const Variant* AsConstant() const override { return &value_; }

 private:
    Variant value_;
};

class Asked : public Node {
 public:
    explicit Asked(std::size_t reference) : reference_(reference) {}
    Variant Evaluate(const Values& values) const override { return values.ValueOf(reference_); }
    std::optional<std::size_t> AsReference() const override { return reference_; }

 private:
    std::size_t reference_;
};

class Negation : public Node {
 public:
    explicit Negation(NodePtr operand) : Node(DepthOver({operand.get()})), operand_(std::move(operand)) {}
    Variant Evaluate(const Values& values) const override { return Negate(operand_->Evaluate(values)); }

 private:
    NodePtr operand_;
};

class Not : public Node {
 public:
    explicit Not(NodePtr operand) : Node(DepthOver({operand.get()})), operand_(std::move(operand)) {}
    Variant Evaluate(const Values& values) const override {
        const Variant value = operand_->Evaluate(values);
        return value.IsNull() ? value : Variant(!IsTrue(value));
    }

 private:
    NodePtr operand_;
};

class Binary : public Node {
 protected:
    Binary(NodePtr left, NodePtr right)
        : Node(DepthOver({left.get(), right.get()})), left_(std::move(left)), right_(std::move(right)) {}
    [[nodiscard]] const Node& Left() const { return *left_; }
    [[nodiscard]] const Node& Right() const { return *right_; }

 private:
    NodePtr left_;
    NodePtr right_;
};

class Operator : public Binary {
 public:
    Operator(BinaryOperator apply, NodePtr left, NodePtr right)
        : Binary(std::move(left), std::move(right)), apply_(apply) {}
    Variant Evaluate(const Values& values) const override {
        const Variant left = Left().Evaluate(values);
        const Variant right = Right().Evaluate(values);
        return apply_(left, right);
    }

 private:
    BinaryOperator apply_;
};

/// The comparison that says the same with the sides exchanged.
Comparison Mirrored(Comparison comparison) {
    switch (comparison) {
        case Comparison::Less:
            return Comparison::Greater;
        case Comparison::LessOrEqual:
            return Comparison::GreaterOrEqual;
        case Comparison::Greater:
            return Comparison::Less;
        case Comparison::GreaterOrEqual:
            return Comparison::LessOrEqual;
        case Comparison::Equal:
        case Comparison::NotEqual:
            break;
    }
    return comparison;
}

class Compared : public Binary {
 public:
    Compared(Comparison comparison, NodePtr left, NodePtr right)
        : Binary(std::move(left), std::move(right)), comparison_(comparison) {}

    Variant Evaluate(const Values& values) const override {
        const Variant left = Left().Evaluate(values);
        const Variant right = Right().Evaluate(values);
        if (left.IsNull() || right.IsNull()) {
            return basic::Null();
        }
        return Holds(comparison_, Compare(left, right));
    }

    void Require(std::vector<Requirement>& requirements) const override {
        if (Left().AsReference() && Right().AsConstant() != nullptr) {
            requirements.push_back({*Left().AsReference(), comparison_, *Right().AsConstant()});
        } else if (Right().AsReference() && Left().AsConstant() != nullptr) {
            requirements.push_back({*Right().AsReference(), Mirrored(comparison_), *Left().AsConstant()});
        }
    }

 private:
    Comparison comparison_;
};

/// "And" and "or": the right side is not looked at when the left one decides; Null is not known.
class Connection : public Binary {
 public:
    Connection(bool deciding, NodePtr left, NodePtr right)
        : Binary(std::move(left), std::move(right)), deciding_(deciding) {}

    Variant Evaluate(const Values& values) const override {
        const Variant left = Left().Evaluate(values);
        if (!left.IsNull() && IsTrue(left) == deciding_) {
            return deciding_;
        }
        const Variant right = Right().Evaluate(values);
        if (!right.IsNull() && IsTrue(right) == deciding_) {
            return deciding_;
        }
        return left.IsNull() || right.IsNull() ? Variant(basic::Null()) : Variant(!deciding_);
    }

    void Require(std::vector<Requirement>& requirements) const override {
        if (!deciding_) {
            Left().Require(requirements);
            Right().Require(requirements);
        }
    }

 private:
    bool deciding_;
};

class Choice : public Node {
 public:
    Choice(NodePtr condition, NodePtr whenTrue, NodePtr otherwise)
        : Node(DepthOver({condition.get(), whenTrue.get(), otherwise.get()})),
          condition_(std::move(condition)),
          whenTrue_(std::move(whenTrue)),
          otherwise_(std::move(otherwise)) {}
    Variant Evaluate(const Values& values) const override {
        return (IsTrue(condition_->Evaluate(values)) ? whenTrue_ : otherwise_)->Evaluate(values);
    }

 private:
    NodePtr condition_;
    NodePtr whenTrue_;
    NodePtr otherwise_;
};

class Call : public Node {
 public:
    Call(const Function& function, std::vector<NodePtr> arguments)
        : Node(DepthOver(arguments)), function_(function), arguments_(std::move(arguments)) {}
    Variant Evaluate(const Values& values) const override {
        std::vector<Variant> arguments;
        arguments.reserve(arguments_.size());
        for (const NodePtr& argument : arguments_) {
            arguments.push_back(argument->Evaluate(values));
            if (arguments.back().IsNull() && !function_.takesNull) {
                return basic::Null();
            }
        }
        return function_.apply(arguments);
    }

 private:
    const Function& function_;
    std::vector<NodePtr> arguments_;
};

}  // namespace

NodePtr ConstantNode(Variant value) {
    return std::make_unique<Constant>(std::move(value));
}
NodePtr ReferenceNode(std::size_t reference) {
    return std::make_unique<Asked>(reference);
}
NodePtr NegationNode(NodePtr operand) {
    return std::make_unique<Negation>(std::move(operand));
}
NodePtr NotNode(NodePtr operand) {
    return std::make_unique<Not>(std::move(operand));
}
NodePtr OperatorNode(BinaryOperator apply, NodePtr left, NodePtr right) {
    return std::make_unique<Operator>(apply, std::move(left), std::move(right));
}
NodePtr ComparisonNode(Comparison comparison, NodePtr left, NodePtr right) {
    return std::make_unique<Compared>(comparison, std::move(left), std::move(right));
}
NodePtr AndNode(NodePtr left, NodePtr right) {
    return std::make_unique<Connection>(false, std::move(left), std::move(right));
}
NodePtr OrNode(NodePtr left, NodePtr right) {
    return std::make_unique<Connection>(true, std::move(left), std::move(right));
}
NodePtr IfNode(NodePtr condition, NodePtr whenTrue, NodePtr otherwise) {
    return std::make_unique<Choice>(std::move(condition), std::move(whenTrue), std::move(otherwise));
}
NodePtr CallNode(const Function& function, std::vector<NodePtr> arguments) {
    return std::make_unique<Call>(function, std::move(arguments));
}

}  // namespace quardele::formula
