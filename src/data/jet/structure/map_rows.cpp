#include "structure/map_rows.h"

#include <algorithm>

#include "pages/data_page_editor.h"

namespace quardele::jet {

namespace {

/// An inline map of the usual size: 512 pages.
constexpr std::size_t kMapLength = usage_map::kInlineHeader + 64;
/// Pages of maps belong to no table.
constexpr std::uint32_t kNobody = 0;

}  // namespace

RowPointer MapRows::Add() {
    if (page_ != 0) {
        if (const auto map = AddTo(page_)) {
            return *map;
        }
    }
    Page& page = allocator_.Allocate();
    DataPageEditor::Initialise(page, pages_.Layout(), kNobody);
    page_ = page.number;
    const auto map = AddTo(page_);
    if (!map) {
        ThrowDamaged(page_, u"page de cartes sans place");
    }
    return *map;
}

std::optional<RowPointer> MapRows::AddTo(std::uint32_t page) {
    if (!DataPageEditor::MayHold(*pages_.Read(page), pages_.Layout(), kNobody, kMapLength)) {
        return std::nullopt;
    }
    DataPageEditor editor(pages_, page);
    const auto slotNumber = editor.Add(0, ByteString(kMapLength));
    if (!slotNumber) {
        return std::nullopt;
    }
    editor.Store();
    return RowPointer{page, *slotNumber};
}

void RemoveMapRows(Transaction& pages, PageAllocator& allocator, std::vector<RowPointer> maps) {
    std::sort(maps.begin(), maps.end());
    maps.erase(std::unique(maps.begin(), maps.end()), maps.end());
    for (auto map = maps.begin(); map != maps.end();) {
        const std::uint32_t page = map->page;
        const auto end =
            std::find_if(map, maps.end(), [page](RowPointer other) { return other.page != page; });
        if (page != 0) {
            DataPageEditor editor(pages, page);
            for (; map != end; ++map) {
                editor.Delete(map->slot);
            }
            editor.Store();
            if (!editor.HasLiveRows()) {
                allocator.Free(page);
            }
        }
        map = end;
    }
}

}  // namespace quardele::jet
