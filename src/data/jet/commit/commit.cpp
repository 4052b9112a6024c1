#include "commit/commit.h"

#include <algorithm>
#include <vector>

#include <basic/runtime_error.h>

#include "commit/journal.h"
#include "commit/journal_file.h"
#include "commit/unended_writes.h"
#include "engine.h"
#include "locks/lock_wait.h"

namespace quardele::jet {

namespace {

/// Keeps other programs from the pages of a commit.
class PageHold {
 public:
    PageHold(LockFile& users, std::span<const std::uint32_t> pages) : users_(users) {
        if (!RetryUntil([&] { return users_.TryHoldPages(pages); })) {
            throw basic::RuntimeError(basic::error::kRecordLocked);
        }
    }
    ~PageHold() { users_.ReleasePages(); }
    PageHold(const PageHold&) = delete;
    PageHold& operator=(const PageHold&) = delete;

 private:
    LockFile& users_;
};

std::vector<std::uint32_t> NumbersOf(std::span<const PagePtr> pages) {
    std::vector<std::uint32_t> numbers(pages.size());
    std::transform(pages.begin(), pages.end(), numbers.begin(),
                   [](const PagePtr& page) { return page->number; });
    return numbers;
}

bool UndoFromJournal(OsFile& file, const Format& format) {
    const StoredJournal journal = StoredJournal::Read(file, format);
    if (journal.IsComplete()) {
        Undo(file, format, journal);
    }
    return journal.IsComplete();
}

/// One commit on its way.
class Commit {
 public:
    Commit(Engine& engine, std::span<const PagePtr> pages)
        : engine_(engine), file_(engine.File()), pages_(pages), pageCount_(engine.Cache().PageCount()) {}

    ChangeMark Run() {
        const PageHold hold(engine_.Users(), NumbersOf(pages_));
        WaitForUnendedWrites(file_, engine_.Layout());
        CheckSize();
        try {
            WriteJournal();
        } catch (const basic::RuntimeError&) {
            DropUnfinished();
            throw;
        }
        return WritePages();
    }

 private:
    void CheckSize() const;
    void WriteJournal();
    ChangeMark WritePages();
    [[nodiscard]] bool IsAlone() const;
    void WritePagesAlone(const ChangeMark& mark);
    void DropUnfinished();
    void TakeBack();
    [[nodiscard]] PagePtr Before(std::uint32_t number) const;

    Engine& engine_;
    OsFile& file_;
    std::span<const PagePtr> pages_;
    std::uint32_t pageCount_;
    std::optional<JournalWriter> journal_;
};

// Pages that a program without our locks has put behind the end would be written over.
void Commit::CheckSize() const {
    if (file_.Size() != std::uint64_t{pageCount_} * engine_.Layout().pageSize) {
        throw basic::RuntimeError(basic::error::kRecordChanged);
    }
}

// What the file has must be what the step has seen: a program that takes no locks of ours may have written.
PagePtr Commit::Before(std::uint32_t number) const {
    if (number >= pageCount_) {
        return nullptr;
    }
    PagePtr before = engine_.Cache().Read(number);
    ByteString now(before->size);
    now.resize(file_.ReadAt(std::uint64_t{number} * before->size, now));
    if (CompareBytes(now, before->View().Span()) != 0) {
        throw basic::RuntimeError(basic::error::kRecordChanged);
    }
    return before;
}

void Commit::WriteJournal() {
    journal_.emplace(file_, engine_.Layout(), pageCount_);
    for (const PagePtr& page : pages_) {
        journal_->Add(Before(page->number), *page);
    }
    journal_->FlushRecords();
}

// A program that takes no locks of ours may have written while the journal went to the disk: then the pages
// are compared once more, and what the cache holds besides them is not what the file has.
bool Commit::IsAlone() const {
    if (engine_.Cache().IsCurrent()) {
        return true;
    }
    CheckSize();
    for (const PagePtr& page : pages_) {
        static_cast<void>(Before(page->number));
    }
    return false;
}

// From the moment in which the journal is valid until it is gone nobody looks at the file: a valid journal
// that somebody finds is one of a writer that has died.
ChangeMark Commit::WritePages() {
    const ChangeMark before = ChangeMark::Read(file_, engine_.Layout());
    const int user = engine_.Users().User();
    const ChangeMark after = before.IsUsable() ? before.Advanced(user) : before;
    std::optional<CommitLock> lock;
    bool alone = true;
    try {
        lock.emplace(file_);
        journal_->Finish(before, user);
        alone = IsAlone();
    } catch (const basic::RuntimeError&) {
        DropUnfinished();
        throw;
    }
    try {
        WritePagesAlone(after);
    } catch (const basic::RuntimeError&) {
        TakeBack();
        throw;
    }
    return alone ? after : ChangeMark();
}

void Commit::WritePagesAlone(const ChangeMark& mark) {
    if (mark.IsUsable()) {
        mark.WriteSlot(file_, engine_.Users().User());
    }
    for (const PagePtr& page : pages_) {
        file_.WriteAt(std::uint64_t{page->number} * page->size, page->View().Span());
    }
    if (pages_.back()->number >= pageCount_) {
        file_.Sync();
    } else {
        file_.SyncData();
    }
    DropJournal(file_);
}

void Commit::DropUnfinished() {
    journal_.reset();
    try {
        DropJournal(file_);
    } catch (const basic::RuntimeError&) {
        return;  // whoever finds it sees that nothing was written
    }
}

// A journal that cannot be read back now stays, and with it the file is not opened as if it were whole.
void Commit::TakeBack() {
    if (UndoFromJournal(file_, engine_.Layout())) {
        DropJournal(file_);
    }
}

}  // namespace

ChangeMark CommitPages(Engine& engine, std::span<const PagePtr> pages) {
    return Commit(engine, pages).Run();
}

}  // namespace quardele::jet
