#include "rows/long_value.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "pages/data_page.h"

namespace quardele::jet {

namespace {

RowBytes ReadPiece(const PageSource& pages, RowPointer pointer) {
    PagePtr page = pages.Read(pointer.page);
    const DataPage slots(*page, pages.Layout());
    const ByteView bytes = slots.Row(pointer.slot);
    if (slots.Flags(pointer.slot) == slot::kDeleted) {
        throw basic::RuntimeError(basic::error::kRecordChanged);
    }
    return {std::move(page), bytes};
}

// Calls use(piece, data) for each piece of a chain until all data have been seen. Every piece brings data, so
// that a circle ends when the length is reached; the length never exceeds the file's.
template <class Use>
void WalkChain(const PageSource& pages, const LongValueDescriptor& value, const Use& use) {
    std::size_t rest = value.length;
    for (RowPointer at = value.first; rest > 0;) {
        const RowBytes piece = ReadPiece(pages, at);
        const ByteView data = piece.bytes.From(long_value::kPointer);
        if (data.IsEmpty()) {
            ThrowDamaged(at.page, u"valeur longue sans données");
        }
        const std::size_t length = std::min(rest, data.Size());
        use(at, data.Sub(0, length));
        rest -= length;
        at = LoadRowPointer(piece.bytes, 0);
    }
}

void CheckLength(const PageSource& pages, const LongValueDescriptor& value, std::uint32_t page) {
    if (value.length > std::uint64_t{pages.PageCount()} * pages.Layout().pageSize) {
        ThrowDamaged(page, u"valeur plus longue que le fichier");
    }
}

}  // namespace

LongValueDescriptor LongValueDescriptor::Load(const ByteView& field) {
    if (field.Size() < long_value::kDescriptor) {
        ThrowDamaged(field.Page(), u"valeur longue sans descripteur");
    }
    const std::uint32_t word = field.U32(0);
    return {.form = word & long_value::kFormMask,
            .length = word & long_value::kLengthMask,
            .first = LoadRowPointer(field, 4)};
}

std::vector<std::uint8_t> ReadLongValue(const PageSource& pages, const ByteView& field) {
    std::vector<std::uint8_t> result;
    if (field.IsEmpty()) {
        return result;
    }
    const auto append = [&result](const ByteView& data) {
        result.insert(result.end(), data.Span().begin(), data.Span().end());
    };
    const LongValueDescriptor value = LongValueDescriptor::Load(field);
    if (value.form == long_value::kInline) {
        append(field.Sub(long_value::kDescriptor, value.length));
        return result;
    }
    CheckLength(pages, value, field.Page());
    if (value.form == long_value::kSingle) {
        append(ReadPiece(pages, value.first).bytes.Sub(0, value.length));
        return result;
    }
    if (value.form != 0) {
        ThrowDamaged(field.Page(), u"valeur longue de forme inconnue");
    }
    WalkChain(pages, value, [&](RowPointer, const ByteView& data) { append(data); });
    return result;
}

std::vector<RowPointer> PiecesOf(const PageSource& pages, const LongValueDescriptor& value) {
    std::vector<RowPointer> pieces;
    if (value.form == long_value::kSingle) {
        static_cast<void>(ReadPiece(pages, value.first));
        pieces.push_back(value.first);
    } else if (value.form == 0) {
        CheckLength(pages, value, value.first.page);
        WalkChain(pages, value, [&](RowPointer at, const ByteView&) { pieces.push_back(at); });
    }
    return pieces;
}

}  // namespace quardele::jet
