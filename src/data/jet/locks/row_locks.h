// The rows that one open database has locked, against other processes and against other databases of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <vector>

#include <jet/types.h>

#include "file/os_file.h"
#include "locks/lock_file.h"

namespace quardele::jet {

/// Every row has a byte in the data file that our processes lock; its page is held in the lock file against
/// the original engine, which locks whole pages. The locks of an open file exclude those of every other
/// opener, in this process as well.
class RowLocks {
 public:
    /// Both must outlive it.
    RowLocks(OsFile& file, LockFile& lockFile);
    ~RowLocks();
    RowLocks(const RowLocks&) = delete;
    RowLocks& operator=(const RowLocks&) = delete;

    /// Locks a row; counted. Throws 3260 when another process has it for longer than the retry time, 3188
    /// when another database of this process has.
    void Lock(RowId row);
    void Unlock(RowId row);

    void BeginStep() { inStep_ = true; }
    /// Locks a row until EndStep, unless Lock has it already. Throws as Lock within a step.
    void LockForStep(RowId row);
    void EndStep();

    /// The numbers that users of this process have in the lock file, our own included.
    [[nodiscard]] std::vector<int> UsersHere() const;

 private:
    [[nodiscard]] bool Has(RowId row) const;
    [[nodiscard]] bool StepHas(RowId row) const;
    void DropStepLocks();
    [[nodiscard]] bool TryLock(RowId row);
    [[nodiscard]] bool TryLockForStep(RowId row);
    [[noreturn]] void ThrowHeld(RowId row) const;

    OsFile& file_;
    LockFile& lockFile_;
    FileId id_;
    std::map<RowId, std::size_t> rows_;
    std::map<std::uint32_t, std::size_t> pages_;  ///< rows of rows_ on each page
    /// Its own locks, so that the end of a step leaves those of file_ alone. It stays open from the first
    /// step on: some systems keep the handles of a file that is closed while somebody has locked it.
    OsFile step_;
    std::set<std::uint32_t> stepPages_;  ///< all rows of the page
    std::set<RowId> stepRows_;
    bool inStep_ = false;
    std::set<RowId> borrowed_;  ///< of rows_, those that have no lock but the step's
};

}  // namespace quardele::jet
