// Reading and writing the bytes of a journal.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "bytes.h"
#include "journal.h"

namespace quardele::jet {

/// Disks write at least this many bytes as a whole; a page can be torn between them.
inline constexpr std::size_t kSector = 512;

/// One page of a journal that is read back.
struct StoredRecord {
    std::uint32_t page = 0;
    std::vector<std::uint64_t> after;  ///< checksums of the new page's sectors
    ByteString before;                 ///< the old page; zeros for a page behind the old end
};

struct StoredJournal {
    std::uint32_t pageCount = 0;  ///< of the file before the step
    bool sameFile = true;         ///< the data file has the header that it had then
    std::vector<StoredRecord> records;
};

/// What identifies a data file to its journal: the unchanging part of its header page, and its name.
[[nodiscard]] std::uint64_t FileIdentity(const OsFile& file, const Format& format);

/// Makes the journal file and returns when it is on the disk.
void WriteJournal(const OsFile& file, const Format& format, std::uint32_t pageCount,
                  std::span<const JournalRecord> records);

/// The journal beside the file; nothing when it was not finished.
[[nodiscard]] std::optional<StoredJournal> ReadJournal(const OsFile& file, const Format& format);

}  // namespace quardele::jet
