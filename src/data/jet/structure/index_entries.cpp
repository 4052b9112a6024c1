#include "structure/index_entries.h"

#include <algorithm>

#include "indexes/index_page.h"

namespace quardele::jet {

void IndexEntries::Add(std::span<const std::uint8_t> key, RowId row) {
    places_.push_back({.start = bytes_.size(), .length = key.size() + kEntryRow});
    bytes_.insert(bytes_.end(), key.begin(), key.end());
    for (const unsigned shift : {16u, 8u, 0u}) {
        bytes_.push_back(static_cast<std::uint8_t>(row.page >> shift & 0xFF));
    }
    bytes_.push_back(row.slot);
}

void IndexEntries::Sort() {
    const std::span<const std::uint8_t> bytes = bytes_;
    std::sort(places_.begin(), places_.end(), [bytes](const Place& left, const Place& right) {
        return CompareBytes(bytes.subspan(left.start, left.length),
                            bytes.subspan(right.start, right.length)) < 0;
    });
}

std::span<const std::uint8_t> IndexEntries::KeyAt(std::size_t position) const {
    const auto entry = At(position);
    return entry.first(entry.size() - kEntryRow);
}

std::size_t IndexEntries::DistinctKeys() const {
    std::size_t count = 0;
    for (std::size_t i = 0; i < Size(); ++i) {
        count += i == 0 || CompareBytes(KeyAt(i - 1), KeyAt(i)) != 0 ? 1 : 0;
    }
    return count;
}

}  // namespace quardele::jet
