// Rows of one of our tables, ready to be written again by us and by SQLite.
#pragma once

#include <memory>

#include <jet/database.h>

#include "sqlite.h"

namespace quardele::bench {

struct TableRows {
    std::shared_ptr<jet::Table> table;  ///< where they come from
    std::vector<std::vector<jet::ColumnChange>> ours;
    std::vector<std::vector<SqliteValue>> theirs;
};

/// The first rows of a table.
[[nodiscard]] TableRows ReadRows(const std::filesystem::path& file, basic::TextView name, std::size_t most);

/// Makes a file with an empty table of the same columns and indexes.
void MakeOurFile(const std::filesystem::path& file, const jet::Table& like);

/// Both add the rows from `first` to before `end`; within a transaction if there is one.
void InsertOurs(jet::Table& table, const TableRows& rows, std::size_t first, std::size_t end);
void InsertTheirs(SqliteFile& file, const TableRows& rows, std::size_t first, std::size_t end);

}  // namespace quardele::bench
