#include "rows/row_marks.h"

#include <algorithm>

#include <jet/database.h>

namespace quardele::sql {

RowMarks::RowMarks(const Tables& tables) : tables_(tables), parts_(tables.size()), state_(State()) {
    for (std::size_t source = 0; source < tables_.size(); ++source) {
        if (tables_[source] == nullptr) {
            continue;
        }
        jet::KeyMarks keys(*tables_[source]);
        if (keys.Index()) {
            parts_[source].emplace(Part{keys, {}});
        }
    }
}

std::uint64_t RowMarks::State() const {
    std::uint64_t state = 0;
    for (const auto& table : tables_) {
        state += table == nullptr ? 0 : table->Home().StateNumber();
    }
    return state;
}

void RowMarks::Add(const RowContext& row) {
    for (std::size_t source = 0; source < parts_.size(); ++source) {
        if (auto& part = parts_[source]) {
            part->marks.push_back(MarkOf(source, row, part->keys));
        }
    }
}

/// A list of one table in the order of an index is not worth reading for it; what a join has found is read
/// soon.
std::uint32_t RowMarks::MarkOf(std::size_t source, const RowContext& row, const jet::KeyMarks& keys) const {
    if (const jet::Row* read = row.ReadRow(source)) {
        return keys.Of(*read);
    }
    if (parts_.size() == 1 || row.KeyOf(source) == kNoRow) {
        return jet::KeyMarks::kNone;
    }
    const auto stored = tables_[source]->Fetch(row.KeyOf(source));
    return stored ? keys.Of(*stored) : jet::KeyMarks::kNone;
}

void RowMarks::Add(std::uint32_t mark) {
    if (!parts_.empty() && parts_.front()) {
        parts_.front()->marks.push_back(mark);
    }
}

void RowMarks::Rearrange(const std::vector<std::uint32_t>& order) {
    for (auto& part : parts_) {
        if (!part) {
            continue;
        }
        std::vector<std::uint32_t> arranged;
        arranged.reserve(order.size());
        for (const std::uint32_t row : order) {
            arranged.push_back(part->marks[row]);
        }
        part->marks = std::move(arranged);
    }
}

void RowMarks::Resize(std::size_t rows) {
    for (auto& part : parts_) {
        if (part) {
            part->marks.resize(rows, jet::KeyMarks::kNone);
        }
    }
}

const jet::KeyMarks* RowMarks::OfSingleTable() const {
    return parts_.size() == 1 && parts_.front() ? &parts_.front()->keys : nullptr;
}

std::uint32_t RowMarks::MarkOf(std::size_t row) const {
    return OfSingleTable() == nullptr ? jet::KeyMarks::kNone : parts_.front()->marks[row];
}

bool RowMarks::Asks(std::size_t row, std::size_t source) const {
    return source < parts_.size() && parts_[source] && row < parts_[source]->marks.size() &&
           !Lacks(row, source) && State() != state_;
}

bool RowMarks::Lacks(std::size_t row, std::size_t source) const {
    return source < parts_.size() && parts_[source] && row < parts_[source]->marks.size() &&
           parts_[source]->marks[row] == jet::KeyMarks::kNone;
}

bool RowMarks::Fits(std::size_t row, std::size_t source, const jet::Row& now) const {
    const std::uint32_t mark = parts_[source]->keys.Of(now);
    return mark == jet::KeyMarks::kNone || mark == parts_[source]->marks[row];
}

void RowMarks::Set(std::size_t row, std::size_t source, const jet::Row* now) {
    if (source < parts_.size() && parts_[source]) {
        Part& part = *parts_[source];
        part.marks.resize(std::max(part.marks.size(), row + 1), jet::KeyMarks::kNone);
        part.marks[row] = now == nullptr ? jet::KeyMarks::kNone : part.keys.Of(*now);
    }
}

}  // namespace quardele::sql
