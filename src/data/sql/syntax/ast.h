// The tree of a statement as it was written. The parser builds it, the binder says what its names mean, the
// printer writes it back.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include <basic/variant.h>

namespace quardele::sql {

using basic::Text;
using basic::TextView;
using basic::Variant;

/// Trees that are deeper than this are refused (3360): all later steps walk them by recursion.
inline constexpr int kDeepestTree = 300;

struct Expression;
struct Statement;
struct SelectPlan;
using ExpressionPtr = std::unique_ptr<Expression>;

struct Literal {
    Variant value;
};

/// What a name means: a column of a source, a column of the result that a condition looks at, or, within a
/// subquery, a value that the row around it gives (Subquery::parameters).
struct NameMeaning {
    enum class Kind { SourceColumn, ResultColumn, Parameter };
    Kind kind = Kind::SourceColumn;
    std::size_t source = 0;  ///< position in the FROM order
    int column = 0;
    friend bool operator==(const NameMeaning&, const NameMeaning&) = default;
};

struct NameReference {
    Text qualifier;  ///< the table's name or alias; may be empty
    Text name;
    std::optional<NameMeaning> meaning;  ///< the binder's
    bool bracketed = false;
};

enum class UnaryOperator { Plus, Minus, Not };

struct Unary {
    UnaryOperator op;
    ExpressionPtr operand;
};

enum class BinaryOperator {
    Add,
    Subtract,
    Multiply,
    Divide,
    IntegerDivide,
    Modulo,
    Power,
    Concatenate,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Like,
    ALike,
    Xor,
    Eqv,
    Imp,
};

struct Binary {
    BinaryOperator op;
    ExpressionPtr left;
    ExpressionPtr right;
};

/// A chain of ANDs or ORs in one node, so that long conditions do not make deep trees.
struct Junction {
    bool isAnd = true;
    std::vector<ExpressionPtr> operands;
};

struct Between {
    ExpressionPtr operand;
    ExpressionPtr low;
    ExpressionPtr high;
    bool negated = false;
};

struct InList {
    ExpressionPtr operand;
    std::vector<ExpressionPtr> items;
    bool negated = false;
};

struct IsNull {
    ExpressionPtr operand;
    bool negated = false;
};

struct Call {
    Text function;
    std::vector<ExpressionPtr> arguments;
    bool star = false;  ///< Count(*)
};

struct Subquery {
    enum class Kind { Scalar, Exists, In, Any, All };
    Kind kind = Kind::Scalar;
    ExpressionPtr operand;                        ///< of In, Any and All
    bool negated = false;                         ///< of In
    BinaryOperator op = BinaryOperator::Equal;    ///< of Any and All
    std::shared_ptr<const Statement> statement;   ///< copies of the expression share it
    std::vector<ExpressionPtr> parameters = {};   ///< the binder's: what it asks of the row around it
    std::shared_ptr<const SelectPlan> plan = {};  ///< the binder's
};

struct Expression {
    using Node = std::variant<Literal, NameReference, Unary, Binary, Junction, Between, InList, IsNull, Call,
                              Subquery>;

    explicit Expression(Node content) : node(std::move(content)) {}
    ~Expression();
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

    template <class T>
    [[nodiscard]] T* As() {
        return std::get_if<T>(&node);
    }
    template <class T>
    [[nodiscard]] const T* As() const {
        return std::get_if<T>(&node);
    }

    Node node;
    int depth = 1;
};

/// Takes the parts of a node, and counts the depth; throws 3360 when the tree grows too deep.
[[nodiscard]] ExpressionPtr MakeExpression(Expression::Node node);

/// The direct parts of an expression, in the order of writing; empty places are left out. Subqueries' own
/// statements are no parts.
[[nodiscard]] std::vector<ExpressionPtr*> PartsOf(Expression& expression);
[[nodiscard]] std::vector<const Expression*> PartsOf(const Expression& expression);

[[nodiscard]] ExpressionPtr Clone(const Expression& expression);

/// Whether two expressions mean the same: same shape, same values, and names that have the same meaning (or,
/// while they have none yet, the same letters).
[[nodiscard]] bool SameExpression(const Expression& left, const Expression& right);

struct SelectItem {
    ExpressionPtr expression;  ///< empty for "*"
    Text alias;
    Text starQualifier;  ///< of "T.*"
};

struct TableName {
    Text name;
    Text alias;
    /// The name that qualifies columns.
    [[nodiscard]] const Text& Label() const { return alias.empty() ? name : alias; }
};

enum class JoinKind { Inner, Left, Right };

struct FromItem;

struct Join {
    JoinKind kind = JoinKind::Inner;
    std::unique_ptr<FromItem> left;
    std::unique_ptr<FromItem> right;
    ExpressionPtr on;
};

/// FROM (SELECT ...) AS label.
struct NestedQuery {
    std::shared_ptr<const Statement> statement;
    Text label;  ///< may be empty
};

struct FromItem {
    std::variant<TableName, Join, NestedQuery> node;
    int depth = 1;
};

struct OrderItem {
    ExpressionPtr expression;
    bool descending = false;
};

struct Top {
    double count = 0;
    bool percent = false;
};

/// One SELECT ... HAVING.
struct Select {
    bool distinct = false;
    bool distinctRows = false;  ///< DISTINCTROW
    std::optional<Top> top;
    std::vector<SelectItem> items;
    std::vector<FromItem> from;  ///< parts that commas separate
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;
};

struct Statement {
    std::vector<Select> selects;  ///< more than one: joined by UNION
    std::vector<bool> unionAll;   ///< between selects[i] and selects[i + 1]
    std::vector<OrderItem> orderBy;
};

[[nodiscard]] Statement Clone(const Statement& statement);

}  // namespace quardele::sql
