// Nodes that come to true, false or unknown.
#include <algorithm>

#include <basic/conversion.h>
#include <jet/collation.h>

#include "expressions/compare.h"
#include "expressions/like.h"
#include "expressions/node.h"
#include "rows/key_table.h"
#include "rows/node_key.h"
#include "rows/sort_key.h"
#include "sql_error.h"

namespace quardele::sql {
namespace {

class ConditionNode : public Node {
 public:
    ConditionNode() : Node(jet::ColumnType::Boolean) {}
    Variant Value(RowContext& row) const final { return ValueOfTruth(Test(row)); }
};

/// Amounts and decimals compare exactly, by their values; all other numbers as doubles.
bool CompareAsDoubles(const NodePtr& left, const NodePtr& right) {
    return ClassOf(left->Type()) == TypeClass::Numbers && ClassOf(right->Type()) == TypeClass::Numbers &&
           (left->Type() != jet::ColumnType::Currency || right->Type() != jet::ColumnType::Currency) &&
           left->Type() != jet::ColumnType::Numeric && right->Type() != jet::ColumnType::Numeric;
}

class NumberComparisonNode final : public ConditionNode {
 public:
    NumberComparisonNode(BinaryOperator op, NodePtr left, NodePtr right)
        : op_(op), left_(std::move(left)), right_(std::move(right)) {}

    Truth Test(RowContext& row) const override {
        const auto left = left_->Number(row);
        const auto right = left ? right_->Number(row) : std::nullopt;
        return right ? Outcome(op_, *left, *right) : Truth::Unknown;
    }
    bool NeverFails() const override { return left_->NeverFails() && right_->NeverFails(); }

 private:
    BinaryOperator op_;
    NodePtr left_;
    NodePtr right_;
};

/// Its buffers keep their memory from row to row: expressions belong to one thread.
class TextComparisonNode final : public ConditionNode {
 public:
    TextComparisonNode(BinaryOperator op, NodePtr left, NodePtr right)
        : op_(op), left_(std::move(left)), right_(std::move(right)) {}

    Truth Test(RowContext& row) const override {
        const auto left = left_->Characters(row, leftBuffer_);
        const auto right = left ? right_->Characters(row, rightBuffer_) : std::nullopt;
        return right ? Outcome(op_, jet::Compare(*left, *right)) : Truth::Unknown;
    }
    bool NeverFails() const override { return left_->NeverFails() && right_->NeverFails(); }

 private:
    BinaryOperator op_;
    NodePtr left_;
    NodePtr right_;
    mutable Text leftBuffer_;
    mutable Text rightBuffer_;
};

class ComparisonNode final : public ConditionNode {
 public:
    ComparisonNode(BinaryOperator op, NodePtr left, NodePtr right)
        : op_(op), left_(std::move(left)), right_(std::move(right)) {}

    Truth Test(RowContext& row) const override {
        Variant leftScratch;
        Variant rightScratch;
        return Outcome(op_, CompareValues(left_->Peek(row, leftScratch), right_->Peek(row, rightScratch)));
    }

 private:
    BinaryOperator op_;
    NodePtr left_;
    NodePtr right_;
};

/// The bounds may stand in either order.
class BetweenNode final : public ConditionNode {
 public:
    BetweenNode(NodePtr operand, NodePtr low, NodePtr high)
        : operand_(std::move(operand)), low_(std::move(low)), high_(std::move(high)) {}

    Truth Test(RowContext& row) const override {
        Variant valueScratch;
        Variant lowScratch;
        Variant highScratch;
        const Variant& value = operand_->Peek(row, valueScratch);
        const auto low = CompareValues(value, low_->Peek(row, lowScratch));
        const auto high = CompareValues(value, high_->Peek(row, highScratch));
        using enum BinaryOperator;
        return Or(And(Outcome(GreaterOrEqual, low), Outcome(LessOrEqual, high)),
                  And(Outcome(GreaterOrEqual, high), Outcome(LessOrEqual, low)));
    }

 private:
    NodePtr operand_;
    NodePtr low_;
    NodePtr high_;
};

class InListNode final : public ConditionNode {
 public:
    InListNode(NodePtr operand, NodeList items) : operand_(std::move(operand)), items_(std::move(items)) {}

    Truth Test(RowContext& row) const override {
        Variant scratch;
        const Variant& value = operand_->Peek(row, scratch);
        Truth found = Truth::False;
        for (const NodePtr& item : items_) {
            Variant itemScratch;
            found =
                Or(found, Outcome(BinaryOperator::Equal, CompareValues(value, item->Peek(row, itemScratch))));
            if (found == Truth::True) {
                break;
            }
        }
        return found;
    }

 private:
    NodePtr operand_;
    NodeList items_;
};

/// IN over constants: one look into a table.
class ConstantListNode final : public ConditionNode {
 public:
    ConstantListNode(NodePtr operand, const NodeList& items) : operand_(std::move(operand)) {
        for (const NodePtr& item : items) {
            const Variant& value = *item->Constant();
            hasNull_ = hasNull_ || value.IsNull();
            std::string key;
            AppendSortKey(key, value);
            keys_.Insert(key);
        }
    }

    Truth Test(RowContext& row) const override {
        key_.clear();
        if (!operandKey_.AppendUnlessNull(key_, *operand_, row)) {
            return Truth::Unknown;
        }
        if (keys_.Find(key_)) {
            return Truth::True;
        }
        return hasNull_ ? Truth::Unknown : Truth::False;
    }
    bool NeverFails() const override { return operand_->NeverFails(); }

 private:
    NodePtr operand_;
    KeyTable keys_;
    bool hasNull_ = false;
    mutable NodeKeys operandKey_;
    mutable std::string key_;
};

class LikeNode final : public ConditionNode {
 public:
    LikeNode(NodePtr operand, NodePtr pattern, Wildcards wildcards)
        : operand_(std::move(operand)), pattern_(std::move(pattern)), wildcards_(wildcards) {
        const Variant* constant = pattern_->Constant();
        if (constant != nullptr && !constant->IsNull()) {
            ready_.emplace(basic::CStr(*constant), wildcards_);
        }
    }

    Truth Test(RowContext& row) const override {
        Variant scratch;
        Variant patternScratch;
        const Variant& value = operand_->Peek(row, scratch);
        const Variant& pattern = pattern_->Peek(row, patternScratch);
        if (value.IsNull() || pattern.IsNull()) {
            return Truth::Unknown;
        }
        const auto matches = [this, &pattern](TextView text) {
            return TruthOf(ready_ ? ready_->Matches(text)
                                  : LikePattern(basic::CStr(pattern), wildcards_).Matches(text));
        };
        return value.IsText() ? matches(value.As<Text>()) : matches(basic::CStr(value));
    }
    bool NeverFails() const override { return ready_.has_value() && operand_->NeverFails(); }

 private:
    NodePtr operand_;
    NodePtr pattern_;
    Wildcards wildcards_;
    std::optional<LikePattern> ready_;
};

class IsNullNode final : public ConditionNode {
 public:
    explicit IsNullNode(NodePtr operand) : operand_(std::move(operand)) {}

    Truth Test(RowContext& row) const override { return TruthOf(operand_->IsNull(row)); }
    bool NeverFails() const override { return operand_->NeverFails(); }

 private:
    NodePtr operand_;
};

class NotNode final : public ConditionNode {
 public:
    explicit NotNode(NodePtr operand) : operand_(std::move(operand)) {}
    Truth Test(RowContext& row) const override { return Not(operand_->Test(row)); }
    bool NeverFails() const override { return operand_->NeverFails(); }

 private:
    NodePtr operand_;
};

class JunctionNode final : public ConditionNode {
 public:
    JunctionNode(bool isAnd, NodeList operands) : isAnd_(isAnd), operands_(std::move(operands)) {}

    Truth Test(RowContext& row) const override {
        const Truth decided = TruthOf(!isAnd_);
        Truth result = TruthOf(isAnd_);
        for (const NodePtr& operand : operands_) {
            const Truth truth = operand->Test(row);
            result = isAnd_ ? And(result, truth) : Or(result, truth);
            if (result == decided) {
                break;
            }
        }
        return result;
    }
    bool NeverFails() const override {
        return std::all_of(operands_.begin(), operands_.end(),
                           [](const NodePtr& operand) { return operand->NeverFails(); });
    }

 private:
    bool isAnd_;
    NodeList operands_;
};

class ConnectiveNode final : public ConditionNode {
 public:
    ConnectiveNode(BinaryOperator op, NodePtr left, NodePtr right)
        : op_(op), left_(std::move(left)), right_(std::move(right)) {}

    Truth Test(RowContext& row) const override {
        const Truth left = left_->Test(row);
        const Truth right = right_->Test(row);
        switch (op_) {
            case BinaryOperator::Xor:
                return Xor(left, right);
            case BinaryOperator::Eqv:
                return Eqv(left, right);
            default:
                return Imp(left, right);
        }
    }
    bool NeverFails() const override { return left_->NeverFails() && right_->NeverFails(); }

 private:
    BinaryOperator op_;
    NodePtr left_;
    NodePtr right_;
};

/// Whether keys tell the items apart as a comparison with the operand does.
bool ComparesByKey(const NodePtr& operand, const NodeList& items) {
    return AllConstant(items) && std::all_of(items.begin(), items.end(), [&operand](const NodePtr& item) {
               const TypeClass itemClass = ClassOf(item->Type());
               return itemClass == TypeClass::Unknown || itemClass == ClassOf(operand->Type());
           });
}

}  // namespace

NodePtr MakeComparison(BinaryOperator op, NodePtr left, NodePtr right) {
    RequireComparable(left->Type(), right->Type());
    const bool constant = left->Constant() != nullptr && right->Constant() != nullptr;
    NodePtr node;
    if (CompareAsDoubles(left, right)) {
        node = std::make_unique<const NumberComparisonNode>(op, std::move(left), std::move(right));
    } else if (ClassOf(left->Type()) == TypeClass::Texts && ClassOf(right->Type()) == TypeClass::Texts) {
        node = std::make_unique<const TextComparisonNode>(op, std::move(left), std::move(right));
    } else {
        node = std::make_unique<const ComparisonNode>(op, std::move(left), std::move(right));
    }
    return WorkedOut(std::move(node), constant);
}

NodePtr MakeBetween(NodePtr operand, NodePtr low, NodePtr high) {
    RequireComparable(operand->Type(), low->Type());
    RequireComparable(operand->Type(), high->Type());
    return MakeFolded<BetweenNode>(std::move(operand), std::move(low), std::move(high));
}

NodePtr MakeInList(NodePtr operand, NodeList items) {
    for (const NodePtr& item : items) {
        RequireComparable(operand->Type(), item->Type());
    }
    const bool constant = operand->Constant() != nullptr && AllConstant(items);
    if (ComparesByKey(operand, items)) {
        return WorkedOut(std::make_unique<const ConstantListNode>(std::move(operand), items), constant);
    }
    return WorkedOut(std::make_unique<const InListNode>(std::move(operand), std::move(items)), constant);
}

NodePtr MakeLike(NodePtr operand, NodePtr pattern, Wildcards wildcards) {
    const bool constant = operand->Constant() != nullptr && pattern->Constant() != nullptr;
    return WorkedOut(std::make_unique<const LikeNode>(std::move(operand), std::move(pattern), wildcards),
                     constant);
}

NodePtr MakeIsNull(NodePtr operand) {
    return MakeFolded<IsNullNode>(std::move(operand));
}

NodePtr MakeNot(NodePtr operand) {
    RequireCondition(operand->Type());
    return MakeFolded<NotNode>(std::move(operand));
}

NodePtr MakeJunction(bool isAnd, NodeList operands) {
    for (const NodePtr& operand : operands) {
        RequireCondition(operand->Type());
    }
    const bool constant = AllConstant(operands);
    return WorkedOut(std::make_unique<const JunctionNode>(isAnd, std::move(operands)), constant);
}

NodePtr MakeConnective(BinaryOperator op, NodePtr left, NodePtr right) {
    RequireCondition(left->Type());
    RequireCondition(right->Type());
    const bool constant = left->Constant() != nullptr && right->Constant() != nullptr;
    return WorkedOut(std::make_unique<const ConnectiveNode>(op, std::move(left), std::move(right)), constant);
}

}  // namespace quardele::sql
