// The rollback journal: what makes a change of many pages one step. It lies beside the data file under the
// name <file>.qjournal while pages are being written; docs/file-format.md tells its layout and why the step
// is atomic.
#pragma once

#include <filesystem>
#include <span>

#include "os_file.h"
#include "page.h"

namespace quardele::jet {

struct JournalRecord {
    PagePtr before;  ///< null for a page behind the old end of the file
    PagePtr after;
};

[[nodiscard]] std::filesystem::path JournalPath(const std::filesystem::path& dataFile);
[[nodiscard]] bool HasJournal(const std::filesystem::path& dataFile);

/// Writes the pages of the records through a journal; everything is on the disk when it returns. The caller
/// holds the writer's lock. On an error the old pages are put back before it is thrown on; should that fail
/// as well, the journal stays for RecoverFromJournal.
void CommitThroughJournal(OsFile& file, const Format& format, std::uint32_t pageCount,
                          std::span<const JournalRecord> records);

/// Brings a file that a writer left in the middle of its step back to one of its ends: to the end of the
/// step when all pages were written, otherwise to its beginning. A journal that was not finished touches
/// nothing; one that belongs to another file is put aside. The caller holds the writer's lock. Throws 3343,
/// and changes nothing, when somebody else has changed the pages meanwhile.
void RecoverFromJournal(OsFile& file, const Format& format);

/// Whether a file that may only be read lies in the middle of a step that somebody must undo first.
[[nodiscard]] bool NeedsRecovery(const OsFile& file, const Format& format);

}  // namespace quardele::jet
