#include "row_order.h"

#include <algorithm>
#include <iterator>

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
    if (!ExtendUntil([row](jet::RowId last) { return last > row; })) {
        return {};
    }
    return *std::upper_bound(rows_.begin(), rows_.end(), row);
}

std::optional<jet::RowId> PhysicalOrder::Before(jet::RowId row) {
    ExtendUntil([row](jet::RowId last) { return last >= row; });
    const auto found = std::lower_bound(rows_.begin(), rows_.end(), row);
    return found == rows_.begin() ? std::nullopt : std::optional(*std::prev(found));
}

void PhysicalOrder::Restart() {
    scan_ = table_.Scan();
    rows_.clear();
    changed_ = false;
}

bool PhysicalOrder::Extend() {
    const auto next = scan_.NextId();
    if (next) {
        rows_.push_back(*next);
    }
    return next.has_value();
}

template <class Predicate>
bool PhysicalOrder::ExtendUntil(Predicate isEnough) {
    while (rows_.empty() || !isEnough(rows_.back())) {
        if (Extend()) {
            continue;
        }
        if (!changed_) {
            return false;
        }
        Restart();
    }
    return true;
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
