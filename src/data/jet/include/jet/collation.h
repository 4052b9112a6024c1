// The file's own order of texts ("General", used by French, English, German, Italian ... files): case is
// ignored, accents decide after letters, hyphens and apostrophes weigh least, trailing blanks count for
// nothing. Texts with equal keys are equal to the database.
#pragma once

#include <compare>
#include <string>

#include <jet/types.h>

namespace quardele::jet {

/// The bytes whose plain byte order is the order of texts: what an ascending index stores behind its value
/// marker, terminator included. Units outside the tables compare behind all others by their code.
[[nodiscard]] std::string SortKey(TextView text);
/// Appends the same bytes to a string, which need not grow for each text when its memory is reused.
void AppendSortKey(TextView text, std::string& key);
/// The bytes with which the keys of all texts begin that begin with this one, up to equality.
[[nodiscard]] std::string SortKeyStart(TextView text);
/// Whether all units of the text are in the tables, so that its key is the one that the original engine would
/// store. An index must not be asked for another text (Seek throws 3251), and such a text is not written into
/// one.
[[nodiscard]] bool HasSortKey(TextView text);
/// Order of two texts as SortKey gives it, without building keys where a shorter way decides.
[[nodiscard]] std::weak_ordering Compare(TextView left, TextView right);
[[nodiscard]] bool Equal(TextView left, TextView right);

}  // namespace quardele::jet
