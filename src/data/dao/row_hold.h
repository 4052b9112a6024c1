// The lock of a row that a recordset changes.
#pragma once

#include <memory>

#include <jet/table.h>

#include "open_file.h"

namespace quardele::dao {

/// Keeps a row from all others while it lives: from other recordsets of this program, and through the engine
/// from everybody else.
class RowHold {
 public:
    /// Throws RuntimeError 3188 when another recordset of this program has the row, else as jet::Table::Lock.
    RowHold(std::shared_ptr<OpenFile> file, std::shared_ptr<jet::Table> table, jet::RowId row);
    ~RowHold();
    RowHold(const RowHold&) = delete;
    RowHold& operator=(const RowHold&) = delete;

 private:
    std::shared_ptr<OpenFile> file_;
    std::shared_ptr<jet::Table> table_;
    jet::RowId row_;
    jet::RowLock lock_;
};

}  // namespace quardele::dao
