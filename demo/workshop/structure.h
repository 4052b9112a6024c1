// The tables of a workshop's data files: columns, keys and rules.
#pragma once

#include <vector>

#include <jet/types.h>

namespace quardele::workshop {

using Tables = std::vector<jet::TableDesign>;

/// Whether vehicles have their two note columns, which came with a later version of the program.
enum class Notes { Without, With };

/// Parameters, countries, types of work, customers, vehicles, visits, jobs and their details.
[[nodiscard]] Tables DataTables(Notes notes);
/// Sites.
[[nodiscard]] Tables StockTables();
/// Where the data files lie.
[[nodiscard]] Tables PathTables();
/// The program's modules and what changed in them.
[[nodiscard]] Tables ChangeTables();
/// Bookmarks that forms asked for.
[[nodiscard]] Tables BookmarkTables();
/// Translations of the program's texts.
[[nodiscard]] Tables TranslationTables();

}  // namespace quardele::workshop
