// File name patterns.
#pragma once

#include <basic/text.h>

namespace quardele::basic {

/// Whether a whole name matches a pattern, case ignored: "*" stands for any number of units, "?" for one, or
/// for none before a point or at the end of the name. "*.*" matches every name, one without a point too.
[[nodiscard]] bool MatchesWildcard(TextView name, TextView pattern);

}  // namespace quardele::basic
