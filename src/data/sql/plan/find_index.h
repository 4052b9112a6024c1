// The rows of a result by the value of one expression.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
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

    /// The first row at or behind `from` with a value, empty when there is none. A search that goes on behind
    /// the row that it found last does not begin anew.
    [[nodiscard]] std::optional<std::size_t> Find(const Variant& value, std::size_t from);
    /// The rows with a value, in ascending order.
    [[nodiscard]] std::vector<std::size_t> RowsWith(const Variant& value) const;

 private:
    /// A row that was found.
    struct Place {
        std::string key;
        std::uint32_t entry = KeyedRows::kEnd;
    };

    KeyedRows rows_;
    NodeKeys keys_;
    std::string key_;
    Place last_;
    bool built_ = false;
};

}  // namespace quardele::sql
