// Results of both sides, brought to one form.
#pragma once

#include <memory>

#include <jet/database.h>
#include <sql/query.h>

#include "sqlite.h"
#include "tree.h"

namespace quardele::sql::differential {

/// The rows, each a list of cells as text; or an error.
struct Result {
    std::vector<std::vector<std::string>> rows;
    std::string error;
};

[[nodiscard]] Result RunOurs(const std::shared_ptr<jet::Database>& database, const Select& select, Side side,
                             RowValues values);
[[nodiscard]] Result RunTheirs(bench::SqliteFile& file, const Select& select);

/// What tells our rows from the other side's, which has none of TOP; empty when they are the same: the same
/// rows, in an order with the same keys.
[[nodiscard]] std::string Difference(const Select& select, const Result& ours, Result theirs);

}  // namespace quardele::sql::differential
