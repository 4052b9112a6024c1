#include "write_step.h"

#include <basic/runtime_error.h>

#include "engine.h"
#include "journal.h"
#include "lock_bytes.h"
#include "lock_wait.h"

namespace quardele::jet {

bool WaitForWriterLock(OsFile& file, OsFile::Lock kind) {
    return RetryUntil([&] { return file.TryLock(lock_bytes::kWriter, kind) == OsFile::LockResult::Taken; });
}

WriteStep::WriteStep(Engine& engine) : engine_(engine), outer_(engine.openStep) {
    if (outer_ != nullptr) {
        Pages().BeginPart();
        partOpen_ = true;
        return;
    }
    if (engine.IsReadOnly()) {
        throw basic::RuntimeError(basic::error::kReadOnly);
    }
    if (!WaitForWriterLock(engine.File(), OsFile::Lock::Exclusive)) {
        throw basic::RuntimeError(basic::error::kRecordLocked);
    }
    try {
        TakeFile();
    } catch (...) {
        engine.File().Unlock(lock_bytes::kWriter);
        throw;
    }
}

void WriteStep::TakeFile() {
    if (HasJournal(engine_.Path())) {
        RecoverFromJournal(engine_.File(), engine_.Layout());
    }
    engine_.Cache().Clear();
    pages_.emplace(engine_.Cache());
    engine_.openStep = this;
}

WriteStep::~WriteStep() {
    if (partOpen_) {
        Pages().UndoPart();
    }
    if (outer_ == nullptr) {
        engine_.openStep = nullptr;
        engine_.Rows().EndStep();
        engine_.File().Unlock(lock_bytes::kWriter);
    }
}

void WriteStep::Commit() {
    if (outer_ != nullptr) {
        Pages().KeepPart();
        partOpen_ = false;
        return;
    }
    try {
        pages_->Commit(engine_.File());
    } catch (const basic::RuntimeError&) {
        engine_.Cache().Clear();
        throw;
    }
}

}  // namespace quardele::jet
