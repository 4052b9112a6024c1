// The clauses of a statement.
#include <algorithm>
#include <utility>

#include "sql_error.h"
#include "syntax/parser.h"
#include "syntax/token_reader.h"

namespace quardele::sql {
namespace {

/// A query within a query counts for so many levels of nesting.
constexpr int kLevelsOfQuery = 5;

class StatementReader {
 public:
    explicit StatementReader(TokenReader& reader) : reader_(reader) {}

    /// Parts of a FROM clause that commas separate.
    std::vector<FromItem> FromList() {
        std::vector<FromItem> from;
        do {
            reader_.StartQuote();
            from.push_back(OneFromItem());
        } while (reader_.TakeSymbol(u","));
        return from;
    }

    Statement Read() {
        const TokenReader::Nesting nesting(reader_, kLevelsOfQuery);
        Statement statement;
        statement.selects.push_back(OneSelect());
        while (reader_.TakeWord(u"UNION")) {
            statement.unionAll.push_back(reader_.TakeWord(u"ALL"));
            statement.selects.push_back(OneSelect());
        }
        if (reader_.TakeWord(u"ORDER")) {
            reader_.Expect(u"BY", error::kSyntaxInOrderBy);
            do {
                statement.orderBy.push_back(OneOrderItem());
            } while (reader_.TakeSymbol(u","));
        }
        return statement;
    }

 private:
    Select OneSelect() {
        reader_.StartQuote();
        Select select;
        reader_.Expect(u"SELECT", error::kSyntaxInSelect);
        if (!reader_.TakeWord(u"ALL")) {
            select.distinct = reader_.TakeWord(u"DISTINCT");
            select.distinctRows = !select.distinct && reader_.TakeWord(u"DISTINCTROW");
        }
        select.top = TopClause();
        do {
            select.items.push_back(OneItem());
        } while (reader_.TakeSymbol(u","));
        if (reader_.TakeWord(u"FROM")) {
            select.from = FromList();
        }
        if (reader_.TakeWord(u"WHERE")) {
            select.where = ClauseExpression();
        }
        if (reader_.TakeWord(u"GROUP")) {
            reader_.Expect(u"BY", error::kSyntaxError);
            do {
                select.groupBy.push_back(ClauseExpression());
            } while (reader_.TakeSymbol(u","));
        }
        if (reader_.TakeWord(u"HAVING")) {
            select.having = ClauseExpression();
        }
        return select;
    }

    std::optional<Top> TopClause() {
        const Token& count = reader_.Peek(1);
        if (!reader_.Peek().IsWord(u"TOP") || count.kind != TokenKind::Literal) {
            return std::nullopt;
        }
        reader_.Take();
        const auto number = count.value.Is<std::int32_t>() ? count.value.As<std::int32_t>() : 0;
        if (number <= 0) {
            reader_.Fail(error::kSyntaxInSelect, u"nombre entier attendu après TOP");
        }
        reader_.Take();
        return Top{static_cast<double>(number), reader_.TakeWord(u"PERCENT")};
    }

    SelectItem OneItem() {
        SelectItem item;
        if (reader_.TakeSymbol(u"*")) {
            return item;
        }
        if (reader_.Peek(1).IsSymbol(u".") && reader_.Peek(2).IsSymbol(u"*") && IsName(reader_.Peek())) {
            item.starQualifier = reader_.Take().text;
            reader_.Take();
            reader_.Take();
            return item;
        }
        if (!CanStartExpression(reader_.Peek())) {
            reader_.Fail(error::kSyntaxInSelect, u"champ ou expression attendu");
        }
        item.expression = ReadExpression(reader_);
        if (reader_.TakeWord(u"AS")) {
            item.alias = reader_.TakeName(error::kSyntaxInSelect);
        }
        EndOfExpression();
        return item;
    }

    ExpressionPtr ClauseExpression() {
        ExpressionPtr expression = ReadExpression(reader_);
        EndOfExpression();
        return expression;
    }

    OrderItem OneOrderItem() {
        if (!CanStartExpression(reader_.Peek())) {
            reader_.StartQuote();
            reader_.Fail(error::kSyntaxInOrderBy, u"champ ou expression attendu");
        }
        OrderItem item;
        item.expression = ReadExpression(reader_);
        item.descending = reader_.TakeWord(u"DESC");
        if (!item.descending) {
            reader_.TakeWord(u"ASC");
        }
        EndOfExpression();
        return item;
    }

    /// Only what may follow an expression of a clause may follow it: anything else lacks an operator.
    void EndOfExpression() const {
        const Token& token = reader_.Peek();
        if (token.kind == TokenKind::End || token.IsSymbol(u",") || token.IsSymbol(u")") ||
            token.IsSymbol(u";")) {
            return;
        }
        for (const TextView word : {u"FROM", u"WHERE", u"GROUP", u"HAVING", u"ORDER", u"UNION"}) {
            if (token.IsWord(word)) {
                return;
            }
        }
        reader_.FailInExpression(u"opérateur absent");
    }

    static bool CanStartExpression(const Token& token) {
        switch (token.kind) {
            case TokenKind::End:
                return false;
            case TokenKind::Symbol:
                return !token.IsSymbol(u",") && !token.IsSymbol(u";") && !token.IsSymbol(u")");
            case TokenKind::Word:
                break;
            default:
                return true;
        }
        for (const TextView word : {u"FROM", u"WHERE", u"GROUP", u"HAVING", u"ORDER", u"UNION", u"AS"}) {
            if (token.IsWord(word)) {
                return false;
            }
        }
        return true;
    }

    FromItem OneFromItem() {
        const TokenReader::Nesting nesting(reader_);
        FromItem item = FromOperand();
        while (const auto kind = JoinWords()) {
            Join join;
            join.kind = *kind;
            join.left = std::make_unique<FromItem>(std::move(item));
            join.right = std::make_unique<FromItem>(FromOperand());
            reader_.Expect(u"ON", error::kSyntaxInFrom);
            join.on = ReadExpression(reader_);
            const int depth = std::max(join.left->depth, join.right->depth) + 1;
            if (depth > kDeepestTree) {
                FailTooComplex(u"trop de jointures l'une dans l'autre");
            }
            item = FromItem{std::move(join), depth};
        }
        return item;
    }

    FromItem FromOperand() {
        if (reader_.Peek().IsSymbol(u"(") && reader_.Peek(1).IsWord(u"SELECT")) {
            return QueryInFrom();
        }
        if (reader_.TakeSymbol(u"(")) {
            FromItem item = OneFromItem();
            if (!reader_.TakeSymbol(u")")) {
                reader_.Fail(error::kSyntaxInFrom, u"parenthèse fermante absente");
            }
            return item;
        }
        TableName table;
        table.name = reader_.TakeName(error::kSyntaxInFrom);
        if (reader_.TakeWord(u"AS") || IsName(reader_.Peek())) {
            table.alias = reader_.TakeName(error::kSyntaxInFrom);
        }
        return FromItem{std::move(table)};
    }

    FromItem QueryInFrom() {
        reader_.Take();
        NestedQuery query;
        query.statement = std::make_shared<const Statement>(Read());
        reader_.ExpectSymbol(u")", error::kSyntaxInFrom);
        if (reader_.TakeWord(u"AS") || IsName(reader_.Peek())) {
            query.label = reader_.TakeName(error::kSyntaxInFrom);
        }
        return FromItem{std::move(query)};
    }

    std::optional<JoinKind> JoinWords() {
        std::optional<JoinKind> kind;
        if (reader_.TakeWord(u"INNER")) {
            kind = JoinKind::Inner;
        } else if (reader_.TakeWord(u"LEFT")) {
            reader_.TakeWord(u"OUTER");
            kind = JoinKind::Left;
        } else if (reader_.TakeWord(u"RIGHT")) {
            reader_.TakeWord(u"OUTER");
            kind = JoinKind::Right;
        }
        if (kind) {
            reader_.Expect(u"JOIN", error::kSyntaxInFrom);
        }
        return kind;
    }

    TokenReader& reader_;
};

}  // namespace

Statement ReadQuery(TokenReader& reader) {
    return StatementReader(reader).Read();
}

std::vector<FromItem> ReadFromList(TokenReader& reader) {
    return StatementReader(reader).FromList();
}

void RequireEnd(TokenReader& reader, int number) {
    const bool closed = reader.TakeSymbol(u";");
    if (reader.AtEnd()) {
        return;
    }
    if (closed) {
        throw basic::RuntimeError(
            error::kTextAfterStatement,
            u"Caractères trouvés après la fin de l'instruction SQL : " + Quoted(reader.Rest()) + u".");
    }
    if (reader.Peek().IsSymbol(u")")) {
        reader.FailInExpression(u"parenthèse fermante en trop");
    }
    reader.Fail(number, u"fin de l'instruction attendue");
}

Statement ParseStatement(TextView text) {
    TokenReader reader(text, error::kSyntaxError);
    if (!reader.Peek().IsWord(u"SELECT")) {
        throw basic::RuntimeError(error::kInvalidStatement,
                                  u"Instruction SQL non valide : « SELECT » attendu au début.");
    }
    Statement statement = ReadQuery(reader);
    RequireEnd(reader, error::kSyntaxInFrom);
    return statement;
}

ExpressionPtr ParseCondition(TextView text) {
    TokenReader reader(text, error::kSyntaxInCondition);
    ExpressionPtr condition = ReadExpression(reader);
    if (!reader.AtEnd()) {
        reader.FailInExpression(u"opérateur absent");
    }
    return condition;
}

}  // namespace quardele::sql
