// The numbers that the first page of a table's definition keeps of its rows.
#pragma once

#include "commit/transaction.h"

namespace quardele::jet {

class TableCounters {
 public:
    TableCounters(Transaction& pages, std::uint32_t table) : pages_(pages), table_(table) {}

    void AddRows(int change);
    /// The number that the next row gets in an AutoNumber column.
    [[nodiscard]] std::int32_t NextAutoNumber() const;
    /// Notes that a number was given: later ones are larger.
    void UseAutoNumber(std::int32_t number);
    /// The number of distinct keys in an index, which the original engine chooses indexes by.
    void AddDistinctKeys(std::size_t realIndex, int change);

 private:
    [[nodiscard]] std::uint32_t At(std::size_t place) const { return pages_.Read(table_)->View().U32(place); }
    void Store(std::size_t place, std::uint32_t value);
    void Add(std::size_t place, int change);

    Transaction& pages_;
    std::uint32_t table_;
};

}  // namespace quardele::jet
