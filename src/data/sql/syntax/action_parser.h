// From the text of an action statement to its tree. Errors besides those of parser.h: 3065 for a SELECT, 3129
// for anything that is no action, 3134 INSERT INTO, 3144 UPDATE, 3128 DELETE, 3290 CREATE TABLE, 3289
// constraints, 3292 columns and their types, 3291 CREATE INDEX, 3293 ALTER TABLE, 3295 other changes of
// structure, 3251 those that are known but not made.
#pragma once

#include "syntax/action.h"

namespace quardele::sql {

class TokenReader;

/// A whole statement; a trailing ";" is allowed.
[[nodiscard]] Action ParseAction(TextView text);

// The two halves of the grammar.

/// INSERT, UPDATE or DELETE, to its end.
[[nodiscard]] Action ReadRowChange(TokenReader& reader);
/// CREATE, ALTER or DROP, to its end.
[[nodiscard]] Action ReadDefinition(TokenReader& reader);

}  // namespace quardele::sql
