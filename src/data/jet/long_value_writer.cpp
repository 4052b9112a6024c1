#include "long_value_writer.h"

#include <algorithm>

#include "long_value.h"
#include "usage_map.h"

namespace quardele::jet {

namespace {

ByteString Descriptor(std::uint32_t form, std::size_t length, RowPointer first) {
    ByteString field(long_value::kDescriptor);
    StoreLittle(std::span(field), form | static_cast<std::uint32_t>(length));
    StoreRowPointer(std::span(field).subspan(4), first);
    return field;
}

}  // namespace

ByteString LongValueWriter::Store(const StoredColumn& column, const ByteString& data) {
    if (data.size() > long_value::kLargestInline) {
        return StoreOutside(column, data);
    }
    ByteString field = Descriptor(long_value::kInline, data.size(), {});
    field.insert(field.end(), data.begin(), data.end());
    return field;
}

ByteString LongValueWriter::StoreOutside(const StoredColumn& column, const ByteString& data) {
    if (data.size() <= long_value::kLargestSingle) {
        return Descriptor(long_value::kSingle, data.size(), AddPiece(column, data));
    }
    // From the last piece to the first, because each names its successor.
    RowPointer next{};
    std::size_t end = data.size();
    while (end > 0) {
        const std::size_t length = (end - 1) % long_value::kLargestPiece + 1;
        ByteString piece(long_value::kPointer);
        StoreRowPointer(piece, next);
        piece.insert(piece.end(), data.begin() + static_cast<std::ptrdiff_t>(end - length),
                     data.begin() + static_cast<std::ptrdiff_t>(end));
        next = AddPiece(column, std::move(piece));
        end -= length;
    }
    return Descriptor(0, data.size(), next);
}

RowPointer LongValueWriter::AddPiece(const StoredColumn& column, ByteString piece) {
    if (const auto place = AddToPageWithRoom(column, piece)) {
        return *place;
    }
    Page& page = allocator_.Allocate();
    const std::uint32_t number = page.number;
    DataPageEditor::Initialise(page, pages_.Layout(), long_value::kOwner);
    allocator_.AddToMap(column.ownedMap, number);
    DataPageEditor editor(pages_, number);
    const auto slotNumber = editor.Add(0, std::move(piece));
    if (!slotNumber) {
        ThrowDamaged(number, u"page de valeurs longues sans place");
    }
    editor.Store();
    KeepFreeMap(column, number, editor);
    return {number, *slotNumber};
}

std::optional<RowPointer> LongValueWriter::AddToPageWithRoom(const StoredColumn& column,
                                                             const ByteString& piece) {
    for (const std::uint32_t number : ReadUsageMap(pages_, column.freeMap)) {
        const PagePtr page = pages_.Read(number);
        if (page->Type() != PageType::Data ||
            DataPage(*page, pages_.Layout()).Owner() != long_value::kOwner) {
            continue;
        }
        DataPageEditor editor(pages_, number);
        if (const auto slotNumber = editor.Add(0, piece)) {
            editor.Store();
            KeepFreeMap(column, number, editor);
            return RowPointer{number, *slotNumber};
        }
    }
    return std::nullopt;
}

void LongValueWriter::KeepFreeMap(const StoredColumn& column, std::uint32_t page,
                                  const DataPageEditor& editor) {
    if (editor.FreeBytes() >= kWorthTrying) {
        allocator_.AddToMap(column.freeMap, page);
    } else {
        allocator_.RemoveFromMap(column.freeMap, page);
    }
}

void LongValueWriter::Remove(const StoredColumn& column, const ByteView& field) {
    if (field.IsEmpty()) {
        return;
    }
    for (const RowPointer piece : PiecesOf(pages_, LongValueDescriptor::Load(field))) {
        DataPageEditor editor(pages_, piece.page);
        if (editor.Owner() != long_value::kOwner) {
            ThrowDamaged(piece.page, u"page de valeurs longues attendue");
        }
        editor.Delete(piece.slot);
        if (editor.HasLiveRows()) {
            editor.Store();
            KeepFreeMap(column, piece.page, editor);
        } else {
            allocator_.RemoveFromMap(column.ownedMap, piece.page);
            allocator_.RemoveFromMap(column.freeMap, piece.page);
            allocator_.Free(piece.page);
        }
    }
}

}  // namespace quardele::jet
