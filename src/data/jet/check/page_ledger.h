// Whose each page of a file is, as a check finds it out.
#pragma once

#include <optional>
#include <vector>

#include "check/check_report.h"

namespace quardele::jet {

/// One owner per page. Pages that hold rows of several maps belong to all maps together.
class PageLedger {
 public:
    PageLedger(std::uint32_t pageCount, CheckReport& report);

    [[nodiscard]] std::uint32_t PageCount() const { return static_cast<std::uint32_t>(owners_.size()); }
    /// A new owner. `place` is named when somebody else claims one of its pages.
    [[nodiscard]] std::uint32_t AddOwner(const CheckPlace& place);
    /// Gives a page to an owner. False, and a finding at the owner's place, when it lies outside the file or
    /// has an owner already.
    bool Claim(std::uint32_t page, std::uint32_t owner);
    /// Gives a page to the maps; again and again if need be.
    bool ClaimForMaps(std::uint32_t page, const CheckPlace& place);
    [[nodiscard]] bool IsClaimed(std::uint32_t page) const { return owners_[page] != kNobody; }
    [[nodiscard]] bool IsMapPage(std::uint32_t page) const { return owners_[page] == kMaps; }

 private:
    static constexpr std::uint32_t kNobody = 0;
    static constexpr std::uint32_t kMaps = 1;

    [[nodiscard]] bool IsInside(std::uint32_t page, const CheckPlace& place);

    CheckReport& report_;
    std::vector<std::uint32_t> owners_;
    std::vector<CheckPlace> places_;
};

/// Marks on slots of the pages of a list.
class SlotMarks {
 public:
    /// `pages` in ascending order; it must outlive the marks.
    explicit SlotMarks(const std::vector<std::uint32_t>& pages);

    /// False when the page is not in the list.
    [[nodiscard]] bool Contains(std::uint32_t page) const { return PositionOf(page).has_value(); }
    /// Marks a slot of a listed page; false when it was marked already.
    bool Mark(RowId slot);
    [[nodiscard]] bool IsMarked(RowId slot) const;

 private:
    [[nodiscard]] std::optional<std::size_t> PositionOf(std::uint32_t page) const;

    const std::vector<std::uint32_t>& pages_;
    std::vector<bool> marks_;
};

}  // namespace quardele::jet
