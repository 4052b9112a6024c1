#include "plan/compiler.h"

#include <algorithm>

#include "expressions/nodes_subquery.h"
#include "expressions/operators.h"
#include "sql_error.h"
#include "syntax/printer.h"

namespace quardele::sql {
namespace {

class Compiler {
 public:
    Compiler(const Expression& whole, const CompileScope& scope) : whole_(whole), scope_(scope) {}

    NodePtr Make(const Expression& expression) {
        if (scope_.grouped != nullptr) {
            for (std::size_t i = 0; i < scope_.grouped->size(); ++i) {
                if (SameExpression(*(*scope_.grouped)[i], expression)) {
                    return MakeResult(i, scope_.resultTypes[i]);
                }
            }
        }
        return std::visit(*this, expression.node);
    }

    NodePtr operator()(const Literal& node) { return MakeConstant(node.value, TypeOf(node.value)); }

    NodePtr operator()(const NameReference& node) {
        const NameMeaning& meaning = node.meaning.value();
        const auto column = static_cast<std::size_t>(meaning.column);
        if (meaning.kind == NameMeaning::Kind::ResultColumn) {
            return MakeResult(column, scope_.resultTypes[column]);
        }
        if (meaning.kind == NameMeaning::Kind::Parameter) {
            return MakeParameter(column, (*scope_.parameterTypes)[column]);
        }
        if (scope_.grouped != nullptr) {
            FailNaming(error::kNotInAggregate, Print(whole_));
        }
        const Source& source = (*scope_.sources)[meaning.source];
        const StaticType type = source.ColumnType(meaning.column);
        return source.table ? MakeColumn(meaning.source, meaning.column, type)
                            : MakeQueryColumn(meaning.source, column, type);
    }

    NodePtr operator()(const Unary& node) {
        NodePtr operand = Make(*node.operand);
        switch (node.op) {
            case UnaryOperator::Not:
                return MakeNot(std::move(operand));
            case UnaryOperator::Minus:
                return MakeNegative(std::move(operand));
            default:
                return operand;
        }
    }

    NodePtr operator()(const Binary& node) {
        NodePtr left = Make(*node.left);
        NodePtr right = Make(*node.right);
        if (IsComparison(node.op)) {
            return MakeComparison(node.op, std::move(left), std::move(right));
        }
        switch (node.op) {
            case BinaryOperator::Like:
                return MakeLike(std::move(left), std::move(right), Wildcards::Usual);
            case BinaryOperator::ALike:
                return MakeLike(std::move(left), std::move(right), Wildcards::Ansi);
            case BinaryOperator::Concatenate:
                return MakeConcatenation(std::move(left), std::move(right));
            case BinaryOperator::Xor:
            case BinaryOperator::Eqv:
            case BinaryOperator::Imp:
                return MakeConnective(node.op, std::move(left), std::move(right));
            default:
                return MakeArithmetic(node.op, std::move(left), std::move(right));
        }
    }

    NodePtr operator()(const Junction& node) { return MakeJunction(node.isAnd, MakeAll(node.operands)); }

    NodePtr operator()(const Between& node) {
        NodePtr operand = Make(*node.operand);
        NodePtr low = Make(*node.low);
        return Negated(node.negated, MakeBetween(std::move(operand), std::move(low), Make(*node.high)));
    }

    NodePtr operator()(const InList& node) {
        NodePtr operand = Make(*node.operand);
        return Negated(node.negated, MakeInList(std::move(operand), MakeAll(node.items)));
    }

    NodePtr operator()(const IsNull& node) { return Negated(node.negated, MakeIsNull(Make(*node.operand))); }

    NodePtr operator()(const Call& node) { return MakeCall(node.function, MakeAll(node.arguments)); }

    NodePtr operator()(const Subquery& node) {
        NodeList parameters = MakeAll(node.parameters);
        switch (node.kind) {
            case Subquery::Kind::Scalar:
                return MakeScalarSubquery(node.plan, std::move(parameters), Print(*node.statement));
            case Subquery::Kind::Exists:
                return MakeExists(node.plan, std::move(parameters));
            case Subquery::Kind::In:
                return Negated(node.negated, MakeQuantified(BinaryOperator::Equal, false, Make(*node.operand),
                                                            node.plan, std::move(parameters)));
            default:
                return MakeQuantified(node.op, node.kind == Subquery::Kind::All, Make(*node.operand),
                                      node.plan, std::move(parameters));
        }
    }

 private:
    static NodePtr Negated(bool negated, NodePtr node) {
        return negated ? MakeNot(std::move(node)) : std::move(node);
    }

    NodeList MakeAll(const std::vector<ExpressionPtr>& expressions) {
        NodeList nodes;
        nodes.reserve(expressions.size());
        for (const ExpressionPtr& expression : expressions) {
            nodes.push_back(Make(*expression));
        }
        return nodes;
    }

    const Expression& whole_;
    const CompileScope& scope_;
};

}  // namespace

NodePtr Compile(const Expression& expression, const CompileScope& scope) {
    try {
        NodePtr node = Compiler(expression, scope).Make(expression);
        return node->NeverFails() ? std::move(node) : MakePlaced(std::move(node), Print(expression));
    } catch (const basic::RuntimeError& failure) {
        FailIn(failure, Print(expression));
    }
}

NodePtr CompileCondition(const Expression& expression, const CompileScope& scope) {
    NodePtr node = Compile(expression, scope);
    try {
        RequireCondition(node->Type());
    } catch (const basic::RuntimeError& failure) {
        FailIn(failure, Print(expression));
    }
    return node;
}

}  // namespace quardele::sql
