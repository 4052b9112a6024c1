// Writes many rows into a table.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <jet/database.h>

namespace quardele::workshop {

/// Rows of one table, in steps of some ten thousand so that memory stays small. One writer at a time for a
/// database.
class RowWriter {
 public:
    RowWriter(std::shared_ptr<jet::Database> database, jet::TextView table);

    /// Adds a row: values for the first columns, in their order; an Empty leaves its column to the engine.
    void Add(std::vector<jet::Variant> values);
    /// Everything is on the disk when it returns.
    void Finish();

 private:
    std::shared_ptr<jet::Database> database_;
    std::shared_ptr<jet::Table> table_;
    std::vector<jet::ColumnChange> row_;
    std::optional<jet::Step> step_;
    int inStep_ = 0;
};

}  // namespace quardele::workshop
