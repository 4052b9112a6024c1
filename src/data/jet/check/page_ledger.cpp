#include "check/page_ledger.h"

#include <algorithm>

namespace quardele::jet {

namespace {

constexpr std::size_t kSlots = 256;

Text NameOf(const CheckPlace& place) {
    return place.object.empty() ? place.table : place.table + u'.' + place.object;
}

}  // namespace

PageLedger::PageLedger(std::uint32_t pageCount, CheckReport& report)
    : report_(report), owners_(pageCount, kNobody), places_(kMaps + 1) {}

std::uint32_t PageLedger::AddOwner(const CheckPlace& place) {
    places_.push_back(place);
    return static_cast<std::uint32_t>(places_.size() - 1);
}

bool PageLedger::IsInside(std::uint32_t page, const CheckPlace& place) {
    if (page != 0 && page < owners_.size()) {
        return true;
    }
    report_.Add(FaultCode::PageOutside, place, page);
    return false;
}

bool PageLedger::Claim(std::uint32_t page, std::uint32_t owner) {
    if (!IsInside(page, places_[owner])) {
        return false;
    }
    if (owners_[page] != kNobody) {
        report_.Add(FaultCode::PageTwice, places_[owner], page, NameOf(places_[owners_[page]]));
        return false;
    }
    owners_[page] = owner;
    return true;
}

bool PageLedger::ClaimForMaps(std::uint32_t page, const CheckPlace& place) {
    if (!IsInside(page, place)) {
        return false;
    }
    if (owners_[page] != kNobody && owners_[page] != kMaps) {
        report_.Add(FaultCode::PageTwice, place, page, NameOf(places_[owners_[page]]));
        return false;
    }
    owners_[page] = kMaps;
    return true;
}

SlotMarks::SlotMarks(const std::vector<std::uint32_t>& pages)
    : pages_(pages), marks_(pages.size() * kSlots, false) {}

std::optional<std::size_t> SlotMarks::PositionOf(std::uint32_t page) const {
    const auto found = std::lower_bound(pages_.begin(), pages_.end(), page);
    if (found == pages_.end() || *found != page) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - pages_.begin());
}

bool SlotMarks::Mark(RowId slot) {
    const auto page = PositionOf(slot.page);
    if (!page) {
        return false;
    }
    const std::size_t bit = *page * kSlots + slot.slot;
    if (marks_[bit]) {
        return false;
    }
    marks_[bit] = true;
    return true;
}

bool SlotMarks::IsMarked(RowId slot) const {
    const auto page = PositionOf(slot.page);
    return page && marks_[*page * kSlots + slot.slot];
}

}  // namespace quardele::jet
