// The words of a formula.
#pragma once

#include <cstddef>
#include <vector>

#include <basic/variant.h>

namespace quardele::formula {

using basic::Text;
using basic::TextView;
using basic::Variant;

enum class TokenKind {
    End,
    Word,
    Literal,  ///< a text, number or date
    Braced,   ///< what stands between braces
    Symbol,
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::size_t position = 0;  ///< in the formula, UTF-16 units
    Text text;                 ///< as written; of what was in braces without them
    Variant value;             ///< of literals

    [[nodiscard]] bool IsSymbol(TextView symbol) const { return kind == TokenKind::Symbol && text == symbol; }
    /// Without regard to case.
    [[nodiscard]] bool IsWord(TextView word) const {
        return kind == TokenKind::Word && basic::EqualNoCase(text, word);
    }
};

/// All words and an End. "//" begins a remark that goes to the end of its line. Throws 3075.
[[nodiscard]] std::vector<Token> Tokenize(TextView formula);

}  // namespace quardele::formula
