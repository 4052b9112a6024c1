#include "usage_map_editor.h"

#include <algorithm>

#include "data_page.h"
#include "usage_map.h"

namespace quardele::jet {

namespace {

void SetBit(std::span<std::uint8_t> bits, std::size_t index, bool value) {
    const auto mask = static_cast<std::uint8_t>(1u << index % 8);
    std::uint8_t& byte = bits[index / 8];
    byte = static_cast<std::uint8_t>(value ? byte | mask : byte & ~mask);
}

bool SetInline(Transaction& pages, RowPointer map, const ByteView& row, std::uint32_t page, bool value) {
    const std::uint32_t first = row.U32(1);
    const std::size_t bits = (row.Size() - usage_map::kInlineHeader) * 8;
    if (page < first || page - first >= bits) {
        return false;
    }
    const PagePtr held = pages.Read(map.page);
    const auto offset = static_cast<std::size_t>(row.Span().data() - held->View().Span().data());
    SetBit(pages.Write(map.page).Mutable().subspan(offset + usage_map::kInlineHeader), page - first, value);
    return true;
}

bool SetReferenced(Transaction& pages, const ByteView& row, std::uint32_t page, bool value) {
    const std::size_t perBitmap = pages.Layout().PagesPerBitmap();
    const std::size_t entry = usage_map::kReferenceHeader + page / perBitmap * 4;
    if (entry + 4 > row.Size() || row.U32(entry) == 0) {
        return false;
    }
    Page& bitmap = pages.Write(row.U32(entry));
    if (bitmap.Type() != PageType::UsageBitmap) {
        ThrowDamaged(bitmap.number, u"page de carte attendue");
    }
    SetBit(bitmap.Mutable().subspan(usage_map::kBitmapStart), page % perBitmap, value);
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
    return row.bytes.U8(0) == usage_map::kInline ? SetInline(pages, map, row.bytes, page, value)
                                                 : SetReferenced(pages, row.bytes, page, value);
}

std::optional<std::uint32_t> LowestInMap(const PageSource& pages, RowPointer map, std::uint32_t from) {
    const std::vector<std::uint32_t> members = ReadUsageMap(pages, map);
    const auto found = std::lower_bound(members.begin(), members.end(), from);
    return found == members.end() ? std::nullopt : std::optional(*found);
}

}  // namespace quardele::jet
