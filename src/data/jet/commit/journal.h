// The rollback journal: what makes a change of many pages one step. It lies beside the data file under the
// name <file>.qjournal while pages are being written; docs/locking.md tells why the step is atomic, and
// docs/file-format.md the layout.
#pragma once

#include <filesystem>

#include "file/os_file.h"
#include "format.h"

namespace quardele::jet {

class StoredJournal;

[[nodiscard]] std::filesystem::path JournalPath(const std::filesystem::path& dataFile);
/// False only when there is certainly none: one that cannot be seen clearly is taken to be there, and reading
/// it then fails.
[[nodiscard]] bool HasJournal(const std::filesystem::path& dataFile);

/// Keeps readers from looking while pages are being written to a file.
class CommitLock {
 public:
    /// Throws 3260 when a reader does not stop looking.
    explicit CommitLock(OsFile& file);
    ~CommitLock();
    CommitLock(const CommitLock&) = delete;
    CommitLock& operator=(const CommitLock&) = delete;

 private:
    OsFile& file_;
};

/// Brings a file that a writer left in the middle of its step back to one of its ends: to the end of the
/// step when all pages were written, otherwise to its beginning. A journal that was not finished touches
/// nothing; one that belongs to another file or to an older state is put aside. The caller holds the writer's
/// lock. Throws, and changes nothing, when somebody else has changed the pages meanwhile or the journal is
/// damaged (3343), or cannot be read (3051, 57).
void RecoverFromJournal(OsFile& file, const Format& format);

/// Whether a file that may only be read lies in the middle of a step that somebody must undo first.
[[nodiscard]] bool NeedsRecovery(const OsFile& file, const Format& format);

// The parts of it. For all of them the caller holds the commit lock.

/// Puts the old pages back and returns when they are on the disk.
void Undo(OsFile& file, const Format& format, const StoredJournal& journal);
/// Writes the new pages, which the file shows all, once more and returns when they are on the disk: a sync
/// that has failed was told once, to a writer that is gone, and what it has not written the system takes for
/// written. False when a page is no longer what the change made of it; nothing is known of the disk then.
[[nodiscard]] bool WriteAgain(OsFile& file, const Format& format, const StoredJournal& journal);
/// Deletes the journal. Its name may come back when the power fails: it then describes a finished step, for
/// the next journal is durable before the next page is written.
void DropJournal(const OsFile& file);
/// Gives the journal another name, which it returns; it is durable then.
std::filesystem::path SetJournalAside(const OsFile& file);

}  // namespace quardele::jet
