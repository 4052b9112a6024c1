#include "rows/row_sorter.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace quardele::sql {
namespace {

constexpr std::size_t kStart = 8;
/// From so many rows on a heap saves less than it takes.
constexpr double kLargestHeap = 10000;

}  // namespace

RowSorter::RowSorter(const std::optional<Top>& top)
    : top_(top),
      most_(top && !top->percent && top->count < kLargestHeap ? static_cast<std::size_t>(top->count) : 0) {}

bool RowSorter::Add(std::string_view key) {
    if (IsBeyondTop(key)) {
        return false;
    }
    std::uint64_t start = 0;
    for (std::size_t i = 0; i < kStart; ++i) {
        start = start << 8 | (i < key.size() ? static_cast<std::uint8_t>(key[i]) : 0);
    }
    keys_.push_back({start, bytes_.size(), key.size()});
    bytes_ += key;
    if (most_ > 0) {
        KeepAmongFirst(static_cast<std::uint32_t>(keys_.size() - 1));
    }
    return true;
}

void RowSorter::KeepAmongFirst(std::uint32_t row) {
    const auto precedes = [this](std::uint32_t left, std::uint32_t right) { return Precedes(left, right); };
    first_.push_back(row);
    std::push_heap(first_.begin(), first_.end(), precedes);
    if (first_.size() > most_) {
        std::pop_heap(first_.begin(), first_.end(), precedes);
        first_.pop_back();
    }
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

std::vector<std::uint32_t> RowSorter::Order() const {
    std::vector<std::uint32_t> rows(keys_.size());
    std::iota(rows.begin(), rows.end(), 0);
    const auto precedes = [this](std::uint32_t left, std::uint32_t right) { return Precedes(left, right); };
    const std::size_t wanted = RowsWanted(top_, rows.size());
    if (wanted == 0 || wanted == rows.size()) {
        // Groups come in their order already.
        if (!std::is_sorted(rows.begin(), rows.end(), precedes)) {
            std::sort(rows.begin(), rows.end(), precedes);
        }
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
