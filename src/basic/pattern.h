// Patterns of formats, cut into what their writers look at.
#pragma once

#include <vector>

#include <basic/text.h>

namespace quardele::basic {

/// A unit of a pattern.
struct PatternUnit {
    char16_t unit = 0;
    bool literal = false;  ///< quotes or a "\" ahead of it say that it means itself

    /// Whether it is one of the signs and may mean what they mean.
    [[nodiscard]] bool IsSign(TextView signs) const { return !literal && signs.find(unit) != TextView::npos; }
};

using PatternUnits = std::vector<PatternUnit>;

/// The sections of a pattern, which ";" separates; at least one.
[[nodiscard]] std::vector<PatternUnits> SectionsOf(TextView pattern);

/// Whether one of the signs stands in a section and may mean what it means.
[[nodiscard]] bool HasSign(const PatternUnits& section, TextView signs);

}  // namespace quardele::basic
