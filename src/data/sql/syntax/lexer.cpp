#include "syntax/lexer.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <system_error>
#include <utility>

#include <basic/characters.h>
#include <basic/date_literal.h>
#include <basic/decimal.h>

namespace quardele::sql {
namespace {

using basic::IsBlank;
using basic::IsDigit;

/// Everything beyond ASCII counts as a letter, as accented letters are common in names.
bool IsLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_' ||
           (unit > 0x7F && !IsBlank(unit));
}

constexpr std::array<TextView, 3> kLongSymbols = {u"<=", u">=", u"<>"};
constexpr TextView kShortSymbols = u"(),.!;=<>+-*/\\^&";

class Lexer {
 public:
    explicit Lexer(TextView statement) : text_(statement) {}

    std::vector<Token> Run() {
        std::vector<Token> tokens;
        do {
            tokens.push_back(Next());
            afterOperand_ = EndsOperand(tokens.back());
        } while (tokens.back().kind != TokenKind::End && tokens.back().kind != TokenKind::Bad);
        return tokens;
    }

 private:
    [[nodiscard]] char16_t Peek(std::size_t ahead = 0) const {
        return at_ + ahead < text_.size() ? text_[at_ + ahead] : u'\0';
    }

    /// Whether an operator can follow: there "&" joins, elsewhere it starts a number.
    static bool EndsOperand(const Token& token) {
        switch (token.kind) {
            case TokenKind::Name:
            case TokenKind::Literal:
                return true;
            case TokenKind::Word:
                return !IsReserved(token);
            default:
                return token.IsSymbol(u")");
        }
    }

    Token Next() {
        while (at_ < text_.size() && IsBlank(text_[at_])) {
            ++at_;
        }
        start_ = at_;
        if (at_ == text_.size()) {
            return Make(TokenKind::End, {});
        }
        const char16_t unit = Peek();
        if (IsLetter(unit)) {
            return Word();
        }
        if (IsDigit(unit) || (unit == u'.' && IsDigit(Peek(1)))) {
            return Number();
        }
        switch (unit) {
            case u'\'':
            case u'"':
                return QuotedText(unit);
            case u'[':
                return BracketedName();
            case u'#':
                return DateLiteral();
            case u'&':
                return afterOperand_ ? Symbol() : NumberOfBase();
            default:
                return Symbol();
        }
    }

    Token Make(TokenKind kind, Text text) {
        Token token;
        token.kind = kind;
        token.position = start_;
        token.length = at_ - start_;
        token.text = std::move(text);
        return token;
    }

    Token MakeLiteral(Variant value) {
        Token token = Make(TokenKind::Literal, {});
        token.value = std::move(value);
        return token;
    }

    Token Bad(const char16_t* reason) {
        at_ = text_.size();
        return Make(TokenKind::Bad, reason);
    }

    Token Word() {
        while (IsLetter(Peek()) || IsDigit(Peek())) {
            ++at_;
        }
        // Function names may carry the type sign of text functions: Trim$, Left$ ...
        if (Peek() == u'$') {
            ++at_;
        }
        return Make(TokenKind::Word, Text(text_.substr(start_, at_ - start_)));
    }

    void SkipDigits() {
        while (IsDigit(Peek())) {
            ++at_;
        }
    }

    Token Number() {
        SkipDigits();
        bool whole = true;
        if (Peek() == u'.') {
            whole = false;
            ++at_;
            SkipDigits();
        }
        const std::size_t sign = Peek(1) == u'+' || Peek(1) == u'-' ? 1 : 0;
        if ((Peek() == u'e' || Peek() == u'E') && IsDigit(Peek(1 + sign))) {
            whole = false;
            at_ += 1 + sign;
            SkipDigits();
        }
        const std::string digits(text_.begin() + static_cast<std::ptrdiff_t>(start_),
                                 text_.begin() + static_cast<std::ptrdiff_t>(at_));
        double number = 0;
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        if (read.ec != std::errc()) {
            return Bad(u"nombre trop grand");
        }
        if (whole && number <= std::numeric_limits<std::int32_t>::max()) {
            return MakeLiteral(static_cast<std::int32_t>(number));
        }
        // What a double cannot carry to the last digit stays exact as long as a decimal can.
        if (digits.size() > std::numeric_limits<double>::digits10) {
            if (const auto exact = basic::ReadDecimal(text_.substr(start_, at_ - start_))) {
                return MakeLiteral(*exact);
            }
        }
        return MakeLiteral(number);
    }

    /// &H1F or &O17, as a number of 32 bits whose highest is its sign.
    Token NumberOfBase() {
        const char16_t letter = Peek(1);
        const bool hexadecimal = letter == u'H' || letter == u'h';
        if (!hexadecimal && letter != u'O' && letter != u'o') {
            return Symbol();
        }
        at_ += 2;
        const std::size_t first = at_;
        while (IsLetter(Peek()) || IsDigit(Peek())) {
            ++at_;
        }
        const std::string digits(text_.begin() + static_cast<std::ptrdiff_t>(first),
                                 text_.begin() + static_cast<std::ptrdiff_t>(at_));
        std::uint32_t number = 0;
        const auto read =
            std::from_chars(digits.data(), digits.data() + digits.size(), number, hexadecimal ? 16 : 8);
        if (read.ec != std::errc() || read.ptr != digits.data() + digits.size()) {
            return Bad(u"nombre incorrect après &");
        }
        return MakeLiteral(static_cast<std::int32_t>(number));
    }

    Token QuotedText(char16_t quote) {
        Text value;
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] != quote) {
                value += text_[at_];
            } else if (Peek(1) == quote) {
                value += quote;
                ++at_;
            } else {
                ++at_;
                return MakeLiteral(std::move(value));
            }
        }
        return Bad(u"texte sans apostrophe ou guillemet de fin");
    }

    Token BracketedName() {
        const std::size_t end = text_.find(u']', at_);
        if (end == TextView::npos) {
            return Bad(u"crochet fermant absent");
        }
        Text name(basic::Trim(text_.substr(at_ + 1, end - at_ - 1)));
        if (name.empty() || name.find(u'[') != Text::npos) {
            return Bad(u"nom entre crochets incorrect");
        }
        at_ = end + 1;
        return Make(TokenKind::Name, std::move(name));
    }

    Token DateLiteral() {
        const std::size_t end = text_.find(u'#', at_ + 1);
        if (end == TextView::npos) {
            return Bad(u"date sans # de fin");
        }
        const auto date = basic::ReadDateLiteral(text_.substr(at_ + 1, end - at_ - 1));
        if (!date) {
            return Bad(u"date incorrecte");
        }
        at_ = end + 1;
        return MakeLiteral(*date);
    }

    Token Symbol() {
        for (const TextView symbol : kLongSymbols) {
            if (text_.substr(at_, symbol.size()) == symbol) {
                at_ += symbol.size();
                return Make(TokenKind::Symbol, Text(symbol));
            }
        }
        if (kShortSymbols.find(Peek()) == TextView::npos) {
            return Bad(u"caractère inattendu");
        }
        ++at_;
        return Make(TokenKind::Symbol, Text(1, text_[start_]));
    }

    TextView text_;
    std::size_t at_ = 0;
    std::size_t start_ = 0;
    bool afterOperand_ = false;
};

constexpr TextView kReserved[] = {
    u"ALL",   u"AND",    u"AS",     u"ASC",  u"BETWEEN", u"BY",     u"DESC",  u"DISTINCT", u"DISTINCTROW",
    u"EQV",   u"EXISTS", u"FALSE",  u"FROM", u"GROUP",   u"HAVING", u"IMP",   u"IN",       u"INNER",
    u"IS",    u"JOIN",   u"LEFT",   u"LIKE", u"MOD",     u"NOT",    u"NULL",  u"ON",       u"OR",
    u"ORDER", u"RIGHT",  u"SELECT", u"SET",  u"TRUE",    u"UNION",  u"WHERE", u"XOR"};

}  // namespace

std::vector<Token> Tokenize(TextView statement) {
    return Lexer(statement).Run();
}

bool IsReserved(const Token& token) {
    for (const TextView word : kReserved) {
        if (token.IsWord(word)) {
            return true;
        }
    }
    return false;
}

std::optional<bool> TruthWord(TextView word) {
    if (basic::EqualNoCase(word, u"YES")) {
        return true;
    }
    const bool no = basic::EqualNoCase(word, u"NO") || basic::EqualNoCase(word, u"OFF");
    return no ? std::optional(false) : std::nullopt;
}

bool IsName(const Token& token) {
    return token.kind == TokenKind::Name || (token.kind == TokenKind::Word && !IsReserved(token));
}

}  // namespace quardele::sql
