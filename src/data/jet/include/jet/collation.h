// The file's own order of texts ("General", used by French, English, German, Italian ... files): case is
// ignored, accents decide after letters, hyphens and apostrophes weigh least, trailing blanks count for
// nothing. Texts with equal keys are equal to the database.
#pragma once

#include <compare>
#include <string>

#include <basic/text.h>

namespace quardele::jet {

using basic::Text;
using basic::TextView;

/// The bytes whose plain byte order is the order of texts: what an ascending index stores behind its value
/// marker, terminator included. Units outside the tables compare behind all others by their code.
[[nodiscard]] std::string SortKey(TextView text);
/// Order of two texts as SortKey gives it, without building keys where a shorter way decides.
[[nodiscard]] std::weak_ordering Compare(TextView left, TextView right);
[[nodiscard]] bool Equal(TextView left, TextView right);

}  // namespace quardele::jet
