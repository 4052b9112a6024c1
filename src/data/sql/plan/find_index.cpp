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

std::optional<std::size_t> FindIndex::Find(const Variant& value, std::size_t from) {
    key_.clear();
    AppendSortKey(key_, value);
    const bool goesOn = last_.entry != KeyedRows::kEnd && last_.key == key_ && rows_.Row(last_.entry) < from;
    std::uint32_t entry = goesOn ? last_.entry : rows_.First(key_);
    while (entry != KeyedRows::kEnd && rows_.Row(entry) < from) {
        entry = rows_.Next(entry);
    }
    last_ = {key_, entry};
    return entry == KeyedRows::kEnd ? std::nullopt : std::optional<std::size_t>(rows_.Row(entry));
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
