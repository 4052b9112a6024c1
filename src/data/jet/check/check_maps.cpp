#include "check/check_maps.h"

#include <algorithm>

#include "pages/data_page.h"
#include "pages/usage_map.h"

namespace quardele::jet {

namespace {

// Calls use(firstPage, bits) for each stretch of bits of a map, wherever it is stored.
template <class Use>
void ForEachStretch(const PageSource& pages, const ByteView& row, const Use& use) {
    if (row.U8(0) == usage_map::kInline) {
        use(std::uint64_t{row.U32(1)}, row.From(usage_map::kInlineHeader), kHeaderPage);
        return;
    }
    if (row.U8(0) != usage_map::kReference) {
        ThrowDamaged(row.Page(), u"carte de pages de forme inconnue");
    }
    const std::size_t blocks = (row.Size() - usage_map::kReferenceHeader) / 4;
    for (std::size_t block = 0; block < blocks; ++block) {
        const std::uint32_t number = row.U32(usage_map::kReferenceHeader + block * 4);
        if (number == 0) {
            continue;
        }
        const PagePtr page = pages.Read(number);
        if (page->Type() != PageType::UsageBitmap) {
            ThrowDamaged(number, u"page de carte attendue");
        }
        use(std::uint64_t{block} * pages.Layout().PagesPerBitmap(),
            page->View().From(usage_map::kBitmapStart), number);
    }
}

class MapReader {
 public:
    MapReader(CheckContext& context, const CheckPlace& place)
        : context_(context), place_(place), owner_(context.ledger.AddOwner(place)) {}

    std::vector<std::uint32_t> Read(RowPointer map) {
        const RowBytes row = ReadRow(context_.pages, map);
        const bool isDeleted = DataPage(*row.page, context_.pages.Layout()).Flags(map.slot) == slot::kDeleted;
        if (!row.bytes.IsEmpty() && !isDeleted) {
            ForEachStretch(context_.pages, row.bytes,
                           [this](std::uint64_t first, const ByteView& bits, std::uint32_t bitmapPage) {
                               ReadBits(first, bits, bitmapPage);
                           });
        }
        return std::move(members_);
    }

 private:
    void ReadBits(std::uint64_t firstPage, const ByteView& bits, std::uint32_t bitmapPage) {
        if (bitmapPage != kHeaderPage) {
            context_.ledger.Claim(bitmapPage, owner_);
        }
        for (std::size_t i = 0; i < bits.Size() * 8; ++i) {
            if ((bits.U8(i / 8) >> (i % 8) & 1) == 0) {
                continue;
            }
            if (firstPage + i == kHeaderPage || firstPage + i >= context_.pages.PageCount()) {
                context_.report.Add(FaultCode::PageOutside, place_, bits.Page(), NumberText(firstPage + i));
            } else {
                members_.push_back(static_cast<std::uint32_t>(firstPage + i));
            }
        }
    }

    CheckContext& context_;
    const CheckPlace& place_;
    std::uint32_t owner_;
    std::vector<std::uint32_t> members_;
};

}  // namespace

std::vector<std::uint32_t> CheckMap(CheckContext& context, RowPointer map, const CheckPlace& place) {
    std::vector<std::uint32_t> pages;
    if (map.page == 0 || !context.ledger.ClaimForMaps(map.page, place)) {
        return pages;
    }
    if (!context.mapRows.insert(map).second) {
        context.report.Add(FaultCode::MapShape, place, map.page, u"une autre carte a la même ligne");
    }
    context.report.Guard(FaultCode::MapShape, place, map.page,
                         [&] { pages = MapReader(context, place).Read(map); });
    return pages;
}

FreePages::FreePages(CheckContext& context) : states_(context.pages.PageCount(), State::Free) {
    const CheckPlace place;
    if (!context.ledger.ClaimForMaps(kGlobalMapPage, place)) {
        return;
    }
    const std::uint32_t owner = context.ledger.AddOwner(place);
    context.report.Guard(FaultCode::MapShape, place, kGlobalMapPage, [&] {
        const RowBytes row = ReadRow(context.pages, {.page = kGlobalMapPage, .slot = 0});
        ForEachStretch(context.pages, row.bytes,
                       [&](std::uint64_t first, const ByteView& bits, std::uint32_t bitmapPage) {
                           if (bitmapPage == kHeaderPage) {
                               ForgetBefore(first);
                           } else {
                               context.ledger.Claim(bitmapPage, owner);
                           }
                           ReadBits(first, bits);
                       });
    });
}

void FreePages::ReadBits(std::uint64_t firstPage, const ByteView& bits) {
    for (std::size_t i = 0; i < bits.Size() * 8 && firstPage + i < states_.size(); ++i) {
        states_[static_cast<std::size_t>(firstPage + i)] =
            (bits.U8(i / 8) >> (i % 8) & 1) != 0 ? State::Free : State::InUse;
    }
}

// A map that has moved on with the end of the file has forgotten the pages before it.
void FreePages::ForgetBefore(std::uint64_t firstPage) {
    const std::size_t end = std::min<std::size_t>(firstPage, states_.size());
    std::fill_n(states_.begin(), end, State::Forgotten);
}

std::vector<std::uint32_t> FreePages::CompareWithClaims(CheckContext& context) const {
    std::vector<std::uint32_t> lost;
    for (std::uint32_t page = 1; page < states_.size(); ++page) {
        const bool isClaimed = context.ledger.IsClaimed(page);
        if (isClaimed && states_[page] == State::Free) {
            context.report.Add(FaultCode::PageFree, {}, page);
        } else if (!isClaimed && states_[page] == State::InUse) {
            lost.push_back(page);
        }
    }
    return lost;
}

}  // namespace quardele::jet
