// The commands of the program mdb. Each writes to `out` and throws RuntimeError on failure.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>

namespace quardele::mdb {

/// The names of the user's tables, one per line.
void ListTables(const std::filesystem::path& file, std::ostream& out);
/// Columns and indexes of a table, or of all user tables when the name is empty.
void ShowSchema(const std::filesystem::path& file, const std::string& table, std::ostream& out);
/// All rows of a table as comma separated values.
void DumpTable(const std::filesystem::path& file, const std::string& table, std::ostream& out);

}  // namespace quardele::mdb
