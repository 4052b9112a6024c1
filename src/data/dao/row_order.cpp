#include "row_order.h"

#include <algorithm>

namespace quardele::dao {

PhysicalOrder::PhysicalOrder(const jet::Table& table) : table_(table), scan_(table.Scan()) {}

std::optional<jet::RowId> PhysicalOrder::First() {
    Restart();
    return Extend() ? std::optional(rows_.front()) : std::nullopt;
}

std::optional<jet::RowId> PhysicalOrder::Last() {
    Restart();
    while (Extend()) {
    }
    return rows_.empty() ? std::nullopt : std::optional(rows_.back());
}

std::optional<jet::RowId> PhysicalOrder::Behind(jet::RowId row) {
    const auto position = PositionOf(row);
    if (!position || (*position + 1 == rows_.size() && !Extend())) {
        return {};
    }
    at_ = *position + 1;
    return rows_[at_];
}

std::optional<jet::RowId> PhysicalOrder::Before(jet::RowId row) {
    const auto position = PositionOf(row);
    if (!position || *position == 0) {
        return {};
    }
    at_ = *position - 1;
    return rows_[at_];
}

void PhysicalOrder::Restart() {
    scan_ = table_.Scan();
    rows_.clear();
    at_ = 0;
}

bool PhysicalOrder::Extend() {
    const auto next = scan_.NextId();
    if (next) {
        rows_.push_back(*next);
    }
    return next.has_value();
}

std::optional<std::size_t> PhysicalOrder::PositionOf(jet::RowId row) {
    if (at_ < rows_.size() && rows_[at_] == row) {
        return at_;
    }
    const auto found = std::find(rows_.begin(), rows_.end(), row);
    if (found != rows_.end()) {
        return static_cast<std::size_t>(found - rows_.begin());
    }
    while (Extend()) {
        if (rows_.back() == row) {
            return rows_.size() - 1;
        }
    }
    return {};
}

IndexOrder::IndexOrder(const jet::Table& table, int index)
    : table_(table), index_(index), cursor_(table.OpenIndex(index)) {}

std::optional<jet::RowId> IndexOrder::First() {
    return Arrived(cursor_.First());
}

std::optional<jet::RowId> IndexOrder::Last() {
    return Arrived(cursor_.Last());
}

std::optional<jet::RowId> IndexOrder::Behind(jet::RowId row) {
    GoTo(row);
    return Arrived(cursor_.Next());
}

std::optional<jet::RowId> IndexOrder::Before(jet::RowId row) {
    GoTo(row);
    return Arrived(cursor_.Previous());
}

std::optional<jet::RowId> IndexOrder::Seek(jet::SeekOperator op, std::span<const Variant> values) {
    return Arrived(cursor_.Seek(op, values));
}

const jet::Index& IndexOrder::Definition() const {
    return table_.Indexes()[static_cast<std::size_t>(index_)];
}

std::optional<jet::RowId> IndexOrder::Arrived(bool found) {
    settled_ = found;
    return found ? std::optional(cursor_.Current()) : std::nullopt;
}

void IndexOrder::GoTo(jet::RowId row) {
    if (settled_ && cursor_.Current() == row) {
        return;
    }
    if (const auto stored = table_.Fetch(row)) {
        settled_ = Find(*stored);
    }
}

bool IndexOrder::Find(const jet::Row& row) {
    std::vector<Variant> key;
    for (const jet::IndexColumn& part : Definition().columns) {
        key.push_back(row.Value(part.column));
    }
    bool found = cursor_.Seek(jet::SeekOperator::Equal, key);
    while (found && cursor_.Current() != row.Id()) {
        found = cursor_.Next() && cursor_.Matches(key);
    }
    return found;
}

}  // namespace quardele::dao
