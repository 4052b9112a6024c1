// Numbers that tell a row from another one that has come to lie in its place.
#pragma once

#include <cstdint>
#include <optional>

#include <jet/table.h>

namespace quardele::jet {

/// Where a row was deleted, another one may be written by and by and have its identity. The rows of a table
/// with a primary key, or else another unique index, have a number each, made from the key: rows with
/// different keys hardly ever have the same.
class KeyMarks {
 public:
    /// The table must outlive it.
    explicit KeyMarks(const Table& table);

    /// The number of rows that have none: there is no such index, or a text in the key has units whose order
    /// is not known, so that the entry may hold another key than can be made from the row.
    static constexpr std::uint32_t kNone = 0;
    [[nodiscard]] std::uint32_t Of(const Row& row) const;
    /// Of the row of an entry of an index, without a look at the row; kNone for another index.
    [[nodiscard]] std::uint32_t Of(const IndexCursor& entry, int index) const;
    /// The index that the numbers are made from, as a position in Table::Indexes().
    [[nodiscard]] std::optional<int> Index() const { return index_; }

 private:
    const TableImpl& table_;
    std::optional<int> index_;
};

}  // namespace quardele::jet
