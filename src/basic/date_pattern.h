// Dates written after a section of a pattern.
#pragma once

#include <basic/variant.h>
#include <basic/weeks.h>

#include "pattern.h"

namespace quardele::basic {

/// Whether a part of a date has a place in the section.
[[nodiscard]] bool HasDatePlace(const PatternUnits& section);

/// The date in the places of the section; see FormatValue.
[[nodiscard]] Text WriteDate(Date date, const PatternUnits& section, const WeekRules& rules);

}  // namespace quardele::basic
