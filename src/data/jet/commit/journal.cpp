#include "commit/journal.h"

#include <string>

#include <basic/runtime_error.h>

#include "commit/journal_file.h"
#include "commit/journal_state.h"
#include "file/file_names.h"
#include "locks/lock_bytes.h"
#include "locks/lock_wait.h"

namespace quardele::jet {

namespace {

[[noreturn]] void ThrowForeign(const OsFile& file) {
    basic::Text description = u"Une écriture interrompue de « ";
    description += FileName(file.Path());
    description +=
        u" » ne peut pas être annulée : le fichier a été modifié depuis. Son journal est conservé (« ";
    description += FileName(JournalPath(file.Path()));
    description += u" ») ; la commande « mdb recover » montre les deux états.";
    throw basic::RuntimeError(basic::error::kNotADatabase, std::move(description));
}

[[noreturn]] void ThrowDamagedJournal(const OsFile& file) {
    basic::Text description = u"Une écriture de « ";
    description += FileName(file.Path());
    description += u" » a été interrompue et son journal « ";
    description += FileName(JournalPath(file.Path()));
    description +=
        u" » est endommagé : on ne sait pas si le fichier est intact. Le journal est conservé ; la "
        u"commande « mdb recover --keep » l'écarte.";
    throw basic::RuntimeError(basic::error::kNotADatabase, std::move(description));
}

bool IsWritten(JournalPageState state) {
    return state == JournalPageState::After || state == JournalPageState::Same;
}

// Undoes or does again what has to be, and says how the journal was found. It is closed then.
JournalState BringToOneEnd(OsFile& file, const Format& format) {
    const StoredJournal journal = StoredJournal::Read(file, format);
    JournalState state = StateOf(file, format, journal);
    while (state == JournalState::Finished && !WriteAgain(file, format, journal)) {
        state = StateOf(file, format, journal);
    }
    if (state == JournalState::NotStarted || state == JournalState::Half) {
        Undo(file, format, journal);
    }
    return state;
}

}  // namespace

CommitLock::CommitLock(OsFile& file) : file_(file) {
    if (!RetryUntil([&] {
            return file_.TryLock(lock_bytes::kCommit, OsFile::Lock::Exclusive) == OsFile::LockResult::Taken;
        })) {
        throw basic::RuntimeError(basic::error::kRecordLocked);
    }
}

CommitLock::~CommitLock() {
    file_.Unlock(lock_bytes::kCommit);
}

std::filesystem::path JournalPath(const std::filesystem::path& dataFile) {
    std::filesystem::path path = dataFile;
    path += ".qjournal";
    return path;
}

bool HasJournal(const std::filesystem::path& dataFile) {
    return WhatHasName(JournalPath(dataFile)) != Named::Nothing;
}

void DropJournal(const OsFile& file) {
    RemoveFile(JournalPath(file.Path()));
}

std::filesystem::path SetJournalAside(const OsFile& file) {
    const std::filesystem::path journal = JournalPath(file.Path());
    std::filesystem::path aside = journal;
    aside += ".autre";
    for (int number = 2; IsTaken(aside); ++number) {
        aside = journal;
        aside += ".autre" + std::to_string(number);
    }
    RenameFile(journal, aside);
    SyncFolder(journal.parent_path());
    return aside;
}

void Undo(OsFile& file, const Format& format, const StoredJournal& journal) {
    // Who has read some of the new pages must not take the old ones for theirs.
    const ChangeMark mark = ChangeMark::Read(file, format);
    if (mark.IsUsable()) {
        MarkOfUndoing(mark, journal).WriteSlot(file, journal.User());
    }
    for (std::size_t i = 0; i < journal.Size(); ++i) {
        if (journal.PageAt(i) < journal.PageCount()) {
            const StoredRecord record = journal.At(i);
            file.WriteAt(std::uint64_t{record.page} * format.pageSize, record.before);
        }
    }
    file.Resize(std::uint64_t{journal.PageCount()} * format.pageSize);
    file.Sync();
}

bool WriteAgain(OsFile& file, const Format& format, const StoredJournal& journal) {
    const ChangeMark mark = ChangeMark::Read(file, format);
    if (mark.IsUsable()) {
        mark.WriteSlot(file, journal.User());
    }
    ByteString page(format.pageSize);
    for (std::size_t i = 0; i < journal.Size(); ++i) {
        const StoredRecord record = journal.At(i);
        const std::uint64_t at = std::uint64_t{record.page} * format.pageSize;
        if (file.ReadAt(at, page) != page.size() || !IsWritten(CompareWithJournal(record, page))) {
            return false;
        }
        file.WriteAt(at, page);
    }
    file.Sync();
    return true;
}

void RecoverFromJournal(OsFile& file, const Format& format) {
    const CommitLock lock(file);
    switch (BringToOneEnd(file, format)) {
        case JournalState::None:
            return;
        case JournalState::Unfinished:
        case JournalState::NotStarted:
        case JournalState::Half:
        case JournalState::Finished:
            return DropJournal(file);
        case JournalState::Stale:
        case JournalState::OtherFile:
            SetJournalAside(file);
            return;
        case JournalState::ForeignChange:
            ThrowForeign(file);
        case JournalState::Damaged:
        case JournalState::Unreadable:
            ThrowDamagedJournal(file);
    }
}

bool NeedsRecovery(const OsFile& file, const Format& format) {
    const JournalState state = StateOf(file, format, StoredJournal::Read(file, format));
    return state == JournalState::Half || state == JournalState::ForeignChange ||
           state == JournalState::Damaged;
}

}  // namespace quardele::jet
