#include "syntax/ast.h"

#include <algorithm>

#include "sql_error.h"
#include "syntax/printer.h"

namespace quardele::sql {
namespace {

/// Hands every part of a node to `visit`; N is a node's type or its const form.
template <class Visit>
struct PartVisitor {
    Visit visit;

    template <class T>
    void operator()(T& node) const {
        using Node = std::remove_const_t<T>;
        if constexpr (std::is_same_v<Node, Unary> || std::is_same_v<Node, IsNull>) {
            visit(node.operand);
        } else if constexpr (std::is_same_v<Node, Binary>) {
            visit(node.left);
            visit(node.right);
        } else if constexpr (std::is_same_v<Node, Between>) {
            visit(node.operand);
            visit(node.low);
            visit(node.high);
        } else if constexpr (std::is_same_v<Node, Junction>) {
            std::for_each(node.operands.begin(), node.operands.end(), visit);
        } else if constexpr (std::is_same_v<Node, InList>) {
            visit(node.operand);
            std::for_each(node.items.begin(), node.items.end(), visit);
        } else if constexpr (std::is_same_v<Node, Call>) {
            std::for_each(node.arguments.begin(), node.arguments.end(), visit);
        } else if constexpr (std::is_same_v<Node, Subquery>) {
            if (node.operand) {
                visit(node.operand);
            }
            std::for_each(node.parameters.begin(), node.parameters.end(), visit);
        }
    }
};

template <class Visit>
PartVisitor(Visit) -> PartVisitor<Visit>;

/// A node's own content without its parts, for comparing and copying.
struct SameContent {
    bool operator()(const Literal& a, const Literal& b) const { return a.value == b.value; }
    bool operator()(const NameReference& a, const NameReference& b) const {
        if (a.meaning && b.meaning) {
            return *a.meaning == *b.meaning;
        }
        return !a.meaning && !b.meaning && basic::EqualNoCase(a.qualifier, b.qualifier) &&
               basic::EqualNoCase(a.name, b.name);
    }
    bool operator()(const Unary& a, const Unary& b) const { return a.op == b.op; }
    bool operator()(const Binary& a, const Binary& b) const { return a.op == b.op; }
    bool operator()(const Junction& a, const Junction& b) const { return a.isAnd == b.isAnd; }
    bool operator()(const Between& a, const Between& b) const { return a.negated == b.negated; }
    bool operator()(const InList& a, const InList& b) const { return a.negated == b.negated; }
    bool operator()(const IsNull& a, const IsNull& b) const { return a.negated == b.negated; }
    bool operator()(const Call& a, const Call& b) const {
        return a.star == b.star && basic::EqualNoCase(a.function, b.function);
    }
    // What a subquery asks of the row around it is among its parts.
    bool operator()(const Subquery& a, const Subquery& b) const {
        return a.kind == b.kind && a.op == b.op && a.negated == b.negated &&
               (a.statement == b.statement || Print(*a.statement) == Print(*b.statement));
    }
    template <class A, class B>
    bool operator()(const A&, const B&) const {
        return false;
    }
};

struct Copier {
    Expression::Node operator()(const Literal& n) const { return n; }
    Expression::Node operator()(const NameReference& n) const { return n; }
    Expression::Node operator()(const Unary& n) const { return Unary{n.op, Clone(*n.operand)}; }
    Expression::Node operator()(const Binary& n) const {
        return Binary{n.op, Clone(*n.left), Clone(*n.right)};
    }
    Expression::Node operator()(const Junction& n) const { return Junction{n.isAnd, CloneAll(n.operands)}; }
    Expression::Node operator()(const Between& n) const {
        return Between{Clone(*n.operand), Clone(*n.low), Clone(*n.high), n.negated};
    }
    Expression::Node operator()(const InList& n) const {
        return InList{Clone(*n.operand), CloneAll(n.items), n.negated};
    }
    Expression::Node operator()(const IsNull& n) const { return IsNull{Clone(*n.operand), n.negated}; }
    Expression::Node operator()(const Call& n) const {
        return Call{n.function, CloneAll(n.arguments), n.star};
    }
    Expression::Node operator()(const Subquery& n) const {
        return Subquery{n.kind,      n.operand ? Clone(*n.operand) : nullptr,
                        n.negated,   n.op,
                        n.statement, CloneAll(n.parameters),
                        n.plan};
    }

    static std::vector<ExpressionPtr> CloneAll(const std::vector<ExpressionPtr>& expressions) {
        std::vector<ExpressionPtr> copies;
        copies.reserve(expressions.size());
        for (const ExpressionPtr& expression : expressions) {
            copies.push_back(Clone(*expression));
        }
        return copies;
    }
};

}  // namespace

Expression::~Expression() = default;

ExpressionPtr MakeExpression(Expression::Node node) {
    auto expression = std::make_unique<Expression>(std::move(node));
    for (const Expression* part : PartsOf(std::as_const(*expression))) {
        expression->depth = std::max(expression->depth, part->depth + 1);
    }
    if (expression->depth > kDeepestTree) {
        FailTooComplex(u"trop d'opérations l'une dans l'autre");
    }
    return expression;
}

std::vector<ExpressionPtr*> PartsOf(Expression& expression) {
    std::vector<ExpressionPtr*> parts;
    std::visit(PartVisitor{[&parts](ExpressionPtr& part) { parts.push_back(&part); }}, expression.node);
    return parts;
}

std::vector<const Expression*> PartsOf(const Expression& expression) {
    std::vector<const Expression*> parts;
    std::visit(PartVisitor{[&parts](const ExpressionPtr& part) { parts.push_back(part.get()); }},
               expression.node);
    return parts;
}

ExpressionPtr Clone(const Expression& expression) {
    return MakeExpression(std::visit(Copier(), expression.node));
}

bool SameExpression(const Expression& left, const Expression& right) {
    if (!std::visit(SameContent(), left.node, right.node)) {
        return false;
    }
    const auto leftParts = PartsOf(left);
    const auto rightParts = PartsOf(right);
    return std::equal(leftParts.begin(), leftParts.end(), rightParts.begin(), rightParts.end(),
                      [](const Expression* a, const Expression* b) { return SameExpression(*a, *b); });
}

}  // namespace quardele::sql
