// A small data file that the engine makes itself, and changes of every kind to it.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <jet/database.h>

namespace quardele::jet::test {

/// Makes a file with a table VEHICLES (NUMBER, autonumber and key; PLATE, unique; KM; NOTES, a memo) that has
/// so many rows.
[[nodiscard]] std::filesystem::path MakeWorkshop(const std::filesystem::path& folder, int vehicles);

/// Changes one row of a table, or makes one; values by the names of their columns.
struct NamedValue {
    const char16_t* column;
    Variant value;
};
void UpdateRow(Table& table, RowId row, const std::vector<NamedValue>& values);
RowId InsertRow(Table& table, const std::vector<NamedValue>& values);
/// The identity of the row at a position of the scan.
[[nodiscard]] RowId RowAt(const Table& table, int position);

struct Change {
    std::string name;
    std::function<void(Database&)> apply;
};

/// Changes of all kinds, to be made one after the other.
[[nodiscard]] std::vector<Change> MixedChanges();

/// Everything that the user tables of a file hold, as a text.
[[nodiscard]] std::string ContentsOf(const std::filesystem::path& file);

}  // namespace quardele::jet::test
