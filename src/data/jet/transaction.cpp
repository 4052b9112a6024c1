#include "transaction.h"

#include <vector>

#include <basic/runtime_error.h>

#include "journal.h"

namespace quardele::jet {

Transaction::Transaction(PageCache& cache)
    : PageSource(cache.Layout()), cache_(cache), pageCount_(cache.PageCount()) {}

Transaction::~Transaction() {
    cache_.Touch();  // what was computed from the pages of this transaction is stale
}

PagePtr Transaction::ReadInside(std::uint32_t number) const {
    const auto found = changed_.find(number);
    return found == changed_.end() ? cache_.Read(number) : found->second;
}

Page& Transaction::Write(std::uint32_t number) {
    const PagePtr page = Read(number);
    cache_.Touch();
    ChangedPage& changed = changed_[number];
    Remember(number, changed);
    // Two references are ours: `page` and `changed`. Who holds a third one may rely on its bytes.
    constexpr long kOurs = 2;
    if (!changed || changed.use_count() > kOurs) {
        changed = std::make_shared<Page>(*page);
    }
    return *changed;
}

Page& Transaction::Append() {
    if (std::uint64_t{pageCount_ + 1} * Layout().pageSize > kLargestFile) {
        throw basic::RuntimeError(basic::error::kDiskFullDatabase,
                                  u"Le fichier de données a atteint sa taille maximale de 2 Go.");
    }
    cache_.Touch();
    auto page = std::make_shared<Page>();
    page->number = pageCount_++;
    page->size = Layout().pageSize;
    Remember(page->number, nullptr);
    return *(changed_[page->number] = std::move(page));
}

void Transaction::Remember(std::uint32_t number, const ChangedPage& before) {
    if (!parts_.empty()) {
        parts_.back().before.try_emplace(number, before);
    }
}

void Transaction::BeginPart() {
    parts_.push_back({.pageCount = pageCount_, .before = {}});
}

void Transaction::KeepPart() {
    const Part part = std::move(parts_.back());
    parts_.pop_back();
    for (const auto& [number, before] : part.before) {
        Remember(number, before);
    }
}

void Transaction::UndoPart() {
    Part part = std::move(parts_.back());
    parts_.pop_back();
    for (auto& [number, before] : part.before) {
        if (before) {
            changed_[number] = std::move(before);
        } else {
            changed_.erase(number);
        }
    }
    pageCount_ = part.pageCount;
    cache_.Touch();
}

void Transaction::DropUnchanged() {
    std::erase_if(changed_, [this](const auto& entry) {
        const auto& [number, page] = entry;
        return number < cache_.PageCount() &&
               CompareBytes(page->View().Span(), cache_.Read(number)->View().Span()) == 0;
    });
}

void Transaction::Commit(OsFile& file) {
    DropUnchanged();
    if (changed_.empty()) {
        return;
    }
    std::vector<JournalRecord> records;
    for (const auto& [number, page] : changed_) {
        const PagePtr before = number < cache_.PageCount() ? cache_.Read(number) : nullptr;
        records.push_back({.before = before, .after = page});
    }
    CommitThroughJournal(file, Layout(), cache_.PageCount(), records);
    for (const auto& [number, page] : changed_) {
        cache_.Put(page);
    }
    changed_.clear();
}

}  // namespace quardele::jet
