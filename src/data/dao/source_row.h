// One table's part of a record while it is being changed.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <dao/field.h>
#include <jet/table.h>

#include "row_hold.h"

namespace quardele::dao {

/// A stored row with its values at the moment when it was read, kept from others while it may be changed.
class SourceRow {
 public:
    /// Reads a row that stays as it is. Throws RuntimeError 3167 when it is gone.
    SourceRow(std::shared_ptr<jet::Table> table, jet::RowId id);
    /// Locks a row for its change, then reads it. Throws as RowHold.
    SourceRow(const std::shared_ptr<OpenFile>& file, std::shared_ptr<jet::Table> table, jet::RowId id);

    [[nodiscard]] jet::RowId Id() const { return id_; }
    [[nodiscard]] const Variant& Value(int column) const { return values_[static_cast<std::size_t>(column)]; }
    /// Throws RuntimeError 3197 when the values are not those of the same row as it was read before.
    void RequireSame(const SourceRow& before) const;
    /// Throws RuntimeError 3197 when the stored values are no longer those that were read, 3167 when the row
    /// is gone: a statement of this program may have changed it in spite of the lock.
    void RequireUnchanged() const;
    void Write(std::span<const jet::ColumnChange> changes) const { table_->Update(id_, changes); }

 private:
    std::unique_ptr<RowHold> hold_;  ///< null when the row is not to be changed
    std::shared_ptr<jet::Table> table_;
    jet::RowId id_;
    std::vector<Variant> values_;
};

}  // namespace quardele::dao
