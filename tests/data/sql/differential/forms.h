// What expressions are made of: operators, conditions and functions in both dialects.
#pragma once

#include <vector>

#include "tree.h"

namespace quardele::sql::differential {

struct Form {
    Kind result;
    std::vector<Kind> parts;
    std::string ours;
    std::string theirs;
};

/// The forms that give a kind.
[[nodiscard]] const std::vector<Form>& FormsOf(Kind kind);

}  // namespace quardele::sql::differential
