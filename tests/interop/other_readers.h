// The readers written by others, and what they say of a file.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "cell_text.h"

namespace quardele::jet::test {

/// A table as somebody reads it: UTF-8, rows in any order.
struct ReadTable {
    std::vector<std::string> columns;
    std::vector<std::vector<CellText>> rows;
};

/// mdb-export and mdb-schema.
[[nodiscard]] bool HasMdbTools();
/// One table; mdb-export lists tables by name only.
[[nodiscard]] ReadTable ReadByMdbExport(const std::filesystem::path& file, const std::string& table);
/// The columns of all tables as mdb-schema prints them, "name" and "type" in turns.
[[nodiscard]] std::map<std::string, std::vector<std::string>> ReadByMdbSchema(
    const std::filesystem::path& file);

/// The package mdb-reader in the build tree, and the program that runs it.
[[nodiscard]] bool HasMdbReader();
/// All tables of the user.
[[nodiscard]] std::map<std::string, ReadTable> ReadByMdbReader(const std::filesystem::path& file);

}  // namespace quardele::jet::test
