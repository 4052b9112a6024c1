#include "locks/row_locks.h"

#include <algorithm>
#include <mutex>

#include <basic/runtime_error.h>

#include "locks/lock_bytes.h"
#include "locks/lock_wait.h"

namespace quardele::jet {

namespace {

/// All of this process, to tell whether a lock that is taken is its own. Databases may belong to different
/// threads: the mutex guards what each of them holds as well.
struct Registry {
    std::mutex mutex;
    std::vector<const RowLocks*> all;
};

Registry& ProcessRegistry() {
    static Registry registry;
    return registry;
}

[[nodiscard]] std::uint64_t ByteOf(RowId row) {
    return lock_bytes::kRows + row.page * lock_bytes::kRowsPerPage + row.slot;
}

}  // namespace

RowLocks::RowLocks(OsFile& file, LockFile& lockFile) : file_(file), lockFile_(lockFile), id_(file.Id()) {
    const std::scoped_lock guard(ProcessRegistry().mutex);
    ProcessRegistry().all.push_back(this);
}

RowLocks::~RowLocks() {
    const std::scoped_lock guard(ProcessRegistry().mutex);
    std::erase(ProcessRegistry().all, this);
}

void RowLocks::Lock(RowId row) {
    const bool locked = inStep_ ? TryLock(row) : RetryUntil([&] { return TryLock(row); });
    if (!locked) {
        ThrowHeld(row);
    }
}

bool RowLocks::TryLock(RowId row) {
    const std::scoped_lock guard(ProcessRegistry().mutex);
    if (const auto held = rows_.find(row); held != rows_.end()) {
        ++held->second;
        return true;
    }
    const bool firstOfPage = !pages_.contains(row.page);
    if (firstOfPage && !lockFile_.TryHoldPage(row.page)) {
        return false;
    }
    if (StepHas(row)) {
        borrowed_.insert(row);
    } else if (file_.TryLock(ByteOf(row), OsFile::Lock::Exclusive) != OsFile::LockResult::Taken) {
        if (firstOfPage) {
            lockFile_.ReleasePage(row.page);
        }
        return false;
    }
    ++pages_[row.page];
    rows_[row] = 1;
    return true;
}

void RowLocks::Unlock(RowId row) {
    const std::scoped_lock guard(ProcessRegistry().mutex);
    const auto held = rows_.find(row);
    if (--held->second > 0) {
        return;
    }
    rows_.erase(held);
    if (borrowed_.erase(row) == 0) {
        file_.Unlock(ByteOf(row));
    } else {
        DropStepLocks();
    }
    const auto page = pages_.find(row.page);
    if (--page->second == 0) {
        pages_.erase(page);
        lockFile_.ReleasePage(row.page);
    }
}

void RowLocks::LockForStep(RowId row) {
    if (!TryLockForStep(row)) {
        ThrowHeld(row);
    }
}

// All rows of a page at a time, so that a step of many rows takes few locks; one by one where somebody has
// another row of the page. Who is no user of the lock file is alone.
bool RowLocks::TryLockForStep(RowId row) {
    const std::scoped_lock guard(ProcessRegistry().mutex);
    if (Has(row) || lockFile_.User() == 0) {
        return true;
    }
    if (!step_.IsOpen() && !step_.Open(file_.Path(), OsFile::Access::ReadWrite)) {
        return false;
    }
    const auto lock = [&](std::uint64_t byte, std::uint64_t count) {
        return step_.TryLock(byte, OsFile::Lock::Exclusive, count) == OsFile::LockResult::Taken;
    };
    const auto firstOfPage = stepRows_.lower_bound({row.page, 0});
    const bool someOfPage = firstOfPage != stepRows_.end() && firstOfPage->page == row.page;
    if (!someOfPage && lock(ByteOf({row.page, 0}), lock_bytes::kRowsPerPage)) {
        stepPages_.insert(row.page);
        return true;
    }
    if (lock(ByteOf(row), 1)) {
        stepRows_.insert(row);
        return true;
    }
    return false;
}

void RowLocks::EndStep() {
    const std::scoped_lock guard(ProcessRegistry().mutex);
    inStep_ = false;
    DropStepLocks();
}

// A row that was locked by Lock within the step keeps them until it is unlocked.
void RowLocks::DropStepLocks() {
    if (inStep_ || !borrowed_.empty()) {
        return;
    }
    for (const std::uint32_t page : stepPages_) {
        step_.Unlock(ByteOf({page, 0}), lock_bytes::kRowsPerPage);
    }
    for (const RowId row : stepRows_) {
        step_.Unlock(ByteOf(row));
    }
    stepPages_.clear();
    stepRows_.clear();
}

std::vector<int> RowLocks::UsersHere() const {
    const std::scoped_lock guard(ProcessRegistry().mutex);
    std::vector<int> users;
    for (const RowLocks* locks : ProcessRegistry().all) {
        if (locks->id_ == id_ && locks->lockFile_.User() != 0) {
            users.push_back(locks->lockFile_.User());
        }
    }
    return users;
}

bool RowLocks::StepHas(RowId row) const {
    return stepRows_.contains(row) || stepPages_.contains(row.page);
}

bool RowLocks::Has(RowId row) const {
    return rows_.contains(row) || StepHas(row);
}

void RowLocks::ThrowHeld(RowId row) const {
    const std::scoped_lock guard(ProcessRegistry().mutex);
    const auto& all = ProcessRegistry().all;
    const bool here = std::any_of(all.begin(), all.end(), [&](const RowLocks* other) {
        return other != this && other->id_ == id_ && other->Has(row);
    });
    throw basic::RuntimeError(here ? basic::error::kLockedHere : basic::error::kRecordLocked);
}

}  // namespace quardele::jet
