#include <jet/row_lock.h>

#include <utility>

#include <basic/runtime_error.h>

#include "commit/write_step.h"
#include "locks/row_lock_held.h"
#include "table_impl.h"

namespace quardele::jet {

RowLock::Held::Held(RowLocks& locks, RowId row) : locks_(locks), row_(row) {
    locks_.Lock(row_);
}

RowLock::Held::~Held() {
    locks_.Unlock(row_);
}

RowLock::RowLock() = default;

RowLock::RowLock(std::unique_ptr<Held> held) : held_(std::move(held)) {}

RowLock::RowLock(RowLock&& other) noexcept = default;

RowLock& RowLock::operator=(RowLock&& other) noexcept = default;

RowLock::~RowLock() = default;

void RowLock::Release() {
    held_.reset();
}

RowLock LockToChange(Engine& engine, RowId row) {
    if (engine.IsReadOnly()) {
        throw basic::RuntimeError(basic::error::kReadOnly);
    }
    if (engine.openStep != nullptr) {
        engine.Rows().LockForStep(row);
        return {};
    }
    return RowLock(std::make_unique<RowLock::Held>(engine.Rows(), row));
}

RowLock Table::Lock(RowId id) {
    Engine& engine = impl_->Owner();
    if (engine.IsReadOnly()) {
        throw basic::RuntimeError(basic::error::kReadOnly);
    }
    RowLock lock(std::make_unique<RowLock::Held>(engine.Rows(), id));
    if (engine.openStep == nullptr) {
        engine.RefreshPages();
    }
    if (id.page >= impl_->Pages().PageCount() || !impl_->Fetch(id)) {
        throw basic::RuntimeError(basic::error::kRecordDeleted);
    }
    return lock;
}

}  // namespace quardele::jet
