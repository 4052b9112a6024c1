// Texts inside formulas.
#pragma once

#include <functional>

#include <basic/text.h>

namespace quardele::reports {

/// The formula with its literals in double quotes replaced by what `translate` makes of them, at all places
/// at once. Literals come to `translate` without leading blanks.
[[nodiscard]] basic::Text WithTranslatedLiterals(
    const basic::Text& formula, const std::function<basic::Text(const basic::Text&)>& translate);

}  // namespace quardele::reports
