#include "rows/row_context.h"

#include <utility>

#include "rows/subquery_results.h"
#include "sql_error.h"

namespace quardele::sql {

RowContext::RowContext(const Tables& tables, RunEnvironment environment)
    : environment_(std::move(environment)) {
    slots_.reserve(tables.size());
    for (const auto& table : tables) {
        slots_.push_back({table.get(), kNoRow, std::nullopt, nullptr, 0});
    }
}

void RowContext::SetRow(std::size_t source, jet::Row row) {
    slots_[source].key = row.Id();
    slots_[source].row = std::move(row);
}

bool RowContext::Advance(std::size_t source, jet::RowScan& scan) {
    Slot& slot = slots_[source];
    if (!slot.row) {
        slot.row = scan.Next();
    } else if (!scan.Next(*slot.row)) {
        slot.row.reset();
    }
    slot.key = slot.row ? slot.row->Id() : kNoRow;
    return slot.row.has_value();
}

void RowContext::SetKey(std::size_t source, jet::RowId key) {
    slots_[source].key = key;
    slots_[source].row.reset();
}

const jet::Row* RowContext::RowOf(std::size_t source) {
    Slot& slot = slots_[source];
    if (slot.key == kNoRow) {
        return nullptr;
    }
    if (!slot.row) {
        slot.row = slot.key == kDeletedRow ? std::nullopt : slot.table->Fetch(slot.key);
        if (!slot.row) {
            throw basic::RuntimeError(error::kRecordDeleted);
        }
    }
    return &*slot.row;
}

void RowContext::SetQueryRows(std::size_t source, std::shared_ptr<const std::vector<Variant>> values,
                              std::size_t width) {
    slots_[source].values = std::move(values);
    slots_[source].width = width;
}

const Variant& RowContext::QueryValue(std::size_t source, std::size_t column) const {
    static const Variant kNull = basic::Null();
    const Slot& slot = slots_[source];
    return slot.key == kNoRow ? kNull : (*slot.values)[(slot.key.page - 1) * slot.width + column];
}

const std::shared_ptr<SubqueryResults>& RowContext::Subqueries() {
    if (!environment_.subqueries) {
        environment_.subqueries = std::make_shared<SubqueryResults>();
    }
    return environment_.subqueries;
}

const RunEnvironment& RowContext::Environment() {
    static_cast<void>(Subqueries());
    return environment_;
}

}  // namespace quardele::sql
