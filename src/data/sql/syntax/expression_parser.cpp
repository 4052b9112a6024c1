// Expressions by precedence climbing.
#include <utility>

#include "expressions/operators.h"
#include "sql_error.h"
#include "syntax/parser.h"
#include "syntax/token_reader.h"

namespace quardele::sql {
namespace {

class ExpressionReader {
 public:
    explicit ExpressionReader(TokenReader& reader) : reader_(reader) {}

    ExpressionPtr Read() {
        reader_.StartQuote();
        return Binding(kImp);
    }

 private:
    /// Reads an expression whose operators bind at least as tightly as `least`.
    ExpressionPtr Binding(int least) {
        const TokenReader::Nesting nesting(reader_);
        ExpressionPtr left = Prefixed();
        while (true) {
            if (auto next = least <= kComparison ? Predicate(left) : nullptr) {
                left = std::move(next);
            } else if (const OperatorSpelling* found = NextOperator(least)) {
                reader_.Take();
                left = WithOperator(*found, std::move(left));
            } else if (least <= kAnd && reader_.TakeWord(u"AND")) {
                left = Joined(true, std::move(left), Binding(kAnd + 1));
            } else if (least <= kOr && reader_.TakeWord(u"OR")) {
                left = Joined(false, std::move(left), Binding(kOr + 1));
            } else {
                return left;
            }
        }
    }

    /// What an operator makes of its left operand and of what follows it.
    ExpressionPtr WithOperator(const OperatorSpelling& spelling, ExpressionPtr left) {
        if (QuantifierFollows(spelling.op)) {
            return Quantified(spelling.op, std::move(left));
        }
        ExpressionPtr right = Binding(spelling.precedence + 1);
        return MakeExpression(Binary{spelling.op, std::move(left), std::move(right)});
    }

    [[nodiscard]] const OperatorSpelling* NextOperator(int least) const {
        const Token& token = reader_.Peek();
        for (const OperatorSpelling& spelling : BinaryOperators()) {
            const bool found = spelling.word ? token.IsWord(spelling.text) : token.IsSymbol(spelling.text);
            if (found) {
                return spelling.precedence >= least ? &spelling : nullptr;
            }
        }
        return nullptr;
    }

    [[nodiscard]] bool QuantifierFollows(BinaryOperator op) const {
        const Token& word = reader_.Peek();
        return IsComparison(op) && (word.IsWord(u"ANY") || word.IsWord(u"SOME") || word.IsWord(u"ALL")) &&
               reader_.Peek(1).IsSymbol(u"(") && reader_.Peek(2).IsWord(u"SELECT");
    }

    ExpressionPtr Quantified(BinaryOperator op, ExpressionPtr operand) {
        const auto kind = reader_.Take().IsWord(u"ALL") ? Subquery::Kind::All : Subquery::Kind::Any;
        reader_.Take();
        return Nested(Subquery{kind, std::move(operand), false, op, nullptr});
    }

    /// Adds to a chain of the same word instead of nesting it.
    static ExpressionPtr Joined(bool isAnd, ExpressionPtr left, ExpressionPtr right) {
        std::vector<ExpressionPtr> operands;
        if (auto* chain = left->As<Junction>(); chain != nullptr && chain->isAnd == isAnd) {
            operands = std::move(chain->operands);
        } else {
            operands.push_back(std::move(left));
        }
        operands.push_back(std::move(right));
        return MakeExpression(Junction{isAnd, std::move(operands)});
    }

    /// IS NULL, BETWEEN, IN and the negated forms behind `operand`, which is taken then; null when none
    /// follows.
    ExpressionPtr Predicate(ExpressionPtr& operand) {
        if (reader_.TakeWord(u"IS")) {
            const bool negated = reader_.TakeWord(u"NOT");
            if (!reader_.TakeWord(u"NULL")) {
                reader_.FailInExpression(u"Null attendu après Is");
            }
            return MakeExpression(IsNull{std::move(operand), negated});
        }
        const Token& second = reader_.Peek(1);
        const bool negated =
            reader_.Peek().IsWord(u"NOT") && (second.IsWord(u"IN") || second.IsWord(u"LIKE") ||
                                              second.IsWord(u"ALIKE") || second.IsWord(u"BETWEEN"));
        if (negated) {
            reader_.Take();
        }
        if (reader_.TakeWord(u"BETWEEN")) {
            return BetweenBounds(std::move(operand), negated);
        }
        if (reader_.TakeWord(u"IN")) {
            return Membership(std::move(operand), negated);
        }
        if (negated) {
            const BinaryOperator op =
                reader_.Take().IsWord(u"LIKE") ? BinaryOperator::Like : BinaryOperator::ALike;
            ExpressionPtr like = MakeExpression(Binary{op, std::move(operand), Binding(kComparison + 1)});
            return MakeExpression(Unary{UnaryOperator::Not, std::move(like)});
        }
        return nullptr;
    }

    ExpressionPtr BetweenBounds(ExpressionPtr operand, bool negated) {
        ExpressionPtr low = Binding(kComparison + 1);
        if (!reader_.TakeWord(u"AND")) {
            reader_.FailInExpression(u"Between sans And");
        }
        return MakeExpression(Between{std::move(operand), std::move(low), Binding(kComparison + 1), negated});
    }

    ExpressionPtr Membership(ExpressionPtr operand, bool negated) {
        if (!reader_.TakeSymbol(u"(")) {
            reader_.FailInExpression(u"parenthèse attendue après In");
        }
        if (reader_.Peek().IsWord(u"SELECT")) {
            return Nested(
                Subquery{Subquery::Kind::In, std::move(operand), negated, BinaryOperator::Equal, nullptr});
        }
        return MakeExpression(InList{std::move(operand), ListToParenthesis(), negated});
    }

    ExpressionPtr Prefixed() {
        if (reader_.TakeWord(u"NOT")) {
            return MakeExpression(Unary{UnaryOperator::Not, Binding(kNot)});
        }
        if (reader_.TakeSymbol(u"-")) {
            return MakeExpression(Unary{UnaryOperator::Minus, Binding(kPower)});
        }
        if (reader_.TakeSymbol(u"+")) {
            return MakeExpression(Unary{UnaryOperator::Plus, Binding(kPower)});
        }
        return Primary();
    }

    ExpressionPtr Primary() {
        const Token& token = reader_.Peek();
        if (token.kind == TokenKind::Literal) {
            return MakeExpression(Literal{reader_.Take().value});
        }
        if (reader_.TakeSymbol(u"(")) {
            return Parenthesized();
        }
        if (token.kind == TokenKind::Word && reader_.Peek(1).IsSymbol(u"(") && CanBeCalled(token)) {
            return FunctionCall();
        }
        if (token.kind == TokenKind::Name || token.kind == TokenKind::Word) {
            return IsReserved(token) ? Constant() : Name();
        }
        reader_.FailInExpression(token.kind == TokenKind::End ? u"opérande absent" : u"opérande attendu");
    }

    static bool CanBeCalled(const Token& token) {
        return !IsReserved(token) || token.IsWord(u"LEFT") || token.IsWord(u"RIGHT") || token.IsWord(u"ASC");
    }

    ExpressionPtr Constant() {
        if (reader_.TakeWord(u"TRUE") || reader_.TakeWord(u"ON")) {
            return MakeExpression(Literal{true});
        }
        if (reader_.TakeWord(u"FALSE")) {
            return MakeExpression(Literal{false});
        }
        if (reader_.TakeWord(u"NULL")) {
            return MakeExpression(Literal{basic::Null()});
        }
        if (reader_.TakeWord(u"EXISTS")) {
            if (!reader_.TakeSymbol(u"(") || !reader_.Peek().IsWord(u"SELECT")) {
                reader_.FailInExpression(u"sous-requête attendue après Exists");
            }
            return Nested(Subquery{Subquery::Kind::Exists, nullptr, false, BinaryOperator::Equal, nullptr});
        }
        reader_.FailInExpression(u"opérande attendu");
    }

    ExpressionPtr Name() {
        const bool bracketed = reader_.Peek().kind == TokenKind::Name;
        Text first = reader_.Take().text;
        if (!reader_.TakeSymbol(u".") && !reader_.TakeSymbol(u"!")) {
            return MakeExpression(NameReference{{}, std::move(first), {}, bracketed});
        }
        const TokenKind kind = reader_.Peek().kind;
        if (kind != TokenKind::Word && kind != TokenKind::Name) {
            reader_.FailInExpression(u"nom de champ attendu");
        }
        return MakeExpression(NameReference{std::move(first), reader_.Take().text, {}, bracketed});
    }

    ExpressionPtr FunctionCall() {
        Call call;
        call.function = reader_.Take().text;
        if (call.function.back() == u'$') {
            call.function.pop_back();
        }
        reader_.Take();
        if (basic::EqualNoCase(call.function, u"COUNT") && reader_.TakeSymbol(u"*")) {
            call.star = true;
            CloseParenthesis();
        } else if (!reader_.TakeSymbol(u")")) {
            call.arguments = ListToParenthesis();
        }
        return MakeExpression(std::move(call));
    }

    std::vector<ExpressionPtr> ListToParenthesis() {
        std::vector<ExpressionPtr> items;
        do {
            items.push_back(Binding(kImp));
        } while (reader_.TakeSymbol(u","));
        CloseParenthesis();
        return items;
    }

    ExpressionPtr Parenthesized() {
        if (reader_.Peek().IsWord(u"SELECT")) {
            return Nested(Subquery{Subquery::Kind::Scalar, nullptr, false, BinaryOperator::Equal, nullptr});
        }
        ExpressionPtr inner = Binding(kImp);
        CloseParenthesis();
        return inner;
    }

    ExpressionPtr Nested(Subquery subquery) {
        subquery.statement = std::make_shared<const Statement>(ReadQuery(reader_));
        CloseParenthesis();
        return MakeExpression(std::move(subquery));
    }

    void CloseParenthesis() {
        if (!reader_.TakeSymbol(u")")) {
            reader_.FailInExpression(reader_.AtEnd() ? u"parenthèse fermante absente" : u"opérateur absent");
        }
    }

    TokenReader& reader_;
};

}  // namespace

ExpressionPtr ReadExpression(TokenReader& reader) {
    return ExpressionReader(reader).Read();
}

}  // namespace quardele::sql
