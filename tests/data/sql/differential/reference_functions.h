// What SQLite lacks: our collation and the functions that its side of a statement calls, written from what
// they are documented to do.
#pragma once

#include "sqlite.h"

namespace quardele::sql::differential {

void AddReferenceFunctions(bench::SqliteFile& file);

/// A text as all texts that compare as equal to it: of one case, without trailing blanks.
[[nodiscard]] std::string Folded(const std::string& text);

}  // namespace quardele::sql::differential
