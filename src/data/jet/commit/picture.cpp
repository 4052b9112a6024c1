#include "commit/picture.h"

#include "commit/journal.h"
#include "commit/journal_file.h"
#include "commit/unended_writes.h"
#include "locks/lock_bytes.h"
#include "locks/lock_wait.h"
#include "scope_exit.h"

namespace quardele::jet {

namespace {

/// In retry times: a large commit on a slow disk takes longer than anybody may keep a row.
constexpr int kPatienceOfReaders = 5;

[[noreturn]] void ThrowCannotUndo() {
    throw basic::RuntimeError(
        basic::error::kReadOnly,
        u"Une écriture interrompue doit d'abord être annulée, mais la base de données est "
        u"en lecture seule.");
}

}  // namespace

Picture PictureTaker::Take() {
    Picture picture;
    for (int i = 0; i < kPatienceOfReaders; ++i) {
        if (RetryUntil([&] { return TryTake(picture); })) {
            return picture;
        }
    }
    throw basic::RuntimeError(basic::error::kRecordLocked);
}

bool PictureTaker::TryTake(Picture& picture) {
    if (!TryHold()) {
        return false;
    }
    if (LookAtFile(picture)) {
        return true;
    }
    RecoverAsWriter();
    return false;
}

// While nobody writes pages there is no valid journal, but that of a writer that has died. A program that
// takes no locks of ours says by its slot that it writes pages.
bool PictureTaker::LookAtFile(Picture& picture) {
    const ScopeExit release([this] { Release(); });
    if (HasFinishedJournal(file_) && (!readOnly_ || NeedsRecovery(file_, format_))) {
        return false;
    }
    picture = {.mark = ChangeMark::Read(file_, format_), .stamp = file_.Stamp()};
    return !IsBeingWritten(picture.mark, file_.Path());
}

// A file system without locks keeps nobody out, but nobody of ours writes there either.
bool PictureTaker::TryHold() {
    if (holds_ == 0 && file_.TryLock(lock_bytes::kCommit, OsFile::Lock::Shared) == OsFile::LockResult::Held) {
        return false;
    }
    ++holds_;
    return true;
}

bool PictureTaker::Hold() {
    return RetryUntil([&] { return TryHold(); });
}

void PictureTaker::Release() {
    if (--holds_ == 0) {
        file_.Unlock(lock_bytes::kCommit);
    }
}

bool PictureTaker::IsWhole(const Picture& picture) const {
    return picture.mark.IsUsable() ? picture.mark.IsIn(file_) : file_.Stamp() == picture.stamp;
}

bool PictureTaker::IsCurrent(const Picture& picture) const {
    return picture.mark.IsUsable() && IsWhole(picture) && file_.Stamp() == picture.stamp;
}

void PictureTaker::Tidy() {
    if (!readOnly_ && HasJournal(file_.Path())) {
        RecoverAsWriter();
    }
}

// Who finds the writer's lock taken leaves the journal to the one that has it.
void PictureTaker::RecoverAsWriter() {
    const auto kind = readOnly_ ? OsFile::Lock::Shared : OsFile::Lock::Exclusive;
    if (!writing_ && file_.TryLock(lock_bytes::kWriter, kind) == OsFile::LockResult::Held) {
        return;
    }
    const ScopeExit unlock([this] {
        if (!writing_) {
            file_.Unlock(lock_bytes::kWriter);
        }
    });
    if (!readOnly_ && HasJournal(file_.Path())) {
        RecoverFromJournal(file_, format_);
    } else if (readOnly_ && NeedsRecovery(file_, format_)) {
        ThrowCannotUndo();
    }
}

}  // namespace quardele::jet
