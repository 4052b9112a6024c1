// One atomic step of writing, alone among all processes.
#pragma once

#include <optional>

#include "commit/transaction.h"

namespace quardele::jet {

class Engine;

/// Holds the writer's lock of a file while it lives. What it reads is what the file holds now, not what was
/// in the cache before. Made while another one of the same engine is open it is a part of that: it can be
/// undone alone, and is written with it.
class WriteStep {
 public:
    /// Throws 3027 when the file is read only, 3260 when another process does not stop writing, 3343 when
    /// another program has left a write unended. Undoes what a process of ours that died has left half done.
    explicit WriteStep(Engine& engine);
    ~WriteStep();
    WriteStep(const WriteStep&) = delete;
    WriteStep& operator=(const WriteStep&) = delete;

    [[nodiscard]] Transaction& Pages() { return outer_ != nullptr ? outer_->Pages() : *pages_; }
    /// Everything is on the disk when it returns, or part of the outer step; without it the step has changed
    /// nothing.
    void Commit();

 private:
    void TakeFile();
    void CommitOutermost();

    Engine& engine_;
    WriteStep* outer_;
    std::optional<Transaction> pages_;  ///< of the outermost step
    std::uint64_t picture_ = 0;         ///< number of the picture that it has begun on
    bool partOpen_ = false;
    bool committed_ = false;
};

/// Waits for the writer's lock of a file: exclusively to write, shared to be sure that nobody does. Held when
/// it stays taken for the retry time.
[[nodiscard]] OsFile::LockResult WaitForWriterLock(OsFile& file, OsFile::Lock kind);

}  // namespace quardele::jet
