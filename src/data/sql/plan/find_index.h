// The rows of a result by the value of one expression.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "expressions/node.h"
#include "rows/key_table.h"

namespace quardele::sql {

/// Made at the second search for the same expression: one search alone is served faster by looking at the
/// rows themselves.
class FindIndex {
 public:
    /// Counts a search; true when the index should stand for it.
    bool IsWorthwhile() { return ++searches_ > 1; }
    [[nodiscard]] bool IsBuilt() const { return built_; }

    void Add(const Variant& value, std::size_t row);
    void Finish() { built_ = true; }

    /// The rows with a value, in ascending order.
    [[nodiscard]] std::vector<std::size_t> RowsWith(const Variant& value) const;

 private:
    KeyedRows rows_;
    int searches_ = 0;
    bool built_ = false;
};

}  // namespace quardele::sql
