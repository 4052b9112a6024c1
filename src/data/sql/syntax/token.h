// The words of a statement.
#pragma once

#include <cstddef>
#include <optional>

#include <basic/variant.h>

namespace quardele::sql {

using basic::Text;
using basic::TextView;
using basic::Variant;

enum class TokenKind {
    End,
    Word,     ///< a name or a keyword
    Name,     ///< a name in square brackets: never a keyword
    Literal,  ///< a text, number or date
    Symbol,
    Bad,  ///< what no statement can hold; `text` says why
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::size_t position = 0;  ///< in the statement, UTF-16 units
    std::size_t length = 0;
    Text text;      ///< of words and symbols as written, of names without their brackets
    Variant value;  ///< of literals

    [[nodiscard]] bool IsSymbol(TextView symbol) const { return kind == TokenKind::Symbol && text == symbol; }
    /// A word is compared with a keyword without regard to case.
    [[nodiscard]] bool IsWord(TextView keyword) const {
        return kind == TokenKind::Word && basic::EqualNoCase(text, keyword);
    }
};

/// Whether a word has a meaning of its own in every statement, so that it cannot name a thing without
/// brackets.
[[nodiscard]] bool IsReserved(const Token& token);
/// What Yes, No and Off mean where no column has that name; empty for other words.
[[nodiscard]] std::optional<bool> TruthWord(TextView word);
/// Whether a token can name a thing.
[[nodiscard]] bool IsName(const Token& token);

}  // namespace quardele::sql
