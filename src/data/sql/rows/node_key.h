// The sort keys of what expressions come to, without making values where a shorter way leads there.
#pragma once

#include <string>

#include "expressions/node.h"

namespace quardele::sql {

/// Its buffer keeps its memory from row to row.
class NodeKeys {
 public:
    /// Appends what AppendSortKey would append for the node's value.
    void Append(std::string& key, const Node& node, RowContext& row, bool descending = false);
    /// The same; false, and nothing appended, when the value is Null.
    [[nodiscard]] bool AppendUnlessNull(std::string& key, const Node& node, RowContext& row);

 private:
    Text buffer_;
};

}  // namespace quardele::sql
