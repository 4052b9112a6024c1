#include "rows/long_value_writer.h"

#include <algorithm>

#include "rows/long_value.h"

namespace quardele::jet {

namespace {

ByteString Descriptor(std::uint32_t form, std::size_t length, RowPointer first) {
    ByteString field(long_value::kDescriptor);
    StoreLittle(std::span(field), form | static_cast<std::uint32_t>(length));
    StoreRowPointer(std::span(field).subspan(4), first);
    return field;
}

}  // namespace

ByteString InlineLongValue(const ByteString& data) {
    ByteString field = Descriptor(long_value::kInline, data.size(), {});
    field.resize(long_value::kDescriptor + data.size());
    std::copy(data.begin(), data.end(), field.begin() + long_value::kDescriptor);
    return field;
}

RowPages LongValueWriter::PagesOf(const StoredColumn& column) const {
    return {pages_,
            allocator_,
            {.owner = long_value::kOwner,
             .ownedMap = column.ownedMap,
             .freeMap = column.freeMap,
             .givesEmptyPagesBack = true}};
}

ByteString LongValueWriter::Store(const StoredColumn& column, const ByteString& data) {
    return data.size() > long_value::kLargestInline ? StoreOutside(column, data) : InlineLongValue(data);
}

ByteString LongValueWriter::StoreOutside(const StoredColumn& column, const ByteString& data) {
    RowPages pages = PagesOf(column);
    if (data.size() <= long_value::kLargestSingle) {
        return Descriptor(long_value::kSingle, data.size(), pages.Add(0, data));
    }
    // From the last piece to the first, because each names its successor.
    RowPointer next{};
    std::size_t end = data.size();
    while (end > 0) {
        const std::size_t length = (end - 1) % long_value::kLargestPiece + 1;
        ByteString piece(long_value::kPointer + length);
        StoreRowPointer(piece, next);
        std::copy_n(data.begin() + static_cast<std::ptrdiff_t>(end - length), length,
                    piece.begin() + long_value::kPointer);
        next = pages.Add(0, piece);
        end -= length;
    }
    return Descriptor(0, data.size(), next);
}

void LongValueWriter::Remove(const StoredColumn& column, const ByteView& field) {
    if (field.IsEmpty()) {
        return;
    }
    RowPages pages = PagesOf(column);
    for (const RowPointer piece : PiecesOf(pages_, LongValueDescriptor::Load(field))) {
        pages.Delete(piece);
    }
}

}  // namespace quardele::jet
