#include <jet/recovery.h>

#include <optional>

#include <basic/runtime_error.h>

#include "commit/journal.h"
#include "commit/journal_file.h"
#include "commit/journal_state.h"
#include "commit/unended_writes.h"
#include "commit/write_step.h"
#include "file/file_header.h"
#include "file/one_name.h"
#include "locks/lock_bytes.h"
#include "locks/shut_out.h"

namespace quardele::jet {

namespace {

/// Nobody else has the file open. Who is in it would go on with pages that are about to become older than
/// those that he knows.
class Solitude {
 public:
    /// Throws 3045 while somebody is in.
    explicit Solitude(OsFile& file) : file_(file) {
        const bool present =
            file.TryLock(lock_bytes::kPresence, OsFile::Lock::Exclusive) == OsFile::LockResult::Taken;
        if (present && others_.TakeAll(file.Path()) == ShutOut::Result::Alone) {
            return;
        }
        if (present) {
            file.Unlock(lock_bytes::kPresence);
        }
        throw basic::RuntimeError(basic::error::kFileInUse,
                                  basic::Describe(basic::error::kFileInUse, PathText(file.Path())));
    }
    ~Solitude() { file_.Unlock(lock_bytes::kPresence); }
    Solitude(const Solitude&) = delete;
    Solitude& operator=(const Solitude&) = delete;

 private:
    OsFile& file_;
    ShutOut others_;
};

}  // namespace

/// The file, under the writer's lock, and its journal.
struct Recovery::Opened {
    explicit Opened(const std::filesystem::path& path);

    void Look();
    void ThrowIfReadOnly() const;
    [[nodiscard]] bool HasPages() const { return journal && journal->IsComplete(); }

    OsFile file;
    bool writable = false;
    const Format* format = nullptr;
    std::optional<StoredJournal> journal;  ///< none when it cannot be read
    JournalState state = JournalState::None;
};

Recovery::Opened::Opened(const std::filesystem::path& path) {
    writable = file.Open(path, OsFile::Access::ReadWrite) && IsWritableFolder(path.parent_path());
    if (!writable && !file.Open(path, OsFile::Access::Read)) {
        throw basic::RuntimeError(basic::error::kCannotOpenFile,
                                  basic::Describe(basic::error::kCannotOpenFile, PathText(path)));
    }
    format = &IdentifyFormat(file);
    switch (WaitForWriterLock(file, writable ? OsFile::Lock::Exclusive : OsFile::Lock::Shared)) {
        case OsFile::LockResult::Taken:
            break;
        case OsFile::LockResult::Held:
            throw basic::RuntimeError(basic::error::kRecordLocked);
        case OsFile::LockResult::Unsupported:
            writable = false;  // nobody can be kept away, but everybody may look
    }
    Look();
}

void Recovery::Opened::Look() {
    try {
        journal = StoredJournal::Read(file, *format);
    } catch (const basic::RuntimeError&) {
        state = JournalState::Unreadable;
        return;
    }
    state = StateOf(file, *format, *journal);
}

void Recovery::Opened::ThrowIfReadOnly() const {
    if (!writable) {
        throw basic::RuntimeError(basic::error::kReadOnly);
    }
}

Recovery::Recovery(const std::filesystem::path& dataFile)
    : opened_(std::make_unique<Opened>(OneName(dataFile))) {}

Recovery::~Recovery() = default;

JournalState Recovery::State() const {
    return opened_->state;
}

std::filesystem::path Recovery::JournalFile() const {
    return JournalPath(opened_->file.Path());
}

std::uint32_t Recovery::PagesBefore() const {
    return opened_->HasPages() ? opened_->journal->PageCount() : 0;
}

std::uint32_t Recovery::PagesNow() const {
    return static_cast<std::uint32_t>(opened_->file.Size() / opened_->format->pageSize);
}

std::size_t Recovery::PageCount() const {
    return opened_->HasPages() ? opened_->journal->Size() : 0;
}

JournalPage Recovery::Page(std::size_t position) const {
    StoredRecord record = opened_->journal.value().At(position);
    ByteString now(opened_->format->pageSize);
    now.resize(opened_->file.ReadAt(std::uint64_t{record.page} * now.size(), now));
    const JournalPageState state = CompareWithJournal(record, now);
    if (record.appended) {
        record.before.clear();
    }
    return {.number = record.page,
            .state = state,
            .before = std::move(record.before),
            .after = std::move(record.after),
            .now = std::move(now)};
}

void Recovery::RollBack(bool force) {
    Opened& opened = *opened_;
    opened.ThrowIfReadOnly();
    const bool safe = opened.state == JournalState::NotStarted || opened.state == JournalState::Half;
    const bool possible = opened.state == JournalState::Finished || opened.state == JournalState::Stale ||
                          opened.state == JournalState::ForeignChange;
    if (!safe && !(force && possible)) {
        throw basic::RuntimeError(basic::error::kInvalidOperation);
    }
    std::optional<Solitude> solitude;
    if (!safe) {
        solitude.emplace(opened.file);
    }
    const CommitLock lock(opened.file);
    Undo(opened.file, *opened.format, *opened.journal);
    opened.journal.reset();
    DropJournal(opened.file);
    opened.state = JournalState::None;
}

std::vector<int> Recovery::UnendedUsers() const {
    return ChangeMark::Read(opened_->file, *opened_->format).UsersInTrouble();
}

void Recovery::ClearUnended() {
    Opened& opened = *opened_;
    opened.ThrowIfReadOnly();
    const ChangeMark mark = ChangeMark::Read(opened.file, *opened.format);
    const UnendedWrites unended = UnendedWritesOf(mark, opened.file.Path());
    if (!unended.underWay.empty()) {
        throw basic::RuntimeError(basic::error::kRecordLocked);
    }
    if (unended.left.empty()) {
        throw basic::RuntimeError(basic::error::kInvalidOperation);
    }
    const CommitLock lock(opened.file);
    for (const int user : unended.left) {
        mark.Advanced(user).WriteSlot(opened.file, user);
    }
    opened.file.Sync();
}

std::filesystem::path Recovery::KeepFile() {
    Opened& opened = *opened_;
    opened.ThrowIfReadOnly();
    if (opened.state == JournalState::None) {
        throw basic::RuntimeError(basic::error::kInvalidOperation);
    }
    const CommitLock lock(opened.file);
    if (opened.state == JournalState::Finished && !WriteAgain(opened.file, *opened.format, *opened.journal)) {
        throw basic::RuntimeError(basic::error::kDeviceIo);
    }
    opened.journal.reset();
    opened.state = JournalState::None;
    return SetJournalAside(opened.file);
}

}  // namespace quardele::jet
