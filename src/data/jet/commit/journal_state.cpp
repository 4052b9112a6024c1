#include "commit/journal_state.h"

#include <algorithm>

#include "checksum.h"

namespace quardele::jet {

namespace {

/// What the sectors of a page are found to be; those that the change left alone count as nothing.
struct Sectors {
    bool anyBefore = false;  ///< some are the old ones
    bool anyAfter = false;   ///< some are the new ones
    bool anyOther = false;   ///< some are neither
};

bool IsAfter(const StoredRecord& record, std::size_t at, std::span<const std::uint8_t> sector) {
    if (record.appended) {
        return Checksum(sector) == record.afterSums[at / kSector];
    }
    return CompareBytes(sector, std::span(record.after).subspan(at, kSector)) == 0;
}

void Examine(const StoredRecord& record, std::span<const std::uint8_t> page, Sectors& found) {
    for (std::size_t at = 0; at < page.size(); at += kSector) {
        const auto sector = page.subspan(at, kSector);
        const bool isAfter = IsAfter(record, at, sector);
        const bool isBefore = CompareBytes(sector, std::span(record.before).subspan(at, kSector)) == 0;
        found.anyAfter = found.anyAfter || (isAfter && !isBefore);
        found.anyBefore = found.anyBefore || (isBefore && !isAfter);
        found.anyOther = found.anyOther || (!isBefore && !isAfter);
    }
}

// What lies behind the end of the file was not written: zeros, as in a gap.
ByteString Padded(std::span<const std::uint8_t> now, std::size_t pageSize) {
    ByteString page(now.begin(), now.end());
    page.resize(pageSize);
    return page;
}

// The same for whole pages: one that somebody else has written to tells nothing of the change.
Sectors ExamineAll(const OsFile& file, const Format& format, const StoredJournal& journal) {
    Sectors found;
    std::uint32_t end = journal.PageCount();
    for (std::size_t i = 0; i < journal.Size(); ++i) {
        const StoredRecord record = journal.At(i);
        ByteString page(format.pageSize);
        page.resize(file.ReadAt(std::uint64_t{record.page} * format.pageSize, page));
        const JournalPageState state = CompareWithJournal(record, page);
        const bool between = state == JournalPageState::Between;
        found.anyBefore = found.anyBefore || between || state == JournalPageState::Before;
        found.anyAfter = found.anyAfter || between || state == JournalPageState::After;
        found.anyOther = found.anyOther || state == JournalPageState::Foreign;
        end = std::max(end, record.page + 1);
    }
    const std::uint64_t sizeAfter = std::uint64_t{end} * format.pageSize;
    // The end of a last page that is all zeros looks written when it is not.
    found.anyBefore = found.anyBefore || file.Size() < sizeAfter;
    // A change cuts nothing off: what is missing before the old end was there, and nobody here knows it.
    const std::uint64_t sizeBefore = std::uint64_t{journal.PageCount()} * format.pageSize;
    found.anyOther = found.anyOther || file.Size() > sizeAfter || file.Size() < sizeBefore;
    return found;
}

// Second of the two marks that follow the one of before the change; its user writes them both.
ChangeMark Undone(const StoredJournal& journal) {
    return journal.Mark().Advanced(journal.User()).Advanced(journal.User());
}

}  // namespace

JournalPageState CompareWithJournal(const StoredRecord& record, std::span<const std::uint8_t> now) {
    Sectors found;
    Examine(record, Padded(now, record.before.size()), found);
    if (found.anyOther) {
        return JournalPageState::Foreign;
    }
    if (found.anyBefore && found.anyAfter) {
        return JournalPageState::Between;
    }
    if (found.anyBefore) {
        return JournalPageState::Before;
    }
    return found.anyAfter ? JournalPageState::After : JournalPageState::Same;
}

bool IsMarkOfChange(const ChangeMark& now, const StoredJournal& journal) {
    const ChangeMark& before = journal.Mark();
    if (!before.IsUsable()) {
        return true;  // a file without marks tells nothing
    }
    return now == before || now == before.Advanced(journal.User()) || now == Undone(journal);
}

ChangeMark MarkOfUndoing(const ChangeMark& now, const StoredJournal& journal) {
    const bool ours = journal.Mark().IsUsable() && IsMarkOfChange(now, journal);
    return ours ? Undone(journal) : now.Advanced(journal.User());
}

JournalState StateOf(const OsFile& file, const Format& format, const StoredJournal& journal) {
    switch (journal.How()) {
        case StoredJournal::Condition::None:
            return JournalState::None;
        case StoredJournal::Condition::Unfinished:
            return JournalState::Unfinished;
        case StoredJournal::Condition::Damaged:
            return JournalState::Damaged;
        case StoredJournal::Condition::Complete:
            break;
    }
    const Sectors found = ExamineAll(file, format, journal);
    const bool markFits = IsMarkOfChange(ChangeMark::Read(file, format), journal);
    if (found.anyOther && !journal.IsOfSameFile()) {
        return JournalState::OtherFile;
    }
    if (found.anyOther) {
        // Without a trace of the change, in a file that has gone on since, it never reached this file.
        return !found.anyAfter && !markFits ? JournalState::Stale : JournalState::ForeignChange;
    }
    if (!found.anyBefore) {
        return JournalState::Finished;
    }
    if (!found.anyAfter) {
        return JournalState::NotStarted;
    }
    // What others have written elsewhere may rest on pages that would be rolled back.
    return markFits ? JournalState::Half : JournalState::ForeignChange;
}

}  // namespace quardele::jet
