// Literals of each kind, for the rows of tables and for statements.
#pragma once

#include "random.h"
#include "tree.h"

namespace quardele::sql::differential {

[[nodiscard]] Expression Literal(Kind kind, Random& random);
[[nodiscard]] Expression NullOf(Kind kind);

}  // namespace quardele::sql::differential
