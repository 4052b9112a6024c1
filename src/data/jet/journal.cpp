#include "journal.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "checksum.h"
#include "journal_file.h"

namespace quardele::jet {

namespace {

/// How far a writer came that left its journal.
enum class Progress { NotStarted, Half, Finished, Foreign };

/// What the sectors of a file's pages are found to be.
struct Sectors {
    bool anyBefore = false;  ///< some are the old ones
    bool anyAfter = false;   ///< some are the new ones
    bool anyOther = false;   ///< some are neither
};

void Examine(const StoredRecord& record, const ByteString& page, Sectors& found) {
    for (std::size_t sector = 0; sector < record.after.size(); ++sector) {
        const auto bytes = std::span(page).subspan(sector * kSector, kSector);
        const auto before = std::span(record.before).subspan(sector * kSector, kSector);
        const bool isAfter = Checksum(bytes) == record.after[sector];
        const bool isBefore = CompareBytes(bytes, before) == 0;
        found.anyAfter = found.anyAfter || (isAfter && !isBefore);
        found.anyBefore = found.anyBefore || (isBefore && !isAfter);
        found.anyOther = found.anyOther || (!isBefore && !isAfter);
    }
}

Progress Measure(const OsFile& file, const Format& format, const StoredJournal& journal) {
    Sectors found;
    std::uint32_t end = journal.pageCount;
    for (const StoredRecord& record : journal.records) {
        ByteString page(format.pageSize);
        // What lies behind the end of the file was not written: zeros, as in a gap.
        file.ReadAt(std::uint64_t{record.page} * format.pageSize, page);
        Examine(record, page, found);
        end = std::max(end, record.page + 1);
    }
    if (found.anyOther || file.Size() > std::uint64_t{end} * format.pageSize) {
        return Progress::Foreign;
    }
    if (!found.anyBefore) {
        return Progress::Finished;
    }
    return found.anyAfter ? Progress::Half : Progress::NotStarted;
}

void DropJournal(const OsFile& file) {
    RemoveFile(JournalPath(file.Path()));
    try {
        SyncFolder(file.Path().parent_path());
    } catch (const basic::RuntimeError&) {
        // A removal that gets lost with the power does no harm: the journal then describes a finished step.
        return;
    }
}

void DropUnfinished(const OsFile& file) {
    try {
        DropJournal(file);
    } catch (const basic::RuntimeError&) {
        return;  // whoever finds it sees that it was not finished
    }
}

// A journal that lies here by mistake, beside a file of the same name, is kept for whoever misses it.
void SetAside(const OsFile& file) {
    const std::filesystem::path journal = JournalPath(file.Path());
    std::filesystem::path aside = journal;
    aside += ".autre";
    std::error_code failure;
    std::filesystem::rename(journal, aside, failure);
    if (failure) {
        throw basic::RuntimeError(basic::error::kDeviceIo);
    }
}

void Undo(OsFile& file, const Format& format, const StoredJournal& journal) {
    for (const StoredRecord& record : journal.records) {
        if (record.page < journal.pageCount) {
            file.WriteAt(std::uint64_t{record.page} * format.pageSize, record.before);
        }
    }
    file.Resize(std::uint64_t{journal.pageCount} * format.pageSize);
    file.Sync();
}

[[noreturn]] void ThrowForeign(const OsFile& file) {
    basic::Text description = u"Une écriture interrompue de « ";
    description += FileName(file.Path());
    description +=
        u" » ne peut pas être annulée : le fichier a été modifié depuis. Son journal est conservé (« ";
    description += FileName(JournalPath(file.Path()));
    description += u" »).";
    throw basic::RuntimeError(basic::error::kNotADatabase, std::move(description));
}

}  // namespace

std::filesystem::path JournalPath(const std::filesystem::path& dataFile) {
    std::filesystem::path path = dataFile;
    path += ".qjournal";
    return path;
}

bool HasJournal(const std::filesystem::path& dataFile) {
    std::error_code failure;
    return std::filesystem::exists(JournalPath(dataFile), failure);
}

void CommitThroughJournal(OsFile& file, const Format& format, std::uint32_t pageCount,
                          std::span<const JournalRecord> records) {
    try {
        WriteJournal(file, format, pageCount, records);
    } catch (const basic::RuntimeError&) {
        DropUnfinished(file);
        throw;
    }
    try {
        for (const JournalRecord& record : records) {
            file.WriteAt(std::uint64_t{record.after->number} * format.pageSize, record.after->View().Span());
        }
        file.Sync();
        DropJournal(file);
    } catch (const basic::RuntimeError&) {
        if (const auto journal = ReadJournal(file, format)) {
            Undo(file, format, *journal);
        }
        DropJournal(file);
        throw;
    }
}

void RecoverFromJournal(OsFile& file, const Format& format) {
    const auto journal = ReadJournal(file, format);
    if (!journal) {
        return DropJournal(file);
    }
    switch (Measure(file, format, *journal)) {
        case Progress::NotStarted:
        case Progress::Half:
            Undo(file, format, *journal);
            return DropJournal(file);
        case Progress::Finished:
            file.Sync();
            return DropJournal(file);
        case Progress::Foreign:
            if (journal->sameFile) {
                ThrowForeign(file);
            }
            return SetAside(file);
    }
}

bool NeedsRecovery(const OsFile& file, const Format& format) {
    const auto journal = ReadJournal(file, format);
    if (!journal) {
        return false;
    }
    const Progress progress = Measure(file, format, *journal);
    return progress == Progress::Half || progress == Progress::Foreign;
}

}  // namespace quardele::jet
