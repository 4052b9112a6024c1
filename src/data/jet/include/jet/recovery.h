// What an interrupted change has left of a data file, page by page, and what somebody may do about it who has
// looked. Opening a database does by itself what is safe; this is for the case in which it refuses (3343),
// and for those who want to see.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

namespace quardele::jet {

/// What the journal beside a data file says about it.
enum class JournalState {
    None,           ///< there is none
    Unfinished,     ///< its writer died before it was complete: the file is as before the change
    NotStarted,     ///< complete, and the file is as before the change
    Half,           ///< some pages are old, some are new: opening puts the old ones back
    Finished,       ///< all pages are new: opening keeps them
    Stale,          ///< of an older state of the file, which shows nothing of that change
    OtherFile,      ///< made for another file
    ForeignChange,  ///< somebody else has written since; opening refuses
    Damaged,        ///< it was complete once and is not what was written: nothing is known; opening refuses
    Unreadable,     ///< it may not be read, or another version of this program wrote it; opening refuses
};

/// How a page of the file compares with the journal, disk sector by disk sector.
enum class JournalPageState {
    Same,     ///< the change did not alter it
    Before,   ///< as before the change
    After,    ///< as after it
    Between,  ///< some sectors old, some new: the writer died in the middle
    Foreign,  ///< some sector is neither
};

struct JournalPage {
    std::uint32_t number = 0;
    JournalPageState state = JournalPageState::Same;
    std::vector<std::uint8_t> before;  ///< empty for a page that the change has appended to the file
    std::vector<std::uint8_t> after;   ///< empty for such a page: only its checksums are kept
    std::vector<std::uint8_t> now;     ///< empty when the file ends before it
};

/// A data file with its journal. While it lives nobody else writes to the file. The file need not be one that
/// can be opened as a database.
class Recovery {
 public:
    /// Throws 3024 when the file is missing, 3051 when it may not be read, 3343 when it is not a database,
    /// 3260 when a writer is at work.
    explicit Recovery(const std::filesystem::path& dataFile);
    ~Recovery();
    Recovery(const Recovery&) = delete;
    Recovery& operator=(const Recovery&) = delete;

    [[nodiscard]] JournalState State() const;
    /// Where the journal lies, or would lie.
    [[nodiscard]] std::filesystem::path JournalFile() const;
    /// Pages of the file before the change, and now; the former 0 when there is no complete journal.
    [[nodiscard]] std::uint32_t PagesBefore() const;
    [[nodiscard]] std::uint32_t PagesNow() const;
    /// The pages that the change was to alter: how many, and each of them as it is read from the disk now.
    [[nodiscard]] std::size_t PageCount() const;
    [[nodiscard]] JournalPage Page(std::size_t position) const;

    /// Puts the pages of before the change back, cuts off those that it has appended, and deletes the
    /// journal. Everything is on the disk when it returns. Without `force` only for NotStarted and Half,
    /// otherwise for Finished, Stale and ForeignChange as well: what others have written to these pages is
    /// then lost. Throws 3219 for all other states, 3027 when the file may not be written, which includes a
    /// file system without byte locks, and 3045 when such a state is forced while somebody has the file open.
    void RollBack(bool force = false);
    /// Users of other programs whose writes have not ended, as the commit slots tell: the file is read but
    /// not written until the slots are cleared, or for ever; a compacted copy has none.
    [[nodiscard]] std::vector<int> UnendedUsers() const;
    /// Takes the file as it is for whole: clears these slots. Throws 3219 when there are none, 3260 while
    /// such a user is there, 3027.
    void ClearUnended();
    /// Leaves the file as it is and gives the journal another name, which it returns. Throws 3219 when there
    /// is none, 3027.
    std::filesystem::path KeepFile();

 private:
    struct Opened;
    std::unique_ptr<Opened> opened_;
};

}  // namespace quardele::jet
