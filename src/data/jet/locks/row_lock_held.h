// What stands behind a RowLock, and how changes of rows take theirs.
#pragma once

#include <jet/row_lock.h>

#include "engine.h"
#include "locks/row_locks.h"

namespace quardele::jet {

struct RowLock::Held {
 public:
    /// Throws as RowLocks::Lock. The locks must outlive it.
    Held(RowLocks& locks, RowId row);
    ~Held();
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

 private:
    RowLocks& locks_;
    RowId row_;
};

/// Locks a row for its change: until the result goes or, within an open step, until the end of that. Called
/// before the change's own step begins, for who waits for a row must not keep others from writing. Throws
/// 3027, and 3260 or 3188 as RowLocks says.
[[nodiscard]] RowLock LockToChange(Engine& engine, RowId row);

}  // namespace quardele::jet
