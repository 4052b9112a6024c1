// What the tests of structures share: designs, the check of a whole file, the pages that are free.
#pragma once

#include "support.h"

namespace quardele::jet::test {

/// A column of a type whose natural size is all that matters, or a text.
[[nodiscard]] Column ColumnOf(const Text& name, ColumnType type = ColumnType::Text, int size = 0);

/// A table with a column of every type and indexes with every option; the AutoNumber "Id" comes first.
[[nodiscard]] TableDesign EveryType();
/// The values of row `i` of such a table, apart from Id.
[[nodiscard]] std::vector<ColumnChange> RowOfEveryType(int i);
/// Adds rows of every type in one step.
void FillEveryType(Database& database, Table& table, int rows);

/// All findings of the check of a file, one per line; notes of other programs' files only when asked for.
[[nodiscard]] std::string Findings(const std::filesystem::path& file, bool withNotes = true);

/// A row of a table as text, for comparisons: every value in full.
[[nodiscard]] std::string RowText(const Table& table, const Row& row);
/// All rows in their order.
[[nodiscard]] std::vector<std::string> Rows(const Table& table);

/// The number of pages of the file, and of those that are free.
struct PageUse {
    std::uint32_t all = 0;
    std::size_t free = 0;
    friend bool operator==(const PageUse&, const PageUse&) = default;
};
[[nodiscard]] PageUse PagesOf(const std::filesystem::path& file);

}  // namespace quardele::jet::test
