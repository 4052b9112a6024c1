// Reading and writing the bytes of a journal.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "bytes.h"
#include "commit/change_mark.h"
#include "commit/journal.h"
#include "file/page.h"

namespace quardele::jet {

/// Disks write at least this many bytes as a whole; a page can be torn between them.
inline constexpr std::size_t kSector = 512;

/// What identifies a data file to its journal: the unchanging part of its header page, and its name.
[[nodiscard]] std::uint64_t FileIdentity(const OsFile& file, const Format& format);

/// Makes the journal beside a data file. Records go to the disk as they come; the header, without which they
/// mean nothing, comes last.
class JournalWriter {
 public:
    /// `pageCount` is that of the file before the change.
    JournalWriter(const OsFile& file, const Format& format, std::uint32_t pageCount);

    /// `before` is null for a page behind the old end of the file.
    void Add(const PagePtr& before, const Page& after);
    /// Writes all records to the file; they are on the disk when it returns. A header is never there without
    /// its records, whatever order the disk writes in.
    void FlushRecords();
    /// Makes the journal valid; everything is on the disk when it returns. `mark` is that of the file before
    /// the change, which `user` makes.
    void Finish(const ChangeMark& mark, int user);

 private:
    void Flush();

    const OsFile& file_;
    std::uint32_t pageSize_;
    std::uint64_t identity_;
    std::uint32_t pageCount_;
    std::uint32_t records_ = 0;
    std::uint64_t sum_ = 0;
    std::uint64_t end_ = 0;
    OsFile journal_;
    ByteString pending_;  ///< starts with the place of the header, as zeros
};

/// One page of a journal that is read back.
struct StoredRecord {
    std::uint32_t page = 0;
    bool appended = false;                 ///< the page lies behind the old end of the file
    ByteString before;                     ///< zeros for such a page
    ByteString after;                      ///< empty for such a page
    std::vector<std::uint64_t> afterSums;  ///< checksums of its sectors, for such a page
};

/// What lies beside a data file. The pages of a complete journal are read from the disk one by one.
class StoredJournal {
 public:
    enum class Condition {
        None,        ///< there is no journal
        Unfinished,  ///< its header was never written, or only a part of it
        Damaged,     ///< it was finished, but is not what was written
        Complete,
    };

    /// Throws 3051 when the journal may not be read, 57 when the disk fails, 3343 when it was written by
    /// another version of this program.
    [[nodiscard]] static StoredJournal Read(const OsFile& file, const Format& format);

    [[nodiscard]] Condition How() const { return condition_; }
    [[nodiscard]] bool IsComplete() const { return condition_ == Condition::Complete; }

    // Of a complete journal only:
    [[nodiscard]] std::uint32_t PageCount() const { return pageCount_; }  ///< of the file before the change
    /// Whether the data file has the header and the name that it had then.
    [[nodiscard]] bool IsOfSameFile() const { return sameFile_; }
    /// The file's mark before the change, and whose it was.
    [[nodiscard]] const ChangeMark& Mark() const { return mark_; }
    [[nodiscard]] int User() const { return static_cast<int>(user_); }

    [[nodiscard]] std::size_t Size() const { return records_.size(); }
    [[nodiscard]] std::uint32_t PageAt(std::size_t position) const { return records_[position].page; }
    [[nodiscard]] StoredRecord At(std::size_t position) const;

 private:
    struct Place {
        std::uint32_t page = 0;
        std::uint32_t kind = 0;
        std::uint64_t at = 0;
    };

    void TakeHeader(const ByteString& header);
    [[nodiscard]] bool IndexRecords(std::uint32_t count, std::uint64_t expectedSum);
    [[nodiscard]] bool NumbersArePossible() const;
    [[nodiscard]] ByteString Bytes(std::uint64_t at, std::size_t size) const;

    OsFile journal_;
    Condition condition_ = Condition::None;
    std::uint32_t pageSize_ = 0;
    std::uint32_t pageCount_ = 0;
    bool sameFile_ = false;
    ChangeMark mark_;
    std::uint32_t user_ = 0;
    std::vector<Place> records_;
};

/// Whether the journal beside the file is one that may have begun to be carried out. Looks at its header
/// only.
[[nodiscard]] bool HasFinishedJournal(const OsFile& file);

}  // namespace quardele::jet
