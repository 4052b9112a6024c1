#include "row_hold.h"

#include <utility>

#include <basic/runtime_error.h>

namespace quardele::dao {

RowHold::RowHold(std::shared_ptr<OpenFile> file, std::shared_ptr<jet::Table> table, jet::RowId row)
    : file_(std::move(file)), table_(std::move(table)), row_(row) {
    // One thread runs the whole program: whoever has the row cannot give it back while we wait.
    if (!file_->Take(*table_, row_)) {
        throw basic::RuntimeError(basic::error::kLockedHere);
    }
    try {
        lock_ = table_->Lock(row_);
    } catch (const basic::RuntimeError&) {
        file_->Release(*table_, row_);
        throw;
    }
}

RowHold::~RowHold() {
    file_->Release(*table_, row_);
}

}  // namespace quardele::dao
