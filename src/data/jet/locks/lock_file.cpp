#include "locks/lock_file.h"

#include <algorithm>
#include <array>

#include <basic/runtime_error.h>

#include "locks/lock_bytes.h"
#include "locks/lock_wait.h"

namespace quardele::jet {

namespace {

/// Of one user: the name of the machine and that of the user, padded with zeros.
constexpr std::size_t kNameSize = 32;
constexpr std::size_t kSlotSize = 2 * kNameSize;
constexpr std::string_view kUserName = "Admin";

/// A commit of very many scattered pages locks all from its first to its last one: systems look through the
/// locks of a file one by one.
constexpr std::size_t kMostRanges = 256;

[[nodiscard]] std::uint64_t WriteRange(std::uint32_t page) {
    return lock_bytes::kPageWrites + page * lock_bytes::kPerPage;
}

/// Removes a lock file in which nobody has a place. Who holds all places is alone, and nobody can come in
/// while the name goes.
void RemoveWhenAlone(OsFile& file) {
    try {
        if (file.TryLock(lock_bytes::kUsers, OsFile::Lock::Exclusive, lock_bytes::kMostUsers) ==
                OsFile::LockResult::Taken &&
            IdOf(file.Path()) == file.Id()) {
            RemoveFile(file.Path());
        }
    } catch (const basic::RuntimeError&) {
        return;  // it stays; without locks in it, it says nothing
    }
}

}  // namespace

std::filesystem::path LockFile::PathFor(const std::filesystem::path& dataFile) {
    std::filesystem::path path = dataFile;
    path.replace_extension(".ldb");
    return path;
}

LockFile::Entry LockFile::Enter(const std::filesystem::path& dataFile, std::span<const int> avoided) {
    const std::filesystem::path path = PathFor(dataFile);
    Entry entry = Entry::Full;
    const bool settled = path == dataFile || RetryUntil([&] {
                             if (!file_.OpenOrCreate(path)) {
                                 return true;
                             }
                             const OsFile::LockResult result = TakePlace(avoided);
                             // The last user may have deleted the file between our opening and our locking
                             // it: then another one has its name, or none.
                             if (result == OsFile::LockResult::Taken && HasItsName()) {
                                 entry = Entry::Entered;
                                 return true;
                             }
                             user_ = 0;
                             file_.Close();
                             entry =
                                 result == OsFile::LockResult::Unsupported ? Entry::Unavailable : Entry::Full;
                             return result == OsFile::LockResult::Unsupported;
                         });
    if (entry == Entry::Entered) {
        dataFile_ = dataFile;
        file_.ShareLike(dataFile);
        WriteName();
        return entry;
    }
    return settled ? Entry::Unavailable : entry;
}

OsFile::LockResult LockFile::TakePlace(std::span<const int> avoided) {
    auto result = OsFile::LockResult::Held;
    for (std::uint64_t i = 0; i < lock_bytes::kMostUsers && result == OsFile::LockResult::Held; ++i) {
        const int user = static_cast<int>(i) + 1;
        if (!std::binary_search(avoided.begin(), avoided.end(), user)) {
            result = file_.TryLock(lock_bytes::kUsers + i, OsFile::Lock::Exclusive);
            user_ = user;
        }
    }
    return result;
}

// Only people read it: who is there is what the locks say. So a disk that has no room for it is no reason to
// keep anybody out.
void LockFile::WriteName() {
    std::array<std::uint8_t, kSlotSize> slot{};
    const std::string machine = MachineName();
    std::copy_n(machine.begin(), std::min(machine.size(), kNameSize - 1), slot.begin());
    std::copy(kUserName.begin(), kUserName.end(), slot.begin() + kNameSize);
    try {
        file_.WriteAt(static_cast<std::uint64_t>(user_ - 1) * kSlotSize, slot);
    } catch (const basic::RuntimeError&) {
        return;
    }
}

void LockFile::Leave() {
    if (user_ == 0) {
        return;
    }
    held_.clear();
    if (commit_.IsOpen()) {
        // Our own place refuses it, unless this is a file that was made anew.
        RemoveWhenAlone(commit_);
        commit_.Close();
    }
    file_.Unlock(lock_bytes::kUsers + static_cast<std::uint64_t>(user_ - 1));
    user_ = 0;
    RemoveWhenAlone(file_);
    file_.Close();
}

bool LockFile::TryHoldPage(std::uint32_t page) {
    return user_ == 0 || file_.TryLock(WriteRange(page), OsFile::Lock::Shared, lock_bytes::kPerPage) ==
                             OsFile::LockResult::Taken;
}

void LockFile::ReleasePage(std::uint32_t page) {
    if (user_ != 0) {
        file_.Unlock(WriteRange(page), lock_bytes::kPerPage);
    }
}

// Neighbouring pages are one range.
std::vector<LockFile::Range> LockFile::RangesOf(std::span<const std::uint32_t> pages) {
    std::vector<Range> ranges;
    for (const std::uint32_t page : pages) {
        const std::uint64_t first = WriteRange(page);
        if (!ranges.empty() && ranges.back().first + ranges.back().length == first) {
            ranges.back().length += lock_bytes::kPerPage;
        } else {
            ranges.push_back({first, lock_bytes::kPerPage});
        }
    }
    if (ranges.size() > kMostRanges) {
        const std::uint64_t first = ranges.front().first;
        ranges = {{first, ranges.back().first + ranges.back().length - first}};
    }
    return ranges;
}

bool LockFile::TryHoldPages(std::span<const std::uint32_t> pages) {
    if (user_ == 0) {
        return true;
    }
    if (!commit_.IsOpen()) {
        if (!commit_.OpenOrCreate(file_.Path())) {
            throw basic::RuntimeError(basic::error::kReadOnly);
        }
        // Somebody may have deleted the file in spite of us: then this has made it anew.
        commit_.ShareLike(dataFile_);
    }
    for (const Range& range : RangesOf(pages)) {
        if (commit_.TryLock(range.first, OsFile::Lock::Shared, range.length) != OsFile::LockResult::Taken) {
            ReleasePages();
            return false;
        }
        held_.push_back(range);
    }
    return true;
}

void LockFile::ReleasePages() {
    for (const Range& range : held_) {
        commit_.Unlock(range.first, range.length);
    }
    held_.clear();
}

}  // namespace quardele::jet
