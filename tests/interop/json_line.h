// One line of what dump.mjs prints.
#pragma once

#include <string_view>
#include <vector>

#include "cell_text.h"

namespace quardele::jet::test {

/// The elements of a JSON array of texts and nulls, in UTF-8. Throws std::runtime_error when it is none.
[[nodiscard]] std::vector<CellText> ParseJsonLine(std::string_view line);

}  // namespace quardele::jet::test
