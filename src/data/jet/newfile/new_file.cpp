#include "newfile/new_file.h"

#include <random>
#include <string>

#include <basic/runtime_error.h>

#include "commit/journal.h"
#include "file/file_names.h"
#include "file/write_hook.h"

namespace quardele::jet {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void Throw(int number, const fs::path& path) {
    throw basic::RuntimeError(number, basic::Describe(number, PathText(path)));
}

fs::path FolderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : ".";
}

// What once had the name has left a journal, which opening would take for one of the new file's. The old file
// may come back and need it.
[[noreturn]] void ThrowOldJournal(const fs::path& target) {
    basic::Text description = u"« ";
    description += FileName(JournalPath(target));
    description +=
        u" » existe déjà : c'est le journal d'une écriture interrompue d'un ancien fichier du même nom. "
        u"Remettez ce fichier à sa place, ou déplacez le journal.";
    throw basic::RuntimeError(basic::error::kDatabaseExists, std::move(description));
}

void DemandFreeName(const fs::path& target) {
    if (IsTaken(target)) {
        Throw(basic::error::kDatabaseExists, target);
    }
    if (HasJournal(target)) {
        ThrowOldJournal(target);
    }
}

// No two writers may meet in one unfinished file.
fs::path UnfinishedName(const fs::path& target) {
    std::random_device random;
    fs::path name = target;
    name += ".q" + std::to_string(random()) + ".new";
    return name;
}

}  // namespace

NewFile::NewFile(fs::path target) : target_(std::move(target)), place_(UnfinishedName(target_)) {
    if (WhatHasName(FolderOf(target_)) != Named::Folder || !target_.has_filename()) {
        Throw(basic::error::kBadPath, target_);
    }
    DemandFreeName(target_);
    if (!IsWritableFolder(FolderOf(target_))) {
        throw basic::RuntimeError(basic::error::kReadOnly);
    }
    file_.Create(place_);
}

NewFile::~NewFile() {
    file_.Close();
    TryRemoveFile(place_);
}

// A second name is given, because unlike a new name it never replaces anything; then the first one goes.
// Where the file system has one name for each file only, it is renamed.
void NewFile::Publish() {
    file_.Sync();
    file_.Close();
    DemandFreeName(target_);
    BeforeWriting({.step = WritePoint::Create, .path = target_, .bytes = {}});
    if (!GiveSecondName(place_, target_)) {
        if (IsTaken(target_)) {
            Throw(basic::error::kDatabaseExists, target_);
        }
        RenameFile(place_, target_);
    }
    try {
        RemoveFile(place_);
        SyncFolder(FolderOf(target_));
    } catch (const basic::RuntimeError&) {
        TryRemoveFile(target_);  // whoever is told of an error finds no file
        throw;
    }
}

}  // namespace quardele::jet
