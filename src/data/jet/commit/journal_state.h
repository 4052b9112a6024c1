// How far a change came whose writer left its journal.
#pragma once

#include <jet/recovery.h>

#include "commit/journal_file.h"

namespace quardele::jet {

/// Compares a page of the file with its record. `now` may end early, where the file does.
[[nodiscard]] JournalPageState CompareWithJournal(const StoredRecord& record,
                                                  std::span<const std::uint8_t> now);

/// Whether a mark of the file is one that the change leaves behind it: that of before, that of after, or that
/// of its undoing. With another one somebody has changed the file since.
[[nodiscard]] bool IsMarkOfChange(const ChangeMark& now, const StoredJournal& journal);
/// The mark that undoing the change gives the file which has this one now. It is the same however often an
/// undoing that was cut short is taken up again.
[[nodiscard]] ChangeMark MarkOfUndoing(const ChangeMark& now, const StoredJournal& journal);

/// What the journal says about the file. Nobody may be writing to it.
[[nodiscard]] JournalState StateOf(const OsFile& file, const Format& format, const StoredJournal& journal);

}  // namespace quardele::jet
