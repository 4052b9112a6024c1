// A change of the file on its way: pages as they shall become, until Commit writes them in one atomic step.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "page.h"
#include "page_cache.h"

namespace quardele::jet {

/// The pages of a file with changes on top. Nothing reaches the file before Commit; a transaction that is
/// dropped has changed nothing.
class Transaction final : public PageSource {
 public:
    explicit Transaction(PageCache& cache);
    ~Transaction() override;

    [[nodiscard]] std::uint32_t PageCount() const override { return pageCount_; }
    [[nodiscard]] std::uint64_t Generation() const override { return cache_.Generation(); }
    /// A page to change. The reference is good until the next Read or Write of this page. Throws like Read.
    [[nodiscard]] Page& Write(std::uint32_t number);
    /// A zero page behind the end of the file. Throws 3026 when the file has its largest size.
    [[nodiscard]] Page& Append();

    // Parts of a transaction that can be undone alone. They nest: the last one begun ends first.
    void BeginPart();
    void KeepPart();
    void UndoPart();

    /// Writes the changed pages to the file, so that after a crash at any moment either all or none of them
    /// are there, and returns when they are on the disk. On an error the file is as before.
    void Commit(OsFile& file);

 protected:
    [[nodiscard]] PagePtr ReadInside(std::uint32_t number) const override;

 private:
    using ChangedPage = std::shared_ptr<Page>;

    /// How the pages that a part has changed were before it; null for one that it was the first to change.
    struct Part {
        std::uint32_t pageCount = 0;
        std::map<std::uint32_t, ChangedPage> before;
    };

    void Remember(std::uint32_t number, const ChangedPage& before);
    void DropUnchanged();

    PageCache& cache_;
    std::uint32_t pageCount_;
    std::map<std::uint32_t, ChangedPage> changed_;
    std::vector<Part> parts_;
};

}  // namespace quardele::jet
