// Writes trees back as text: for descriptions of errors, for recognising equal conditions, and so that tests
// can compare what was read with what was written.
#pragma once

#include "syntax/ast.h"

namespace quardele::sql {

/// The statement on one line, with names in brackets where they need them and no closing ";".
[[nodiscard]] Text Print(const Statement& statement);
[[nodiscard]] Text Print(const Expression& expression);

}  // namespace quardele::sql
