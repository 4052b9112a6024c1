// From text to tree. Errors: 3075 (3077 for a condition of its own) inside expressions, 3141 SELECT list,
// 3131 FROM, 3138 ORDER BY, 3129 no SELECT at all, 3142 text behind the end, 3360 too deep; those of action
// statements stand in action_parser.h.
#pragma once

#include "syntax/ast.h"

namespace quardele::sql {

class TokenReader;

/// A whole statement; a trailing ";" is allowed.
[[nodiscard]] Statement ParseStatement(TextView text);
/// The text of a condition that stands alone, without WHERE.
[[nodiscard]] ExpressionPtr ParseCondition(TextView text);

// The parts of the grammar, which call each other.

/// SELECT ... [UNION SELECT ...] [ORDER BY ...]; stops behind it.
[[nodiscard]] Statement ReadQuery(TokenReader& reader);
/// The tables of a FROM clause, behind that word.
[[nodiscard]] std::vector<FromItem> ReadFromList(TokenReader& reader);
/// Takes a closing ";". Throws 3142 for anything behind it, `number` for anything else that follows.
void RequireEnd(TokenReader& reader, int number);
/// One expression; stops at the first token that cannot continue it.
[[nodiscard]] ExpressionPtr ReadExpression(TokenReader& reader);

}  // namespace quardele::sql
