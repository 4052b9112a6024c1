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

/// A text that is looked for in many others.
class FoldedPattern {
 public:
    explicit FoldedPattern(TextView what);
    /// As FindFolded.
    [[nodiscard]] std::size_t FindIn(TextView text, std::size_t from) const;

 private:
    Text folded_;
};

}  // namespace quardele::sql
