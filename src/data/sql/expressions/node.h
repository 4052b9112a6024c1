// Expressions made ready for evaluation: names are places of a row context, constant parts are worked out,
// comparisons of numbers and of texts go by their own short ways.
#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "expressions/like.h"
#include "expressions/truth.h"
#include "expressions/types.h"
#include "rows/row_context.h"

namespace quardele::sql {

class Node {
 public:
    explicit Node(StaticType type) : type_(type) {}
    virtual ~Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    [[nodiscard]] StaticType Type() const { return type_; }
    [[nodiscard]] virtual Variant Value(RowContext& row) const = 0;
    /// The value without a copy where it lies somewhere already; otherwise it is put into `scratch`.
    [[nodiscard]] virtual const Variant& Peek(RowContext& row, Variant& scratch) const;
    /// The value as a number, empty for Null. For nodes of class Numbers.
    [[nodiscard]] virtual std::optional<double> Number(RowContext& row) const;
    /// The value as text, empty for Null; it may lie in `buffer`, whose memory is reused. For nodes of class
    /// Texts.
    [[nodiscard]] virtual std::optional<TextView> Characters(RowContext& row, Text& buffer) const;
    [[nodiscard]] virtual bool IsNull(RowContext& row) const;
    /// The value as a condition.
    [[nodiscard]] virtual Truth Test(RowContext& row) const;
    /// Whether it has a value for every row that can be read, without an error for any.
    [[nodiscard]] virtual bool NeverFails() const { return false; }
    /// The value when it is the same for every row, else null.
    [[nodiscard]] virtual const Variant* Constant() const { return nullptr; }

 private:
    StaticType type_;
};

using NodePtr = std::unique_ptr<const Node>;
using NodeList = std::vector<NodePtr>;

/// Whether all conditions are true for the row.
[[nodiscard]] bool AllTrue(const NodeList& conditions, RowContext& row);

/// Whether every node is constant.
[[nodiscard]] bool AllConstant(const NodeList& nodes);

// Leaves.
[[nodiscard]] NodePtr MakeConstant(Variant value, StaticType type);
[[nodiscard]] NodePtr MakeColumn(std::size_t source, int column, StaticType type);
[[nodiscard]] NodePtr MakeResult(std::size_t column, StaticType type);

// Conditions. Comparisons throw 3464 when the two sides can never compare.
[[nodiscard]] NodePtr MakeComparison(BinaryOperator op, NodePtr left, NodePtr right);
[[nodiscard]] NodePtr MakeBetween(NodePtr operand, NodePtr low, NodePtr high);
[[nodiscard]] NodePtr MakeInList(NodePtr operand, NodeList items);
[[nodiscard]] NodePtr MakeLike(NodePtr operand, NodePtr pattern, Wildcards wildcards);
[[nodiscard]] NodePtr MakeIsNull(NodePtr operand);
[[nodiscard]] NodePtr MakeNot(NodePtr operand);
[[nodiscard]] NodePtr MakeJunction(bool isAnd, NodeList operands);
/// Xor, Eqv, Imp.
[[nodiscard]] NodePtr MakeConnective(BinaryOperator op, NodePtr left, NodePtr right);

// Values.
[[nodiscard]] NodePtr MakeArithmetic(BinaryOperator op, NodePtr left, NodePtr right);
[[nodiscard]] NodePtr MakeNegative(NodePtr operand);
[[nodiscard]] NodePtr MakeConcatenation(NodePtr left, NodePtr right);
/// A call by name with its arguments; throws 3085 for an unknown function, 3075 for a wrong number of
/// arguments.
[[nodiscard]] NodePtr MakeCall(TextView function, NodeList arguments);
/// The same for some functions that have a shorter way with arguments like these, of the right number and not
/// all constant; null, and the arguments untouched, for others.
[[nodiscard]] NodePtr MakeShortCall(TextView function, NodeList& arguments);

/// The node, whose failures to calculate name the expression.
[[nodiscard]] NodePtr MakePlaced(NodePtr node, Text expression);

/// The node itself, or its value as a constant when all its parts are constant. A part that fails to be
/// worked out stays, so that the error comes when a row asks for it.
[[nodiscard]] NodePtr WorkedOut(NodePtr node, bool partsAreConstant);

/// A node with parts that are worked out first when they are constant.
template <class T, class... Parts>
[[nodiscard]] NodePtr MakeFolded(Parts&&... parts) {
    const bool constant = ((parts->Constant() != nullptr) && ...);
    return WorkedOut(std::make_unique<const T>(std::forward<Parts>(parts)...), constant);
}

}  // namespace quardele::sql
