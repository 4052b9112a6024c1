#include "rows/row_sorter.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace quardele::sql {
namespace {

constexpr std::size_t kStart = 8;

}  // namespace

void RowSorter::Add(std::string_view key) {
    std::uint64_t start = 0;
    for (std::size_t i = 0; i < kStart; ++i) {
        start = start << 8 | (i < key.size() ? static_cast<std::uint8_t>(key[i]) : 0);
    }
    keys_.push_back({start, bytes_.size(), key.size()});
    bytes_ += key;
}

std::string_view RowSorter::BytesOf(std::uint32_t row) const {
    return std::string_view(bytes_).substr(keys_[row].offset, keys_[row].length);
}

bool RowSorter::Precedes(std::uint32_t left, std::uint32_t right) const {
    if (keys_[left].start != keys_[right].start) {
        return keys_[left].start < keys_[right].start;
    }
    const int order = BytesOf(left).compare(BytesOf(right));
    return order != 0 ? order < 0 : left < right;
}

std::vector<std::uint32_t> RowSorter::Order(const std::optional<Top>& top) const {
    std::vector<std::uint32_t> rows(keys_.size());
    std::iota(rows.begin(), rows.end(), 0);
    const auto precedes = [this](std::uint32_t left, std::uint32_t right) { return Precedes(left, right); };
    const std::size_t wanted = RowsWanted(top, rows.size());
    if (wanted == 0 || wanted == rows.size()) {
        std::sort(rows.begin(), rows.end(), precedes);
        rows.resize(wanted);
        return rows;
    }
    const auto middle = rows.begin() + static_cast<std::ptrdiff_t>(wanted);
    std::partial_sort(rows.begin(), middle, rows.end(), precedes);
    const std::string_view last = BytesOf(rows[wanted - 1]);
    const auto end =
        std::partition(middle, rows.end(), [&](std::uint32_t row) { return BytesOf(row) == last; });
    std::sort(middle, end);
    rows.erase(end, rows.end());
    return rows;
}

std::size_t RowsWanted(const std::optional<Top>& top, std::size_t count) {
    if (!top) {
        return count;
    }
    const double wanted =
        top->percent ? std::ceil(static_cast<double>(count) * top->count / 100) : top->count;
    return wanted >= static_cast<double>(count) ? count : static_cast<std::size_t>(wanted);
}

}  // namespace quardele::sql
