#include <algorithm>

#include "rows/row_set_data.h"
#include "sql_error.h"

namespace quardele::sql {
namespace {

/// Rows are found so many at a time.
constexpr std::size_t kStep = 16;

}  // namespace

RowSet::Data::Data(std::shared_ptr<const Query> ofQuery, const SelectPlan& ofPlan, ResultRows found)
    : query(std::move(ofQuery)),
      plan(ofPlan),
      rows(std::move(found)),
      context_(plan.tables),
      unique_(plan.tables.size()) {}

RowSet::Data::Data(std::shared_ptr<const Query> ofQuery, const SelectPlan& ofPlan,
                   std::unique_ptr<PendingRows> rest)
    : Data(std::move(ofQuery), ofPlan,
           ResultRows{.size = 0, .keys = {{}}, .values = {}, .kept = {}, .marks = RowMarks(ofPlan.tables)}) {
    pending_ = std::move(rest);
}

void RowSet::Data::Find(std::size_t wanted) {
    if (pending_ != nullptr && rows.size < wanted) {
        const std::size_t whole = wanted > SIZE_MAX - kStep ? wanted : (wanted + kStep - 1) / kStep * kStep;
        if (!pending_->Find(whole, rows)) {
            pending_.reset();
        }
    }
}

RowContext& RowSet::Data::At(std::size_t row) {
    if (!Has(row)) {
        throw basic::RuntimeError(error::kNoCurrentRecord);
    }
    if (current_ == row) {
        return context_;
    }
    for (std::size_t source = 0; source < rows.keys.size(); ++source) {
        const jet::Row* kept = rows.kept.Find(row, source);
        if (kept != nullptr && rows.keys[source][row] == kept->Id()) {
            context_.SetRow(source, *kept);
        } else {
            SetPart(row, source);
        }
    }
    if (!plan.IsKeyed()) {
        const std::size_t width = plan.columns.size();
        context_.SetResults(std::span(rows.values).subspan(row * width, width));
    }
    current_ = row;
    return context_;
}

void RowSet::Data::SetPart(std::size_t row, std::size_t source) {
    const jet::RowId key = rows.keys[source][row];
    context_.SetKey(source, key);
    const bool lacksMark = rows.marks.Lacks(row, source);
    if (key == kNoRow || key == kDeletedRow || !(lacksMark || rows.marks.Asks(row, source))) {
        return;
    }
    auto now = plan.tables[source]->Fetch(key);
    if (!now) {
        return;
    }
    if (lacksMark) {
        rows.marks.Set(row, source, &*now);
    } else if (!rows.marks.Fits(row, source, *now)) {
        context_.SetKey(source, kDeletedRow);
        return;
    }
    context_.SetRow(source, std::move(*now));
}

void RowSet::Data::Remark(std::size_t row, std::size_t source) {
    const jet::RowId key = rows.keys[source][row];
    const auto now = key == kNoRow || key == kDeletedRow ? std::nullopt : plan.tables[source]->Fetch(key);
    rows.marks.Set(row, source, now ? &*now : nullptr);
}

void RowSet::Data::Forget(std::size_t row) {
    if (current_ == row) {
        current_.reset();
    }
    rows.kept.Forget(row);
    context_.ForgetSubqueries();
    if (!findIndexes.empty() && plan.IsKeyed()) {
        forgotten.insert(row);
    }
}

void RowSet::Data::ForgetAll() {
    if (plan.IsKeyed()) {
        current_.reset();
        rows.kept.Clear();
        context_.ForgetSubqueries();
        findIndexes.clear();
        forgotten.clear();
    }
}

std::size_t RowSet::Data::Append(std::span<const std::optional<jet::RowId>> keys) {
    FindAll();
    for (std::size_t source = 0; source < rows.keys.size(); ++source) {
        rows.keys[source].push_back(keys[source].value_or(kNoRow));
        unique_[source].reset();
    }
    const std::size_t row = rows.size++;
    for (std::size_t source = 0; source < rows.keys.size(); ++source) {
        Remark(row, source);
    }
    if (!findIndexes.empty()) {
        forgotten.insert(row);
    }
    return row;
}

void RowSet::Data::Replace(std::size_t row, std::span<const std::optional<jet::RowId>> keys) {
    for (std::size_t source = 0; source < rows.keys.size(); ++source) {
        rows.keys[source][row] = keys[source].value_or(kNoRow);
        Remark(row, source);
        unique_[source].reset();
    }
    Forget(row);
}

void RowSet::Data::MarkDeleted(std::size_t row, std::size_t source) {
    rows.keys[source][row] = kDeletedRow;
    Forget(row);
}

bool RowSet::Data::IsUnique(std::size_t source) {
    std::optional<bool>& known = unique_[source];
    if (!known) {
        FindAll();
        std::vector<jet::RowId> ids = rows.keys[source];
        std::erase_if(ids, [](jet::RowId id) { return id == kNoRow || id == kDeletedRow; });
        std::sort(ids.begin(), ids.end());
        known = std::adjacent_find(ids.begin(), ids.end()) == ids.end();
    }
    return *known;
}

std::size_t RowSet::Size() const {
    return Found(SIZE_MAX);
}

std::size_t RowSet::Found(std::size_t wanted) const {
    if (!data_) {
        return 0;
    }
    data_->Find(wanted);
    return data_->rows.size;
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
    if (!HasKeys() || source >= data_->rows.keys.size() || !data_->Has(row)) {
        return std::nullopt;
    }
    const jet::RowId key = data_->At(row).KeyOf(source);
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

void RowSet::Replace(std::size_t row, std::span<const std::optional<jet::RowId>> keys) {
    data_->Replace(row, keys);
}

void RowSet::TakeKeyOf(const jet::Table& table, jet::RowId key) {
    if (!HasKeys()) {
        return;
    }
    for (std::size_t source = 0; source < data_->rows.keys.size(); ++source) {
        if (data_->plan.tables[source].get() != &table) {
            continue;
        }
        const std::vector<jet::RowId>& keys = data_->rows.keys[source];
        for (std::size_t row = 0; row < keys.size(); ++row) {
            if (keys[row] == key) {
                data_->Remark(row, source);
            }
        }
    }
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
