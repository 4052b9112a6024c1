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
    /// The key of the next row, made by AppendSortKey.
    void Add(std::string_view key);
    [[nodiscard]] std::size_t Size() const { return keys_.size(); }

    /// The rows by their keys, equal ones in the order in which they came. With `top` only the first of
    /// them, and those that are equal to the last one.
    [[nodiscard]] std::vector<std::uint32_t> Order(const std::optional<Top>& top) const;

 private:
    struct Key {
        std::uint64_t start;  ///< the first eight bytes as a number, which decides most comparisons
        std::size_t offset;
        std::size_t length;
    };

    [[nodiscard]] std::string_view BytesOf(std::uint32_t row) const;
    [[nodiscard]] bool Precedes(std::uint32_t left, std::uint32_t right) const;

    std::string bytes_;
    std::vector<Key> keys_;
};

/// How many of `count` rows TOP asks for.
[[nodiscard]] std::size_t RowsWanted(const std::optional<Top>& top, std::size_t count);

}  // namespace quardele::sql
