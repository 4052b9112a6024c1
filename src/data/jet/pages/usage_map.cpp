#include "pages/usage_map.h"

#include "pages/data_page.h"

namespace quardele::jet {

namespace {

void AppendBits(const ByteView& bits, std::uint64_t firstPage, std::uint32_t pageCount,
                std::vector<std::uint32_t>& result) {
    for (std::size_t i = 0; i < bits.Size(); ++i) {
        const std::uint8_t byte = bits.U8(i);
        for (unsigned bit = 0; byte >> bit != 0; ++bit) {
            const std::uint64_t page = firstPage + i * 8 + bit;
            if ((byte >> bit & 1) != 0 && page < pageCount) {
                result.push_back(static_cast<std::uint32_t>(page));
            }
        }
    }
}

void AppendReferenced(const PageSource& pages, const ByteView& row, std::vector<std::uint32_t>& result) {
    const std::size_t blocks = (row.Size() - usage_map::kReferenceHeader) / 4;
    for (std::size_t block = 0; block < blocks; ++block) {
        const std::uint32_t number = row.U32(usage_map::kReferenceHeader + block * 4);
        const std::uint64_t first = std::uint64_t{block} * pages.Layout().PagesPerBitmap();
        if (number == 0 || first >= pages.PageCount()) {
            continue;
        }
        const PagePtr page = pages.Read(number);
        if (page->Type() != PageType::UsageBitmap) {
            ThrowDamaged(number, u"page de carte attendue");
        }
        AppendBits(page->View().From(usage_map::kBitmapStart), first, pages.PageCount(), result);
    }
}

}  // namespace

std::vector<std::uint32_t> ReadUsageMap(const PageSource& pages, RowPointer map) {
    std::vector<std::uint32_t> result;
    if (map.page == 0) {
        return result;
    }
    const PagePtr page = pages.Read(map.page);
    const DataPage slots(*page, pages.Layout());
    const ByteView row = slots.Row(map.slot);
    if (row.IsEmpty() || slots.Flags(map.slot) == slot::kDeleted) {
        return result;
    }
    switch (row.U8(0)) {
        case usage_map::kInline:
            AppendBits(row.From(usage_map::kInlineHeader), row.U32(1), pages.PageCount(), result);
            return result;
        case usage_map::kReference:
            AppendReferenced(pages, row, result);
            return result;
        default:
            ThrowDamaged(map.page, u"carte de pages de forme inconnue");
    }
}

std::vector<std::uint32_t> BitmapPages(const PageSource& pages, RowPointer map) {
    std::vector<std::uint32_t> result;
    if (map.page == 0) {
        return result;
    }
    const PagePtr page = pages.Read(map.page);
    const DataPage slots(*page, pages.Layout());
    const ByteView row = slots.Row(map.slot);
    if (row.IsEmpty() || slots.Flags(map.slot) == slot::kDeleted || row.U8(0) != usage_map::kReference) {
        return result;
    }
    for (std::size_t at = usage_map::kReferenceHeader; at + 4 <= row.Size(); at += 4) {
        if (row.U32(at) != 0) {
            result.push_back(row.U32(at));
        }
    }
    return result;
}

}  // namespace quardele::jet
