#include "pages/usage_map_editor.h"

#include <algorithm>

#include "pages/data_page.h"
#include "pages/usage_map.h"

namespace quardele::jet {

namespace {

[[nodiscard]] bool HasBit(const ByteView& bits, std::size_t index) {
    return (bits.U8(index / 8) >> index % 8 & 1) != 0;
}

void SetBit(std::span<std::uint8_t> bits, std::size_t index, bool value) {
    const auto mask = static_cast<std::uint8_t>(1u << index % 8);
    std::uint8_t& byte = bits[index / 8];
    byte = static_cast<std::uint8_t>(value ? byte | mask : byte & ~mask);
}

bool SetInline(Transaction& pages, RowPointer map, const RowBytes& row, std::uint32_t page, bool value) {
    const ByteView bits = row.bytes.From(usage_map::kInlineHeader);
    const std::uint32_t first = row.bytes.U32(1);
    if (page < first || page - first >= bits.Size() * 8) {
        return false;
    }
    if (HasBit(bits, page - first) != value) {
        const auto offset = static_cast<std::size_t>(bits.Span().data() - row.page->View().Span().data());
        SetBit(pages.Write(map.page).Mutable().subspan(offset), page - first, value);
    }
    return true;
}

bool SetReferenced(Transaction& pages, const ByteView& row, std::uint32_t page, bool value) {
    const std::size_t perBitmap = pages.Layout().PagesPerBitmap();
    const std::size_t entry = usage_map::kReferenceHeader + page / perBitmap * 4;
    if (entry + 4 > row.Size() || row.U32(entry) == 0) {
        return false;
    }
    const std::uint32_t number = row.U32(entry);
    const PagePtr bitmap = pages.Read(number);
    if (bitmap->Type() != PageType::UsageBitmap) {
        ThrowDamaged(number, u"page de carte attendue");
    }
    if (HasBit(bitmap->View().From(usage_map::kBitmapStart), page % perBitmap) != value) {
        SetBit(pages.Write(number).Mutable().subspan(usage_map::kBitmapStart), page % perBitmap, value);
    }
    return true;
}

}  // namespace

bool TrySetMapBit(Transaction& pages, RowPointer map, std::uint32_t page, bool value) {
    if (map.page == 0) {
        return false;
    }
    const RowBytes row = ReadRow(pages, map);
    if (row.bytes.IsEmpty()) {
        return false;
    }
    return row.bytes.U8(0) == usage_map::kInline ? SetInline(pages, map, row, page, value)
                                                 : SetReferenced(pages, row.bytes, page, value);
}

bool IsInMap(const PageSource& pages, RowPointer map, std::uint32_t page) {
    if (map.page == 0) {
        return false;
    }
    const RowBytes row = ReadRow(pages, map);
    if (row.bytes.IsEmpty()) {
        return false;
    }
    if (row.bytes.U8(0) == usage_map::kInline) {
        const ByteView bits = row.bytes.From(usage_map::kInlineHeader);
        const std::uint32_t first = row.bytes.U32(1);
        return page >= first && page - first < bits.Size() * 8 && HasBit(bits, page - first);
    }
    const std::size_t perBitmap = pages.Layout().PagesPerBitmap();
    const std::size_t entry = usage_map::kReferenceHeader + page / perBitmap * 4;
    if (entry + 4 > row.bytes.Size() || row.bytes.U32(entry) == 0) {
        return false;
    }
    const PagePtr bitmap = pages.Read(row.bytes.U32(entry));
    return HasBit(bitmap->View().From(usage_map::kBitmapStart), page % perBitmap);
}

std::optional<std::uint32_t> LowestInMap(const PageSource& pages, RowPointer map, std::uint32_t from) {
    if (from >= pages.PageCount()) {
        return std::nullopt;
    }
    const std::vector<std::uint32_t> members = ReadUsageMap(pages, map);
    const auto found = std::lower_bound(members.begin(), members.end(), from);
    return found == members.end() ? std::nullopt : std::optional(*found);
}

}  // namespace quardele::jet
