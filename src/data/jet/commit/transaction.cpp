#include "commit/transaction.h"

#include <algorithm>
#include <vector>

#include <basic/runtime_error.h>

namespace quardele::jet {

Transaction::Transaction(PageCache& cache, RowLocks* locks)
    : PageSource(cache.Layout()), cache_(cache), locks_(locks), pageCount_(cache.PageCount()) {}

Transaction::~Transaction() {
    cache_.Touch();  // what was computed from the pages of this transaction is stale
}

PagePtr Transaction::ReadInside(std::uint32_t number) const {
    const auto found = changed_.find(number);
    return found == changed_.end() ? cache_.Read(number) : found->second;
}

PagePtr Transaction::ReadFirstInside(std::span<const std::uint32_t> pages) const {
    const auto found = changed_.find(pages.front());
    return found == changed_.end() ? cache_.ReadFirst(pages) : found->second;
}

Page& Transaction::Write(std::uint32_t number) {
    cache_.Touch();
    ++writes_;
    const auto found = changed_.find(number);
    if (found == changed_.end()) {
        auto copy = std::make_shared<Page>(*Read(number));
        Remember(number, nullptr);
        return *(changed_[number] = std::move(copy));
    }
    ChangedPage& changed = found->second;
    Remember(number, changed);
    // Who holds another reference may rely on its bytes.
    if (changed.use_count() > 1) {
        changed = std::make_shared<Page>(*changed);
    }
    return *changed;
}

Page& Transaction::Append() {
    if (std::uint64_t{pageCount_ + 1} * Layout().pageSize > kLargestFile) {
        throw basic::RuntimeError(basic::error::kDiskFullDatabase,
                                  u"Le fichier de données a atteint sa taille maximale de 2 Go.");
    }
    cache_.Touch();
    ++writes_;
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
    parts_.push_back({.pageCount = pageCount_, .writes = writes_, .broken = broken_, .before = {}});
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
    writes_ = part.writes;
    broken_ = part.broken;
    room_ = {};
    cache_.Touch();
}

void Transaction::DropUnchanged() {
    std::erase_if(changed_, [this](const auto& entry) {
        const auto& [number, page] = entry;
        return number < cache_.PageCount() &&
               CompareBytes(page->View().Span(), cache_.Read(number)->View().Span()) == 0;
    });
}

bool Transaction::Commit(const PageWriter& write) {
    if (broken_) {
        throw basic::RuntimeError(
            basic::error::kInvalidOperation,
            u"Une modification s'est arrêtée à mi-chemin ; l'ensemble ne peut pas être enregistré.");
    }
    DropUnchanged();
    if (changed_.empty()) {
        return false;
    }
    std::vector<PagePtr> pages;
    for (const auto& [number, page] : changed_) {
        pages.push_back(page);
    }
    std::sort(pages.begin(), pages.end(),
              [](const PagePtr& left, const PagePtr& right) { return left->number < right->number; });
    write(pages);
    for (const PagePtr& page : pages) {
        cache_.Put(page);
    }
    changed_.clear();
    return true;
}

}  // namespace quardele::jet
