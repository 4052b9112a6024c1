// Texts without regard to case but with regard to accents, unit by unit: what LIKE and InStr go by.
#pragma once

#include <cstddef>

#include <basic/text.h>

namespace quardele::sql {

using basic::Text;
using basic::TextView;

/// The capital of a unit.
[[nodiscard]] char16_t Folded(char16_t unit);

/// 0-based position of the first `what` at or behind `from`, or npos.
[[nodiscard]] std::size_t FindFolded(TextView text, TextView what, std::size_t from);

}  // namespace quardele::sql
