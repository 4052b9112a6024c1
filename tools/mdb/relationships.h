// The relationships between tables, as a file's catalogue keeps them.
#pragma once

#include <vector>

#include <jet/database.h>

namespace quardele::mdb {

struct Relationship {
    jet::Text name;
    jet::Text table;       ///< whose rows refer
    jet::Text referredTo;  ///< the table that they refer to
    std::vector<jet::Text> columns;
    std::vector<jet::Text> referredColumns;  ///< in the order of `columns`
    bool enforced = true;
    bool cascadeUpdate = false;
    bool cascadeDelete = false;
};

/// In the order of the catalogue; none for a file without such a list.
[[nodiscard]] std::vector<Relationship> RelationshipsOf(jet::Database& database);

}  // namespace quardele::mdb
