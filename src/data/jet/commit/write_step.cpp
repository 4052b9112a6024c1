#include "commit/write_step.h"

#include <basic/runtime_error.h>

#include "commit/commit.h"
#include "commit/journal.h"
#include "commit/unended_writes.h"
#include "engine.h"
#include "file/file_names.h"
#include "locks/lock_bytes.h"
#include "locks/lock_wait.h"

namespace quardele::jet {

// Without a place for the next one, a writer that goes on at once has its lock back before those that pause
// have looked again, and where locks are slow somebody would wait in vain.
OsFile::LockResult WaitForWriterLock(OsFile& file, OsFile::Lock kind) {
    const auto wait = [&](std::uint64_t byte) {
        auto result = OsFile::LockResult::Held;
        static_cast<void>(RetryUntil([&] {
            result = file.TryLock(byte, kind);
            return result != OsFile::LockResult::Held;
        }));
        return result;
    };
    OsFile::LockResult result = wait(lock_bytes::kNextWriter);
    if (result == OsFile::LockResult::Taken) {
        result = wait(lock_bytes::kWriter);
        file.Unlock(lock_bytes::kNextWriter);
    }
    return result;
}

namespace {

/// A file whose folder or server went away is still open, but no journal can stand beside it.
void RequireInReach(const std::filesystem::path& path) {
    if (WhatHasName(path) == Named::Nothing) {
        throw basic::RuntimeError(basic::error::kFileMissing,
                                  basic::Describe(basic::error::kFileMissing, PathText(path)));
    }
}

}  // namespace

WriteStep::WriteStep(Engine& engine) : engine_(engine), outer_(engine.openStep) {
    if (outer_ != nullptr) {
        Pages().BeginPart();
        partOpen_ = true;
        return;
    }
    if (engine.IsReadOnly()) {
        throw basic::RuntimeError(basic::error::kReadOnly);
    }
    RequireInReach(engine.Path());
    if (WaitForWriterLock(engine.File(), OsFile::Lock::Exclusive) != OsFile::LockResult::Taken) {
        throw basic::RuntimeError(basic::error::kRecordLocked);
    }
    engine.SetWriting(true);
    try {
        TakeFile();
    } catch (...) {
        engine.SetWriting(false);
        engine.File().Unlock(lock_bytes::kWriter);
        throw;
    }
}

void WriteStep::TakeFile() {
    if (HasJournal(engine_.Path())) {
        RecoverFromJournal(engine_.File(), engine_.Layout());
    }
    WaitForUnendedWrites(engine_.File(), engine_.Layout());
    engine_.Cache().Refresh();
    static_cast<void>(engine_.Cache().PageCount());
    picture_ = engine_.Cache().PictureNumber();
    pages_.emplace(engine_.Cache(), &engine_.Rows());
    engine_.Rows().BeginStep();
    engine_.openStep = this;
}

WriteStep::~WriteStep() {
    if (partOpen_) {
        Pages().UndoPart();
    }
    if (!committed_) {
        engine_.ForgetCatalog();  // it may have been read with changes that are undone now
    }
    if (outer_ == nullptr) {
        engine_.openStep = nullptr;
        engine_.SetWriting(false);
        engine_.Rows().EndStep();
        engine_.LetOthersIn();
        engine_.File().Unlock(lock_bytes::kWriter);
    }
}

void WriteStep::Commit() {
    if (outer_ != nullptr) {
        Pages().KeepPart();
        partOpen_ = false;
        committed_ = true;
        return;
    }
    try {
        CommitOutermost();
        committed_ = true;
    } catch (const basic::RuntimeError&) {
        engine_.Cache().Clear();
        throw;
    }
}

// A program that does not take the writer's lock may have changed what the step has read.
void WriteStep::CommitOutermost() {
    PageCache& cache = engine_.Cache();
    if (cache.PictureNumber() != picture_) {
        throw PictureTorn();
    }
    ChangeMark mark;
    const bool written =
        pages_->Commit([&](std::span<const PagePtr> changed) { mark = CommitPages(engine_, changed); });
    if (!written) {
        return;
    }
    cache.Adopt(mark);
    if (!mark.IsUsable()) {
        cache.Clear();
    }
}

}  // namespace quardele::jet
