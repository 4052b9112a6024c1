// The lock file <name>.ldb: who has a data file open, and which pages somebody is changing, for all programs
// that share it. docs/locking.md tells which bytes mean what, and how far that is known.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

#include "file/os_file.h"

namespace quardele::jet {

/// The place of one user in the lock file of a data file.
class LockFile {
 public:
    enum class Entry {
        Entered,
        Unavailable,  ///< the file cannot be made, or its file system has no byte locks
        Full,         ///< 255 users are there already, or somebody keeps all places
    };

    LockFile() = default;
    ~LockFile() { Leave(); }
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;

    /// Makes or opens the lock file beside the data file, and takes the first free place in it that is not
    /// one of those to avoid (ascending user numbers).
    [[nodiscard]] Entry Enter(const std::filesystem::path& dataFile, std::span<const int> avoided = {});
    /// Gives the place back; the last one to go deletes the file.
    void Leave();
    /// 1 to 255; 0 for who has not entered.
    [[nodiscard]] int User() const { return user_; }
    /// Whether those who come now meet us: false when somebody has deleted the file in spite of us. Only for
    /// who has entered.
    [[nodiscard]] bool HasItsName() const { return IdOf(file_.Path()) == file_.Id(); }

    /// Keeps other programs from changing a page; false when one of them is doing so. True without an effect
    /// for who has not entered. Not counted: a second lock of the same page changes nothing.
    [[nodiscard]] bool TryHoldPage(std::uint32_t page);
    void ReleasePage(std::uint32_t page);

    /// The same for the pages of a commit, in ascending order; all of them, or none and false. Throws
    /// RuntimeError 3027 when the lock file may not be written any more.
    [[nodiscard]] bool TryHoldPages(std::span<const std::uint32_t> pages);
    void ReleasePages();

    [[nodiscard]] static std::filesystem::path PathFor(const std::filesystem::path& dataFile);

 private:
    /// Bytes that are locked as one range.
    struct Range {
        std::uint64_t first = 0;
        std::uint64_t length = 0;
    };
    [[nodiscard]] static std::vector<Range> RangesOf(std::span<const std::uint32_t> pages);
    [[nodiscard]] OsFile::LockResult TakePlace(std::span<const int> avoided);
    void WriteName();

    std::filesystem::path dataFile_;
    OsFile file_;
    OsFile commit_;            ///< as RowLocks' file of a step: its own locks, open from the first commit on
    std::vector<Range> held_;  ///< by commit_
    int user_ = 0;
};

}  // namespace quardele::jet
