#include "pages/row_pages.h"

#include <algorithm>

#include "pages/usage_map.h"
#include "pages/usage_map_editor.h"

namespace quardele::jet {

RowPointer RowPages::Add(std::uint16_t flags, const ByteString& row) {
    if (const auto page = PageWithRoom(row.size())) {
        if (const auto place = TryAdd(*page, flags, row)) {
            return *place;
        }
    }
    Page& page = allocator_.Allocate();
    const std::uint32_t number = page.number;
    DataPageEditor::Initialise(page, pages_.Layout(), owner_.owner);
    allocator_.AddToMap(owner_.ownedMap, number);
    const auto place = TryAdd(number, flags, row);
    if (!place) {
        ThrowDamaged(number, u"page de données sans place");
    }
    return *place;
}

// First the page that took the last row, then those of the map from the lowest on. A page that had no room is
// not looked at again by this transaction, and not more than some are looked at for one row: rows that fit
// nowhere must not read the whole table.
std::optional<std::uint32_t> RowPages::PageWithRoom(std::size_t length) {
    constexpr int kMostLooks = 64;
    RoomMemory::Owner& memory = Memory();
    // It may have gone to another owner meanwhile.
    if (memory.lastUsed != 0 && IsInMap(pages_, owner_.ownedMap, memory.lastUsed) &&
        MayHold(memory.lastUsed, length)) {
        return memory.lastUsed;
    }
    const std::vector<std::uint32_t> pages = ReadUsageMap(pages_, owner_.freeMap);
    if (!pages.empty() && memory.lastUsed == 0 && MayHold(pages.back(), length)) {
        return pages.back();
    }
    auto page = std::lower_bound(pages.begin(), pages.end(), memory.searchFrom);
    for (int looks = 0; page != pages.end() && looks < kMostLooks; ++page, ++looks) {
        memory.searchFrom = *page + 1;
        if (MayHold(*page, length)) {
            return *page;
        }
    }
    return std::nullopt;
}

bool RowPages::MayHold(std::uint32_t page, std::size_t length) const {
    return page < pages_.PageCount() &&
           DataPageEditor::MayHold(*pages_.Read(page), pages_.Layout(), owner_.owner, length);
}

RoomMemory::Owner& RowPages::Memory() {
    return pages_.Room().owners[owner_.ownedMap];
}

std::optional<RowPointer> RowPages::TryAdd(std::uint32_t page, std::uint16_t flags, const ByteString& row) {
    DataPageEditor editor(pages_, page);
    const auto slotNumber = editor.Add(flags, row);
    if (!slotNumber) {
        return std::nullopt;
    }
    Save(page, editor);
    Memory().lastUsed = page;
    return RowPointer{page, *slotNumber};
}

bool RowPages::TryReplace(RowPointer place, std::uint16_t flags, const ByteString& row) {
    DataPageEditor editor = Open(place.page);
    if (!editor.Replace(place.slot, flags, row)) {
        return false;
    }
    Save(place.page, editor);
    return true;
}

void RowPages::Delete(RowPointer place) {
    DataPageEditor editor = Open(place.page);
    editor.Delete(place.slot);
    if (editor.HasLiveRows() || !owner_.givesEmptyPagesBack) {
        return Save(place.page, editor);
    }
    allocator_.RemoveFromMap(owner_.ownedMap, place.page);
    allocator_.RemoveFromMap(owner_.freeMap, place.page);
    // It may be another column's next, whose pages look like ours.
    if (Memory().lastUsed == place.page) {
        Memory().lastUsed = 0;
    }
    allocator_.Free(place.page);
}

DataPageEditor RowPages::Open(std::uint32_t page) const {
    DataPageEditor editor(pages_, page);
    if (editor.Owner() != owner_.owner) {
        ThrowDamaged(page, u"page de données d'un autre propriétaire");
    }
    return editor;
}

void RowPages::Save(std::uint32_t page, DataPageEditor& editor) {
    editor.Store();
    if (editor.FreeBytes() < kWorthTrying || !editor.HasFreeSlot()) {
        return allocator_.RemoveFromMap(owner_.freeMap, page);
    }
    allocator_.AddToMap(owner_.freeMap, page);
    std::uint32_t& searchFrom = Memory().searchFrom;
    searchFrom = std::min(searchFrom, page);
}

}  // namespace quardele::jet
