#include <algorithm>

#include "rows/row_set_data.h"
#include "sql_error.h"

namespace quardele::sql {

RowSet::Data::Data(std::shared_ptr<const Query> ofQuery, const SelectPlan& ofPlan, ResultRows found)
    : query(std::move(ofQuery)),
      plan(ofPlan),
      rows(std::move(found)),
      context_(plan.tables),
      unique_(plan.tables.size()) {}

RowContext& RowSet::Data::At(std::size_t row) {
    if (row >= rows.size) {
        throw basic::RuntimeError(error::kNoCurrentRecord);
    }
    if (current_ == row) {
        return context_;
    }
    for (std::size_t source = 0; source < rows.keys.size(); ++source) {
        context_.SetKey(source, rows.keys[source][row]);
    }
    if (!plan.IsKeyed()) {
        const std::size_t width = plan.columns.size();
        context_.SetResults(std::span(rows.values).subspan(row * width, width));
    }
    current_ = row;
    return context_;
}

void RowSet::Data::Forget(std::size_t row) {
    if (current_ == row) {
        current_.reset();
    }
    context_.ForgetSubqueries();
    if (!findIndexes.empty() && plan.IsKeyed()) {
        forgotten.insert(row);
    }
}

void RowSet::Data::ForgetAll() {
    if (plan.IsKeyed()) {
        current_.reset();
        context_.ForgetSubqueries();
        findIndexes.clear();
        forgotten.clear();
    }
}

std::size_t RowSet::Data::Append(std::span<const std::optional<jet::RowId>> keys) {
    for (std::size_t source = 0; source < rows.keys.size(); ++source) {
        rows.keys[source].push_back(keys[source].value_or(kNoRow));
        unique_[source].reset();
    }
    const std::size_t row = rows.size++;
    if (!findIndexes.empty()) {
        forgotten.insert(row);
    }
    return row;
}

void RowSet::Data::MarkDeleted(std::size_t row, std::size_t source) {
    rows.keys[source][row] = kDeletedRow;
    Forget(row);
}

bool RowSet::Data::IsUnique(std::size_t source) {
    std::optional<bool>& known = unique_[source];
    if (!known) {
        std::vector<jet::RowId> ids = rows.keys[source];
        std::erase_if(ids, [](jet::RowId id) { return id == kNoRow || id == kDeletedRow; });
        std::sort(ids.begin(), ids.end());
        known = std::adjacent_find(ids.begin(), ids.end()) == ids.end();
    }
    return *known;
}

std::size_t RowSet::Size() const {
    return data_ ? data_->rows.size : 0;
}

Variant RowSet::Value(std::size_t row, int column) const {
    if (!data_) {
        throw basic::RuntimeError(error::kNoCurrentRecord);
    }
    RowContext& context = data_->At(row);
    const auto position = static_cast<std::size_t>(column);
    if (position >= data_->plan.columns.size()) {
        throw basic::RuntimeError(error::kNoSuchField);
    }
    return data_->plan.IsKeyed() ? data_->plan.itemNodes[position]->Value(context) : context.Result(position);
}

std::optional<jet::RowId> RowSet::Key(std::size_t row, std::size_t source) const {
    if (!HasKeys() || source >= data_->rows.keys.size() || row >= data_->rows.size) {
        return std::nullopt;
    }
    const jet::RowId key = data_->rows.keys[source][row];
    if (key == kDeletedRow) {
        throw basic::RuntimeError(error::kRecordDeleted);
    }
    return key == kNoRow ? std::nullopt : std::optional(key);
}

bool RowSet::HasKeys() const {
    return data_ && data_->plan.IsKeyed();
}

bool RowSet::IsUpdatable(int column) const {
    const auto position = static_cast<std::size_t>(column);
    if (!HasKeys() || position >= data_->plan.columns.size()) {
        return false;
    }
    const auto source = data_->plan.columns[position].source;
    return source && (data_->plan.tables.size() == 1 || data_->IsUnique(*source));
}

std::size_t RowSet::Append(std::span<const std::optional<jet::RowId>> keys) {
    return data_->Append(keys);
}

void RowSet::MarkDeleted(std::size_t row, std::size_t source) {
    data_->MarkDeleted(row, source);
}

void RowSet::Forget(std::size_t row) {
    if (data_) {
        data_->Forget(row);
    }
}

void RowSet::ForgetAll() {
    if (data_) {
        data_->ForgetAll();
    }
}

}  // namespace quardele::sql
