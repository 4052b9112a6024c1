// The statements that are measured: those of the program's lists, in our dialect and in SQLite's.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quardele::bench {

/// One statement for both sides. Both give the same rows; SQLite's order of texts is that of their bytes.
struct Statement {
    std::string what;    ///< in French
    std::string ours;    ///< UTF-8
    std::string theirs;  ///< UTF-8
    /// How many rows are read of the result; 0 for all.
    std::size_t rowsRead = 0;
};

/// SQLite has no months of our calendar: the name of the function that adds some to a date.
inline constexpr const char* kAddMonths = "AjouteMois";

struct StatementGroup {
    std::string title;  ///< in French
    std::vector<Statement> statements;
};

/// `vehicle` is a registration that jobs have.
[[nodiscard]] std::vector<StatementGroup> Statements(const std::string& vehicle);

}  // namespace quardele::bench
