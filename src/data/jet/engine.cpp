#include "engine.h"

#include <utility>
#include <vector>

#include <basic/runtime_error.h>

#include "commit/write_step.h"
#include "file/file_header.h"
#include "file/file_names.h"
#include "file/one_name.h"
#include "locks/lock_bytes.h"

namespace quardele::jet {

namespace {

[[noreturn]] void Throw(int number, const std::filesystem::path& path) {
    throw basic::RuntimeError(number, basic::Describe(number, PathText(path)));
}

}  // namespace

Engine::Engine(const std::filesystem::path& path, OpenMode mode) : path_(OneName(path)), mode_(mode) {
    OpenFile();
    TakePresence();
    format_ = &IdentifyFormat(file_);
    EnterLockFile();
    rows_ = std::make_unique<RowLocks>(file_, users_);
    readOnly_ = readOnly_ || !format_->wideText;
    pictures_ = std::make_unique<PictureTaker>(file_, *format_, readOnly_);
    cache_ = std::make_unique<PageCache>(file_, *format_, pictures_.get());
    pictures_->Tidy();
    TakeFirstPicture();
    CheckHeader(file_, *format_);
}

// Waits for a writer that is at work, so that the file is looked at between two changes.
void Engine::TakeFirstPicture() {
    static_cast<void>(cache_->PageCount());
}

void Engine::OpenFile() {
    const std::filesystem::path folder = path_.has_parent_path() ? path_.parent_path() : ".";
    if (WhatHasName(folder) != Named::Folder) {
        Throw(basic::error::kBadPath, path_);
    }
    if (WhatHasName(path_) == Named::Folder) {
        Throw(basic::error::kCannotOpenFile, path_);
    }
    // A change needs room for its journal beside the file.
    readOnly_ = mode_ == OpenMode::ReadOnly || !IsWritableFolder(folder) || !OpenToWrite();
    if (readOnly_ && !file_.Open(path_, OsFile::Access::Read)) {
        Throw(basic::error::kCannotOpenFile, path_);
    }
}

// A system that knows of sharing refuses to open what somebody has opened for himself.
bool Engine::OpenToWrite() {
    if (mode_ == OpenMode::Exclusive) {
        return file_.Open(path_, OsFile::Access::ReadWriteAlone);
    }
    try {
        return file_.Open(path_, OsFile::Access::ReadWrite);
    } catch (const basic::RuntimeError& error) {
        if (error.Number() == basic::error::kFileInUse) {
            Throw(basic::error::kOpenExclusive, path_);
        }
        throw;
    }
}

// Who asks to be alone must not be given less: others could write while he reads.
void Engine::TakePresence() {
    const bool exclusive = mode_ == OpenMode::Exclusive;
    if (exclusive && readOnly_) {
        Throw(basic::error::kReadOnly, path_);
    }
    const auto kind = exclusive ? OsFile::Lock::Exclusive : OsFile::Lock::Shared;
    switch (file_.TryLock(lock_bytes::kPresence, kind)) {
        case OsFile::LockResult::Taken:
            return;
        case OsFile::LockResult::Held:
            Throw(exclusive ? basic::error::kFileInUse : basic::error::kOpenExclusive, path_);
        case OsFile::LockResult::Unsupported:
            if (exclusive) {
                Throw(basic::error::kFileInUse, path_);
            }
            readOnly_ = true;  // without locks nobody can be kept from writing at the same time
    }
}

// Who only reads changes nothing in the folder, not even by a lock file. An exclusive opener is no
// user but holds the places of all: it heeds, and keeps out, programs that know nothing of the presence byte.
// The place of a user who has left a write unended stays free, so that everybody sees that he is gone.
void Engine::EnterLockFile() {
    if (readOnly_) {
        return;
    }
    std::vector<int> gone = ChangeMark::Read(file_, *format_).UsersInTrouble();
    if (mode_ == OpenMode::Exclusive) {
        if (others_.TakeAll(path_, std::move(gone)) != ShutOut::Result::Alone) {
            Throw(basic::error::kFileInUse, path_);
        }
        return;
    }
    switch (users_.Enter(path_, gone)) {
        case LockFile::Entry::Entered:
            return;
        case LockFile::Entry::Unavailable:
            readOnly_ = true;
            return;
        case LockFile::Entry::Full:
            throw basic::RuntimeError(
                basic::error::kFileInUse,
                u"Aucune place n'est libre dans ce fichier de données : 255 utilisateurs l'ont "
                u"ouvert, ou quelqu'un le réserve.");
    }
}

bool Engine::ShutOthersOut() {
    // Beside a lock file that was deleted, those who have come since are in another one.
    return others_.Holds() || (users_.HasItsName() && others_.TakeOthers(path_, rows_->UsersHere()));
}

void Engine::LetOthersIn() {
    if (mode_ != OpenMode::Exclusive) {
        others_.End();
    }
}

const PageSource& Engine::Pages() const {
    return openStep != nullptr ? static_cast<const PageSource&>(openStep->Pages()) : *cache_;
}

const jet::Catalog& Engine::Objects() {
    if (!catalog_) {
        catalog_ = Reading([this] { return jet::Catalog::Read(*this); });
        catalogGeneration_ = cache_->Generation();
    }
    return *catalog_;
}

void Engine::Refresh() {
    cache_->Refresh();
    if (catalogGeneration_ != cache_->Generation()) {
        catalog_.reset();
    }
}

}  // namespace quardele::jet
