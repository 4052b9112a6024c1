// Whether the indexes of a table say what its rows say.
#pragma once

#include <string>

#include <jet/table.h>

namespace quardele::jet::test {

/// Walks every index in both directions and compares it with the keys computed from all rows; gives the first
/// fault in words, an empty text when there is none. Checks the table's maps of pages as well.
[[nodiscard]] std::string FaultsOf(const Table& table);

}  // namespace quardele::jet::test
