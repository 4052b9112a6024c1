#include "plan/find_index.h"

#include "rows/sort_key.h"

namespace quardele::sql {

void FindIndex::Add(const Node& expression, RowContext& row, std::size_t number) {
    key_.clear();
    // Nobody seeks a Null: nothing equals it.
    if (keys_.AppendUnlessNull(key_, expression, row)) {
        rows_.Add(key_, static_cast<std::uint32_t>(number));
    }
}

std::vector<std::size_t> FindIndex::RowsWith(const Variant& value) const {
    std::string key;
    AppendSortKey(key, value);
    std::vector<std::size_t> found;
    for (std::uint32_t entry = rows_.First(key); entry != KeyedRows::kEnd; entry = rows_.Next(entry)) {
        found.push_back(rows_.Row(entry));
    }
    return found;
}

}  // namespace quardele::sql
