#include "rows/kept_rows.h"

#include <utility>

#include <jet/database.h>

namespace quardele::sql {
namespace {

constexpr std::size_t kMostBytes = std::size_t{24} << 20;

}  // namespace

KeptRows::KeptRows(const Tables& tables) : tables_(tables), state_(State()), rows_(tables.size()) {}

std::uint64_t KeptRows::State() const {
    std::uint64_t state = 0;
    for (const auto& table : tables_) {
        state += table->Home().StateNumber();
    }
    return state;
}

void KeptRows::Add(const RowContext& row) {
    for (std::size_t source = 0; source < rows_.size(); ++source) {
        const jet::Row* read = row.ReadRow(source);
        rows_[source].push_back(read == nullptr ? std::nullopt : std::optional(copies_.Copy(*read)));
    }
    if (copies_.Size() > kMostBytes) {
        Clear();
    }
}

void KeptRows::Rearrange(const std::vector<std::uint32_t>& order) {
    for (Parts& parts : rows_) {
        Parts arranged;
        arranged.reserve(order.size());
        for (const std::uint32_t row : order) {
            arranged.push_back(std::move(parts[row]));
        }
        parts = std::move(arranged);
    }
}

const jet::Row* KeptRows::Find(std::size_t row, std::size_t source) const {
    const bool known = source < rows_.size() && row < rows_[source].size() && rows_[source][row];
    return known && State() == state_ ? &*rows_[source][row] : nullptr;
}

void KeptRows::Forget(std::size_t row) {
    for (Parts& parts : rows_) {
        if (row < parts.size()) {
            parts[row].reset();
        }
    }
}

void KeptRows::Clear() {
    rows_.clear();
    copies_ = {};
}

}  // namespace quardele::sql
