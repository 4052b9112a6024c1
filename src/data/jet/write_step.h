// One atomic step of writing, alone among all processes.
#pragma once

#include <optional>

#include "transaction.h"

namespace quardele::jet {

class Engine;

/// Holds the writer's lock of a file while it lives. What it reads is what the file holds now, not what was
/// in the cache before.
class WriteStep {
 public:
    /// Throws 3027 when the file is read only, 3260 when another process does not stop writing. Undoes what a
    /// process that died has left half done.
    explicit WriteStep(Engine& engine);
    ~WriteStep();
    WriteStep(const WriteStep&) = delete;
    WriteStep& operator=(const WriteStep&) = delete;

    [[nodiscard]] Transaction& Pages() { return *pages_; }
    /// Everything is on the disk when it returns; without it the step has changed nothing.
    void Commit();

 private:
    Engine& engine_;
    std::optional<Transaction> pages_;
};

/// Waits for the writer's lock of a file: exclusively to write, shared to be sure that nobody does. False
/// when it stays taken for two seconds.
[[nodiscard]] bool WaitForWriterLock(OsFile& file, OsFile::Lock kind);

}  // namespace quardele::jet
