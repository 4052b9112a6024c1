#include "row_pages.h"

#include "usage_map.h"

namespace quardele::jet {

RowPointer RowPages::Add(std::uint16_t flags, const ByteString& row) {
    for (const std::uint32_t page : ReadUsageMap(pages_, owner_.freeMap)) {
        if (!DataPageEditor::MayHold(*pages_.Read(page), pages_.Layout(), owner_.owner, row.size())) {
            continue;
        }
        if (const auto place = TryAdd(page, flags, row)) {
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

std::optional<RowPointer> RowPages::TryAdd(std::uint32_t page, std::uint16_t flags, const ByteString& row) {
    DataPageEditor editor(pages_, page);
    const auto slotNumber = editor.Add(flags, row);
    if (!slotNumber) {
        return std::nullopt;
    }
    Save(page, editor);
    return RowPointer{page, *slotNumber};
}

bool RowPages::TryReplace(RowPointer place, std::uint16_t flags, ByteString row) {
    DataPageEditor editor = Open(place.page);
    if (!editor.Replace(place.slot, flags, std::move(row))) {
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
    if (editor.FreeBytes() >= kWorthTrying && editor.HasFreeSlot()) {
        allocator_.AddToMap(owner_.freeMap, page);
    } else {
        allocator_.RemoveFromMap(owner_.freeMap, page);
    }
}

}  // namespace quardele::jet
