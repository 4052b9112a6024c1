// The same tables in our file and in SQLite's, and what it takes to run a statement on each.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <jet/database.h>

#include "sqlite.h"
#include "statements.h"
#include "temporary_folder.h"

namespace quardele::bench {

class BothSides {
 public:
    /// Opens the data database and copies the tables that statements read.
    explicit BothSides(const std::filesystem::path& file);

    /// Prepares and runs the statement and reads every value of the rows that are wanted; how many these
    /// were. Where only the first are, we find our rows in steps, as lists do, and SQLite's result ends where
    /// the reading ends.
    std::size_t RunOurs(const Statement& statement) const;
    std::size_t RunTheirs(const Statement& statement);

    /// The rows of both as sorted lines, for a comparison outside the measures.
    [[nodiscard]] std::vector<std::string> OurLines(const Statement& statement) const;
    [[nodiscard]] std::vector<std::string> TheirLines(const Statement& statement);

    [[nodiscard]] const std::shared_ptr<jet::Database>& Ours() const { return database_; }

 private:
    TemporaryFolder folder_;
    std::shared_ptr<jet::Database> database_;
    SqliteFile sqlite_;
};

}  // namespace quardele::bench
