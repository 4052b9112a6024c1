// A change of the file on its way: pages as they shall become, until Commit writes them in one atomic step.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "file/page.h"
#include "file/page_cache.h"
#include "locks/row_locks.h"
#include "rows/row_pointer.h"

namespace quardele::jet {

/// Where the last changes found room, so that the next ones need not search again. Hints: what they say is
/// looked at before it is used.
struct RoomMemory {
    /// For an owner of rows, by the place of its map of pages with room.
    struct Owner {
        std::uint32_t lastUsed = 0;    ///< the page that took the last row
        std::uint32_t searchFrom = 0;  ///< pages before it had no room when they were looked at
    };
    std::map<RowId, Owner> owners;
    std::uint32_t freeFrom = 0;  ///< no page before it is free
};

/// Writes pages to the file, all of them or, on an error, none.
using PageWriter = std::function<void(std::span<const PagePtr>)>;

/// The pages of a file with changes on top. Nothing reaches the file before Commit; a transaction that is
/// dropped has changed nothing.
class Transaction final : public PageSource {
 public:
    /// `locks` are those of the file's rows; null for a file that nobody else knows.
    explicit Transaction(PageCache& cache, RowLocks* locks = nullptr);
    ~Transaction() override;

    [[nodiscard]] std::uint32_t PageCount() const override { return pageCount_; }
    [[nodiscard]] std::uint64_t Generation() const override { return cache_.Generation(); }
    /// A page to change. The reference is good until the next Read or Write of this page. Throws like Read.
    [[nodiscard]] Page& Write(std::uint32_t number);
    /// A zero page behind the end of the file. Throws 3026 when the file has its largest size.
    [[nodiscard]] Page& Append();

    [[nodiscard]] RoomMemory& Room() { return room_; }
    /// Locks a row that the change of another one takes along, until the end of the step. Throws 3260 or 3188
    /// at once when somebody else has it.
    void LockRow(RowId row) {
        if (locks_ != nullptr) {
            locks_->LockForStep(row);
        }
    }

    /// Runs a change that finds out whether it is allowed before it writes. When it throws after it has begun
    /// to write nonetheless, its part must be undone, or else Commit throws 3219.
    template <class Change>
    auto AsOne(const Change& change) {
        const std::uint64_t before = writes_;
        try {
            return change();
        } catch (...) {
            broken_ = broken_ || writes_ != before;
            throw;
        }
    }

    /// Runs a change that can be refused in the middle: then nothing of it stays.
    template <class Change>
    void AsPart(const Change& change) {
        BeginPart();
        try {
            change();
        } catch (...) {
            UndoPart();
            throw;
        }
        KeepPart();
    }

    // Parts of a transaction that can be undone alone. They nest: the last one begun ends first.
    void BeginPart();
    void KeepPart();
    void UndoPart();

    /// Hands the changed pages, in ascending order, to who writes them, and takes over into the cache what
    /// was written; false when nothing has changed.
    bool Commit(const PageWriter& write);

 protected:
    [[nodiscard]] PagePtr ReadInside(std::uint32_t number) const override;
    [[nodiscard]] PagePtr ReadFirstInside(std::span<const std::uint32_t> pages) const override;

 private:
    using ChangedPage = std::shared_ptr<Page>;

    /// How the pages that a part has changed were before it; null for one that it was the first to change.
    struct Part {
        std::uint32_t pageCount = 0;
        std::uint64_t writes = 0;
        bool broken = false;
        std::map<std::uint32_t, ChangedPage> before;
    };

    void Remember(std::uint32_t number, const ChangedPage& before);
    void DropUnchanged();

    PageCache& cache_;
    RowLocks* locks_;
    std::uint32_t pageCount_;
    std::unordered_map<std::uint32_t, ChangedPage> changed_;
    std::vector<Part> parts_;
    RoomMemory room_;
    std::uint64_t writes_ = 0;
    bool broken_ = false;  ///< holds half of a change
};

}  // namespace quardele::jet
