// What the tables of a data file hold, as values: what a test expects, and what we read.
#pragma once

#include <filesystem>
#include <map>
#include <vector>

#include <jet/database.h>

namespace quardele::jet::test {

struct TableContents {
    std::vector<Column> columns;
    std::vector<std::vector<Variant>> rows;  ///< in any order
};

/// The user's tables that lie in the file itself, by name.
using Contents = std::map<Text, TableContents>;

[[nodiscard]] Contents ReadContents(const std::filesystem::path& file);
[[nodiscard]] TableContents ReadContents(const Table& table);

}  // namespace quardele::jet::test
