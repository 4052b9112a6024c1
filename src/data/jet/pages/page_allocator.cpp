#include "pages/page_allocator.h"

#include <algorithm>
#include <vector>

#include <basic/runtime_error.h>

#include "pages/data_page_editor.h"
#include "pages/usage_map.h"
#include "pages/usage_map_editor.h"

namespace quardele::jet {

namespace {

constexpr RowPointer kFreeMap{.page = kGlobalMapPage, .slot = 0};
/// An inline map of the usual size: 512 pages.
constexpr std::size_t kUsualMap = usage_map::kInlineHeader + 64;

void InitialiseBitmap(Page& page, std::uint8_t fill) {
    const auto bytes = page.Mutable();
    bytes[0] = static_cast<std::uint8_t>(PageType::UsageBitmap);
    bytes[1] = kLivePage;
    const auto bits = bytes.subspan(usage_map::kBitmapStart);
    std::fill(bits.begin(), bits.end(), fill);
}

// Maps grow by four bytes at a time.
std::size_t InlineLength(std::uint32_t first, std::uint32_t last) {
    const std::size_t bytes = (last - first) / 8 + 1;
    return usage_map::kInlineHeader + (bytes + 3) / 4 * 4;
}

[[noreturn]] void ThrowNoRoomInMap() {
    throw basic::RuntimeError(
        basic::error::kOperationNotSupported,
        u"Une carte de pages de ce fichier ne peut plus grandir ; compactez le fichier.");
}

ByteString RowCopy(const PageSource& pages, RowPointer pointer) {
    const RowBytes row = ReadRow(pages, pointer);
    return {row.bytes.Span().begin(), row.bytes.Span().end()};
}

bool TryReplaceRow(Transaction& pages, RowPointer pointer, const ByteString& bytes) {
    DataPageEditor editor(pages, pointer.page);
    if (!editor.Replace(pointer.slot, 0, bytes)) {
        return false;
    }
    editor.Store();
    return true;
}

}  // namespace

Page& PageAllocator::Allocate() {
    std::uint32_t& searchFrom = pages_.Room().freeFrom;
    const auto found = LowestInMap(pages_, kFreeMap, searchFrom);
    searchFrom = found ? *found + 1 : pages_.PageCount();
    if (!found) {
        return Extend();
    }
    if (*found <= kCatalogPage) {
        ThrowDamaged(kGlobalMapPage, u"pages libres impossibles");
    }
    MarkUsed(*found);
    Page& page = pages_.Write(*found);
    const auto bytes = page.Mutable();
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
    return page;
}

Page& PageAllocator::Extend() {
    const std::uint32_t number = pages_.Append().number;
    MarkUsed(number);
    return pages_.Write(number);
}

void PageAllocator::MarkUsed(std::uint32_t page) {
    if (!TrySetMapBit(pages_, kFreeMap, page, false)) {
        GrowFreeMap(page);
    }
}

void PageAllocator::Free(std::uint32_t page) {
    std::uint8_t& type = pages_.Write(page).bytes[0];
    type = static_cast<std::uint8_t>(type | kFreedPage);
    if (TrySetMapBit(pages_, kFreeMap, page, true)) {
        std::uint32_t& searchFrom = pages_.Room().freeFrom;
        searchFrom = std::min(searchFrom, page);
    }
}

// What lies behind the map of free pages counts as free, so new room in it starts as ones.
void PageAllocator::GrowFreeMap(std::uint32_t page) {
    ByteString row = RowCopy(pages_, kFreeMap);
    if (row.empty() || row[0] == usage_map::kReference) {
        const auto block = static_cast<std::size_t>(page / pages_.Layout().PagesPerBitmap());
        Page& bitmap = pages_.Append();
        InitialiseBitmap(bitmap, 0xFF);
        const std::uint32_t bitmapPage = bitmap.number;
        AddBlock(kFreeMap, block, bitmapPage);
        MarkUsed(page);
        return MarkUsed(bitmapPage);
    }
    const std::uint32_t first = ByteView(row, kGlobalMapPage).U32(1);
    if (page < first) {
        return;  // forgotten by a map that was moved forward: it is in use for good
    }
    row.resize(InlineLength(first, page), 0xFF);
    if (TryReplaceRow(pages_, kFreeMap, row)) {
        return MarkUsed(page);
    }
    // Page 1 is full: from now on the bits stand on pages of their own.
    const std::vector<std::uint32_t> free = ReadUsageMap(pages_, kFreeMap);
    StoreEmptyReference(kFreeMap);
    for (std::size_t block = 0; block <= page / pages_.Layout().PagesPerBitmap(); ++block) {
        Page& bitmap = pages_.Append();
        InitialiseBitmap(bitmap, 0xFF);
        AddBlock(kFreeMap, block, bitmap.number);
    }
    for (std::uint32_t number = 0; number < pages_.PageCount(); ++number) {
        if (!std::binary_search(free.begin(), free.end(), number)) {
            MarkUsed(number);
        }
    }
}

void PageAllocator::AddToMap(RowPointer map, std::uint32_t page) {
    if (map.page == 0) {
        throw basic::RuntimeError(basic::error::kOperationNotSupported,
                                  u"Ce champ n'a pas de carte de pages ; compactez le fichier.");
    }
    if (!TrySetMapBit(pages_, map, page, true)) {
        GrowMap(map, page);
    }
}

void PageAllocator::RemoveFromMap(RowPointer map, std::uint32_t page) {
    // A page that the map does not reach is not in it.
    static_cast<void>(TrySetMapBit(pages_, map, page, false));
}

// First the inline map moves, then it grows, at last its bits get pages of their own.
void PageAllocator::GrowMap(RowPointer map, std::uint32_t page) {
    const ByteString row = RowCopy(pages_, map);
    if (!row.empty() && row[0] == usage_map::kReference) {
        const auto block = static_cast<std::size_t>(page / pages_.Layout().PagesPerBitmap());
        Page& bitmap = Allocate();
        InitialiseBitmap(bitmap, 0);
        AddBlock(map, block, bitmap.number);
        return AddToMap(map, page);
    }
    std::vector<std::uint32_t> members = ReadUsageMap(pages_, map);
    members.insert(std::upper_bound(members.begin(), members.end(), page), page);
    const std::size_t wanted = InlineLength(members.front() / 8 * 8, members.back());
    if (!TryStoreInline(map, members, std::max(row.size(), wanted))) {
        StoreReferenced(map, members);
    }
}

bool PageAllocator::TryStoreInline(RowPointer map, std::span<const std::uint32_t> members,
                                   std::size_t length) {
    ByteString row(std::max(length, kUsualMap));
    const std::uint32_t first = members.front() / 8 * 8;
    StoreLittle(std::span(row).subspan(1), first);
    for (const std::uint32_t member : members) {
        const std::size_t bit = member - first;
        row[usage_map::kInlineHeader + bit / 8] |= static_cast<std::uint8_t>(1u << bit % 8);
    }
    return TryReplaceRow(pages_, map, row);
}

void PageAllocator::StoreEmptyReference(RowPointer map) {
    ByteString row(std::max(RowCopy(pages_, map).size(), kUsualMap));
    row[0] = usage_map::kReference;
    if (!TryReplaceRow(pages_, map, row)) {
        ThrowNoRoomInMap();
    }
}

void PageAllocator::StoreReferenced(RowPointer map, std::span<const std::uint32_t> members) {
    StoreEmptyReference(map);
    for (const std::uint32_t member : members) {
        AddToMap(map, member);
    }
}

void PageAllocator::AddBlock(RowPointer map, std::size_t block, std::uint32_t bitmapPage) {
    ByteString row = RowCopy(pages_, map);
    const std::size_t entry = usage_map::kReferenceHeader + block * 4;
    row.resize(std::max(row.size(), entry + 4));
    StoreLittle(std::span(row).subspan(entry), bitmapPage);
    if (!TryReplaceRow(pages_, map, row)) {
        ThrowNoRoomInMap();
    }
}

}  // namespace quardele::jet
