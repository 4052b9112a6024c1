// Cuts a statement into tokens. Never fails: what cannot be read becomes one token of kind Bad, so that the
// parser can say in which clause it stands.
#pragma once

#include <vector>

#include "syntax/token.h"

namespace quardele::sql {

/// The tokens of a statement; the last one is End or Bad.
[[nodiscard]] std::vector<Token> Tokenize(TextView statement);

}  // namespace quardele::sql
