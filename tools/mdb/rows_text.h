// Numbers of rows in words.
#pragma once

#include <string>

#include "language.h"

namespace quardele::mdb {

/// "1 row", "2 rows".
[[nodiscard]] inline std::string RowsText(std::size_t rows, Language language) {
    constexpr Message kOne{"|1 ligne", "|1 row"};
    constexpr Message kMany{"|1 lignes", "|1 rows"};
    const bool isOne = rows == 1 || (rows == 0 && language == Language::French);
    return Say(language, isOne ? kOne : kMany, {std::to_string(rows)});
}

}  // namespace quardele::mdb
