// Texts written after a section of a pattern.
#pragma once

#include "pattern.h"

namespace quardele::basic {

/// What stands for characters, and what says how they are written.
inline constexpr TextView kCharacterSigns = u"@&";
inline constexpr TextView kTextSigns = u"@&<>!";

/// The text in the places of the section; see FormatValue.
[[nodiscard]] Text WriteText(TextView text, const PatternUnits& section);

}  // namespace quardele::basic
