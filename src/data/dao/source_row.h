// One table's part of a record while it is being changed.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include <dao/field.h>
#include <jet/table.h>

namespace quardele::dao {

/// A stored row with its values at the moment when it was read.
class SourceRow {
 public:
    /// Reads the row. Throws RuntimeError 3167 when it is gone.
    SourceRow(std::shared_ptr<jet::Table> table, jet::RowId id);

    [[nodiscard]] const Variant& Value(int column) const { return values_[static_cast<std::size_t>(column)]; }
    /// Throws RuntimeError 3197 when the stored values are no longer those that were read, 3167 when the row
    /// is gone.
    void RequireUnchanged() const;
    void Write(std::span<const jet::ColumnChange> changes) const { table_->Update(id_, changes); }
    /// Writes back what was read into the columns of a change.
    void Restore(std::span<const jet::ColumnChange> changes) const;

 private:
    std::shared_ptr<jet::Table> table_;
    jet::RowId id_;
    std::vector<Variant> values_;
};

}  // namespace quardele::dao
