#include "syntax/printer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include <basic/conversion.h>
#include <basic/date_literal.h>

#include "expressions/operators.h"
#include "syntax/lexer.h"

namespace quardele::sql {
namespace {

Text QuotedText(TextView text) {
    Text quoted = u"'";
    for (const char16_t unit : text) {
        quoted.append(unit == u'\'' ? 2 : 1, unit);
    }
    return quoted + u"'";
}

/// The shortest digits that give the same number back, and a mark that it is no whole number by type.
Text DoubleText(double number) {
    std::array<char, 40> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    Text text(digits.data(), end);
    const bool looksWhole = text.find_first_of(u".e") == Text::npos;
    return looksWhole && number <= std::numeric_limits<std::int32_t>::max() ? text + u".0" : text;
}

/// With a point, whatever the workstation writes.
Text DecimalText(const basic::Decimal& number) {
    Text text = basic::CStr(number);
    std::replace(text.begin(), text.end(), u',', u'.');
    return text;
}

Text LiteralText(const Variant& value) {
    if (value.IsNull()) {
        return u"Null";
    }
    if (value.Is<bool>()) {
        return value.As<bool>() ? u"True" : u"False";
    }
    if (value.IsText()) {
        return QuotedText(value.As<Text>());
    }
    if (value.IsDate()) {
        return basic::WriteDateLiteral(value.As<basic::Date>());
    }
    if (value.Is<basic::Decimal>()) {
        return DecimalText(value.As<basic::Decimal>());
    }
    return value.Is<double>() ? DoubleText(value.As<double>()) : basic::CStr(value);
}

Text NameText(const Text& name) {
    const std::vector<Token> tokens = Tokenize(name);
    const bool plain = tokens.size() == 2 && tokens[0].kind == TokenKind::Word && !IsReserved(tokens[0]) &&
                       tokens[0].length == name.size();
    return plain ? name : u"[" + name + u"]";
}

class Printer {
 public:
    void Write(const Expression& expression) {
        std::visit([this](const auto& node) { Write(node); }, expression.node);
    }

    void Write(const Statement& statement) {
        for (std::size_t i = 0; i < statement.selects.size(); ++i) {
            if (i > 0) {
                text_ += statement.unionAll[i - 1] ? u" UNION ALL " : u" UNION ";
            }
            Write(statement.selects[i]);
        }
        for (std::size_t i = 0; i < statement.orderBy.size(); ++i) {
            text_ += i == 0 ? u" ORDER BY " : u", ";
            Write(*statement.orderBy[i].expression);
            text_ += statement.orderBy[i].descending ? u" DESC" : u"";
        }
    }

    [[nodiscard]] Text Take() { return std::move(text_); }

 private:
    /// In parentheses when the operand binds less tightly than its place asks for.
    void Operand(const Expression& expression, int least) {
        const bool enclose = PrecedenceOf(expression) < least;
        text_ += enclose ? u"(" : u"";
        Write(expression);
        text_ += enclose ? u")" : u"";
    }

    void Write(const Literal& node) { text_ += LiteralText(node.value); }

    void Write(const NameReference& node) {
        if (!node.qualifier.empty()) {
            text_ += NameText(node.qualifier) + u".";
        } else if (node.bracketed && TruthWord(node.name)) {
            text_ += u"[" + node.name + u"]";
            return;
        }
        text_ += NameText(node.name);
    }

    void Write(const Unary& node) {
        if (node.op == UnaryOperator::Not) {
            text_ += u"Not ";
            Operand(*node.operand, kNot);
            return;
        }
        text_ += node.op == UnaryOperator::Minus ? u"-" : u"+";
        Operand(*node.operand, kPower);
    }

    void Write(const Binary& node) {
        const OperatorSpelling& spelling = SpellingOf(node.op);
        Operand(*node.left, spelling.precedence);
        text_ += u" ";
        text_ += spelling.text;
        text_ += u" ";
        Operand(*node.right, spelling.precedence + 1);
    }

    void Write(const Junction& node) {
        const int least = (node.isAnd ? kAnd : kOr) + 1;
        for (std::size_t i = 0; i < node.operands.size(); ++i) {
            if (i > 0) {
                text_ += node.isAnd ? u" And " : u" Or ";
            }
            Operand(*node.operands[i], least);
        }
    }

    void Write(const Between& node) {
        Operand(*node.operand, kComparison);
        text_ += node.negated ? u" Not Between " : u" Between ";
        Operand(*node.low, kComparison + 1);
        text_ += u" And ";
        Operand(*node.high, kComparison + 1);
    }

    void Write(const InList& node) {
        Operand(*node.operand, kComparison);
        text_ += node.negated ? u" Not In (" : u" In (";
        List(node.items);
        text_ += u")";
    }

    void Write(const IsNull& node) {
        Operand(*node.operand, kComparison);
        text_ += node.negated ? u" Is Not Null" : u" Is Null";
    }

    void Write(const Call& node) {
        text_ += node.function + (node.star ? u"(*" : u"(");
        List(node.arguments);
        text_ += u")";
    }

    void Write(const Subquery& node) {
        if (node.operand) {
            Operand(*node.operand, kComparison);
        }
        if (node.kind == Subquery::Kind::In) {
            text_ += node.negated ? u" Not In " : u" In ";
        } else if (node.operand) {
            text_ += u" " + Text(SpellingOf(node.op).text);
            text_ += node.kind == Subquery::Kind::Any ? u" Any " : u" All ";
        }
        text_ += node.kind == Subquery::Kind::Exists ? u"Exists (" : u"(";
        Write(*node.statement);
        text_ += u")";
    }

    void List(const std::vector<ExpressionPtr>& items) {
        for (std::size_t i = 0; i < items.size(); ++i) {
            text_ += i > 0 ? u", " : u"";
            Write(*items[i]);
        }
    }

    void Write(const Select& select) {
        text_ += select.distinct ? u"SELECT DISTINCT " : u"SELECT ";
        text_ += select.distinctRows ? u"DISTINCTROW " : u"";
        if (select.top) {
            text_ += u"TOP " + LiteralText(static_cast<std::int32_t>(select.top->count));
            text_ += select.top->percent ? u" PERCENT " : u" ";
        }
        for (std::size_t i = 0; i < select.items.size(); ++i) {
            text_ += i > 0 ? u", " : u"";
            Write(select.items[i]);
        }
        for (std::size_t i = 0; i < select.from.size(); ++i) {
            text_ += i > 0 ? u", " : u" FROM ";
            Write(select.from[i]);
        }
        Clause(u" WHERE ", select.where);
        if (!select.groupBy.empty()) {
            text_ += u" GROUP BY ";
            List(select.groupBy);
        }
        Clause(u" HAVING ", select.having);
    }

    void Clause(TextView words, const ExpressionPtr& expression) {
        if (expression) {
            text_ += words;
            Write(*expression);
        }
    }

    void Write(const SelectItem& item) {
        if (item.expression) {
            Write(*item.expression);
        } else {
            text_ += item.starQualifier.empty() ? Text(u"*") : NameText(item.starQualifier) + u".*";
        }
        if (!item.alias.empty()) {
            text_ += u" AS " + NameText(item.alias);
        }
    }

    void Write(const FromItem& item) {
        std::visit([this](const auto& node) { Write(node); }, item.node);
    }

    void Write(const TableName& table) {
        text_ += NameText(table.name);
        if (!table.alias.empty()) {
            text_ += u" AS " + NameText(table.alias);
        }
    }

    void Write(const NestedQuery& query) {
        text_ += u"(";
        Write(*query.statement);
        text_ += u")";
        if (!query.label.empty()) {
            text_ += u" AS " + NameText(query.label);
        }
    }

    void Write(const Join& join) {
        constexpr std::array<TextView, 3> kWords = {u" INNER JOIN ", u" LEFT JOIN ", u" RIGHT JOIN "};
        JoinOperand(*join.left);
        text_ += kWords[static_cast<std::size_t>(join.kind)];
        JoinOperand(*join.right);
        text_ += u" ON ";
        Write(*join.on);
    }

    void JoinOperand(const FromItem& item) {
        const bool enclose = std::holds_alternative<Join>(item.node);
        text_ += enclose ? u"(" : u"";
        Write(item);
        text_ += enclose ? u")" : u"";
    }

    Text text_;
};

}  // namespace

Text Print(const Statement& statement) {
    Printer printer;
    printer.Write(statement);
    return printer.Take();
}

Text Print(const Expression& expression) {
    Printer printer;
    printer.Write(expression);
    return printer.Take();
}

}  // namespace quardele::sql
