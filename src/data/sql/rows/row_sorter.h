// Puts rows in order by keys that are made once.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "syntax/ast.h"

namespace quardele::sql {

class RowSorter {
 public:
    /// With `top` rows that cannot be among its rows are refused as they come.
    explicit RowSorter(const std::optional<Top>& top = {});

    /// The key of the next row, made by AppendSortKey; false when the row is not wanted and does not count.
    bool Add(std::string_view key);
    /// Whether a row whose key begins so comes behind those of as many rows as are wanted.
    [[nodiscard]] bool IsBeyondTop(std::string_view start) const {
        return most_ > 0 && first_.size() == most_ && start > BytesOf(first_.front()).substr(0, start.size());
    }
    [[nodiscard]] std::size_t Size() const { return keys_.size(); }

    /// The rows by their keys, equal ones in the order in which they came. With TOP only the first of them,
    /// and those that are equal to the last one.
    [[nodiscard]] std::vector<std::uint32_t> Order() const;

 private:
    struct Key {
        std::uint64_t start;  ///< the first eight bytes as a number, which decides most comparisons
        std::size_t offset;
        std::size_t length;
    };

    [[nodiscard]] std::string_view BytesOf(std::uint32_t row) const;
    [[nodiscard]] bool Precedes(std::uint32_t left, std::uint32_t right) const;
    void KeepAmongFirst(std::uint32_t row);

    std::optional<Top> top_;
    std::size_t most_;                  ///< rows that are wanted, as far as that is known before all came
    std::vector<std::uint32_t> first_;  ///< the first rows so far, a heap with the last of them on top
    std::string bytes_;
    std::vector<Key> keys_;
};

/// How many of `count` rows TOP asks for.
[[nodiscard]] std::size_t RowsWanted(const std::optional<Top>& top, std::size_t count);

}  // namespace quardele::sql
