// The rows of a result by the value of one expression.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "expressions/node.h"
#include "rows/key_table.h"
#include "rows/node_key.h"

namespace quardele::sql {

/// Made at the first search for an expression, which looks at every row: from then on a search is a look into
/// a hash.
class FindIndex {
 public:
    [[nodiscard]] bool IsBuilt() const { return built_; }

    /// Takes in a row with the value that the expression has in it; rows come in ascending order.
    void Add(const Node& expression, RowContext& row, std::size_t number);
    void Finish() { built_ = true; }

    /// The rows with a value, in ascending order.
    [[nodiscard]] std::vector<std::size_t> RowsWith(const Variant& value) const;

 private:
    KeyedRows rows_;
    NodeKeys keys_;
    std::string key_;
    bool built_ = false;
};

}  // namespace quardele::sql
