#include "lexer.h"

#include <algorithm>
#include <array>

#include <basic/characters.h>
#include <basic/conversion.h>
#include <basic/date_literal.h>

#include "formula_error.h"

namespace quardele::formula {
namespace {

using basic::IsBlank;
using basic::IsDigit;

bool IsLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
}

constexpr std::array<TextView, 3> kLongSymbols = {u"<=", u">=", u"<>"};
constexpr TextView kShortSymbols = u"(),=<>+-*/&";

class Lexer {
 public:
    explicit Lexer(TextView formula) : formula_(formula) {}

    std::vector<Token> Run() {
        std::vector<Token> tokens;
        do {
            tokens.push_back(Next());
        } while (tokens.back().kind != TokenKind::End);
        return tokens;
    }

 private:
    [[nodiscard]] char16_t Peek(std::size_t ahead = 0) const {
        return at_ + ahead < formula_.size() ? formula_[at_ + ahead] : u'\0';
    }

    void SkipBlanksAndRemarks() {
        while (at_ < formula_.size()) {
            if (IsBlank(Peek())) {
                ++at_;
            } else if (formula_.substr(at_, 2) == u"//") {
                at_ = std::min(formula_.find(u'\n', at_), formula_.size());
            } else {
                return;
            }
        }
    }

    Token Next() {
        SkipBlanksAndRemarks();
        const char16_t first = Peek();
        if (at_ == formula_.size()) {
            return {.kind = TokenKind::End, .position = at_, .text = {}, .value = {}};
        }
        if (first == u'\'' || first == u'"') {
            return Quoted(first);
        }
        if (first == u'#') {
            return DateLiteral();
        }
        if (first == u'{') {
            return Braced();
        }
        if (IsDigit(first) || (first == u'.' && IsDigit(Peek(1)))) {
            return Number();
        }
        return IsLetter(first) ? Word() : Symbol();
    }

    Token Taken(TokenKind kind, std::size_t length, Variant value = {}) {
        Token token{.kind = kind,
                    .position = at_,
                    .text = Text(formula_.substr(at_, length)),
                    .value = std::move(value)};
        at_ += length;
        return token;
    }

    /// A quote inside the text is written twice.
    Token Quoted(char16_t quote) {
        Text value;
        for (std::size_t end = at_ + 1; end < formula_.size(); ++end) {
            if (formula_[end] != quote) {
                value += formula_[end];
            } else if (end + 1 < formula_.size() && formula_[end + 1] == quote) {
                value += quote;
                ++end;
            } else {
                return Taken(TokenKind::Literal, end + 1 - at_, std::move(value));
            }
        }
        FailSyntax(u"Il manque le guillemet qui ferme le texte", formula_, at_);
    }

    Token DateLiteral() {
        const std::size_t end = formula_.find(u'#', at_ + 1);
        const auto date = end == TextView::npos
                              ? std::nullopt
                              : basic::ReadDateLiteral(formula_.substr(at_ + 1, end - at_ - 1));
        if (!date) {
            FailSyntax(u"Ce n'est pas une date", formula_, at_);
        }
        return Taken(TokenKind::Literal, end + 1 - at_, *date);
    }

    Token Braced() {
        const std::size_t end = formula_.find(u'}', at_ + 1);
        if (end == TextView::npos) {
            FailSyntax(u"Il manque l'accolade qui ferme le nom", formula_, at_);
        }
        Token token = Taken(TokenKind::Braced, end + 1 - at_);
        token.text = basic::Trim(TextView(token.text).substr(1, token.text.size() - 2));
        return token;
    }

    Token Number() {
        std::size_t length = 0;
        bool point = false;
        while (IsDigit(Peek(length)) || (Peek(length) == u'.' && !point)) {
            point = point || Peek(length) == u'.';
            ++length;
        }
        return Taken(TokenKind::Literal, length, basic::Val(formula_.substr(at_, length)));
    }

    Token Word() {
        std::size_t length = 0;
        while (IsLetter(Peek(length)) || IsDigit(Peek(length))) {
            ++length;
        }
        return Taken(TokenKind::Word, length);
    }

    Token Symbol() {
        for (const TextView symbol : kLongSymbols) {
            if (formula_.substr(at_, symbol.size()) == symbol) {
                return Taken(TokenKind::Symbol, symbol.size());
            }
        }
        if (kShortSymbols.find(Peek()) == TextView::npos) {
            FailSyntax(u"Ce signe n'a pas de sens ici", formula_, at_);
        }
        return Taken(TokenKind::Symbol, 1);
    }

    TextView formula_;
    std::size_t at_ = 0;
};

}  // namespace

std::vector<Token> Tokenize(TextView formula) {
    return Lexer(formula).Run();
}

}  // namespace quardele::formula
