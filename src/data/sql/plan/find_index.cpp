#include "plan/find_index.h"

#include "rows/sort_key.h"

namespace quardele::sql {

void FindIndex::Add(const Variant& value, std::size_t row) {
    std::string key;
    AppendSortKey(key, value);
    rows_.Add(key, static_cast<std::uint32_t>(row));
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
