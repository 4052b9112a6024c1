// Tables of the same made-up rows on all sides.
#pragma once

#include <filesystem>
#include <memory>
#include <span>

#include <jet/database.h>

#include "random.h"
#include "sqlite.h"
#include "tree.h"

namespace quardele::sql::differential {

struct ColumnOfTables {
    const char* name;
    const char* ours;  ///< type
    const char* theirs;
    Kind kind;
};
/// All tables have the same columns. Id counts the rows from 1.
[[nodiscard]] std::span<const ColumnOfTables> Columns();
inline constexpr int kTables = 3;

class Tables {
 public:
    /// The folder must outlive them.
    Tables(const std::filesystem::path& folder, unsigned seed);

    [[nodiscard]] const std::shared_ptr<jet::Database>& Ours() const { return ours_; }
    [[nodiscard]] bench::SqliteFile& Theirs() { return theirs_; }
    /// The statements that make our tables.
    [[nodiscard]] const std::string& Script() const { return script_; }

 private:
    void MakeTable(int table);
    void MakeIndexes(int table);
    void AddRow(int table, int id);
    void DoOurs(const std::string& statement);

    Random random_;
    std::shared_ptr<jet::Database> ours_;
    bench::SqliteFile theirs_{":memory:"};
    std::string script_;
};

}  // namespace quardele::sql::differential
