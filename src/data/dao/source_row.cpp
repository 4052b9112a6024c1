#include "source_row.h"

#include <optional>
#include <utility>

#include <basic/runtime_error.h>

namespace quardele::dao {
namespace {

std::vector<Variant> ReadValues(const jet::Table& table, jet::RowId id) {
    const std::optional<jet::Row> row = table.Fetch(id);
    if (!row) {
        throw basic::RuntimeError(basic::error::kRecordDeleted);
    }
    std::vector<Variant> values(table.Columns().size());
    for (std::size_t column = 0; column < values.size(); ++column) {
        values[column] = row->Value(static_cast<int>(column));
    }
    return values;
}

}  // namespace

SourceRow::SourceRow(std::shared_ptr<jet::Table> table, jet::RowId id)
    : table_(std::move(table)), id_(id), values_(ReadValues(*table_, id)) {}

SourceRow::SourceRow(const std::shared_ptr<OpenFile>& file, std::shared_ptr<jet::Table> table, jet::RowId id)
    : hold_(std::make_unique<RowHold>(file, table, id)),
      table_(std::move(table)),
      id_(id),
      values_(ReadValues(*table_, id)) {}

void SourceRow::RequireSame(const SourceRow& before) const {
    if (before.values_ != values_) {
        throw basic::RuntimeError(basic::error::kRecordChanged);
    }
}

void SourceRow::RequireUnchanged() const {
    if (ReadValues(*table_, id_) != values_) {
        throw basic::RuntimeError(basic::error::kRecordChanged);
    }
}

}  // namespace quardele::dao
