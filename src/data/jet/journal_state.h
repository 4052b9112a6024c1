// How far a change came whose writer left its journal.
#pragma once

#include <jet/recovery.h>

#include "journal_file.h"

namespace quardele::jet {

/// Compares a page of the file with its record. `now` may end early, where the file does.
[[nodiscard]] JournalPageState CompareWithJournal(const StoredRecord& record,
                                                  std::span<const std::uint8_t> now);

/// What the journal says about the file. Nobody may be writing to it.
[[nodiscard]] JournalState StateOf(const OsFile& file, const Format& format, const StoredJournal& journal);

}  // namespace quardele::jet
