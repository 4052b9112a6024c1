#include "rows/row_context.h"

#include <utility>

#include "sql_error.h"

namespace quardele::sql {

RowContext::RowContext(const Tables& tables) {
    slots_.reserve(tables.size());
    for (const auto& table : tables) {
        slots_.push_back({table.get(), kNoRow, std::nullopt});
    }
}

void RowContext::SetRow(std::size_t source, jet::Row row) {
    slots_[source].key = row.Id();
    slots_[source].row = std::move(row);
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

}  // namespace quardele::sql
