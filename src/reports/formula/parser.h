// From the text of a formula to its tree.
#pragma once

#include <vector>

#include "node.h"

namespace quardele::formula {

struct ParsedFormula {
    NodePtr root;
    std::vector<Reference> references;
};

/// Throws 3075, 3085, 3360.
[[nodiscard]] ParsedFormula ParseFormula(TextView text);

}  // namespace quardele::formula
