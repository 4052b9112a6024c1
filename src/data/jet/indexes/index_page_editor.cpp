#include "indexes/index_page_editor.h"

#include <algorithm>
#include <cstring>

#include "indexes/entry_ends.h"

namespace quardele::jet {

bool IndexPageEditor::CanInsert(const IndexView& leaf, std::size_t before,
                                std::span<const std::uint8_t> entry) {
    const std::size_t prefix = leaf.PrefixLength();
    if (entry.size() - std::min(prefix, entry.size()) > leaf.Room()) {
        return false;
    }
    // An entry that others leave their start to must stay the first.
    return prefix == 0 ||
           (before != 0 && StartsWith(entry, leaf.Prefix()) && entry.size() >= prefix + kEntryRow);
}

// What all entries share is what the first and the last one share; it is left away while they would not fit
// otherwise.
bool IndexPageEditor::CanRemove(const IndexView& leaf, std::size_t entry) {
    const std::size_t prefix = leaf.PrefixLength();
    if (prefix == 0) {
        return true;
    }
    const std::size_t behind = leaf.Behind(entry);
    const std::size_t capacity = leaf.End() + leaf.Room();
    return entry != 0 && behind != leaf.End() && leaf.WholeSize() - (behind - entry) - prefix > capacity;
}

bool IndexPageEditor::CanReplace(const IndexView& node, std::size_t at, std::span<const std::uint8_t> entry) {
    const std::size_t old = node.Behind(at) - at - kEntryChild;
    return node.PrefixLength() == 0 && entry.size() <= node.Room() + old;
}

void IndexPageEditor::InsertLeafEntry(std::uint32_t leaf, std::size_t before,
                                      std::span<const std::uint8_t> entry) {
    const std::size_t prefix =
        before == 0 ? 0 : IndexView(pages_.Read(leaf), pages_.Layout(), table_).PrefixLength();
    Insert(leaf, before, entry.subspan(prefix));
}

void IndexPageEditor::RemoveLeafEntry(std::uint32_t leaf, std::size_t entry) {
    const std::size_t behind = IndexView(pages_.Read(leaf), pages_.Layout(), table_).Behind(entry);
    Remove(leaf, entry, behind - entry);
}

void IndexPageEditor::ReplaceNodeEntry(std::uint32_t node, std::size_t at,
                                       std::span<const std::uint8_t> entry) {
    ByteString stored(entry.begin(), entry.end());
    std::size_t old = 0;
    {
        const IndexView view(pages_.Read(node), pages_.Layout(), table_);
        const std::uint32_t child = view.Child(at);
        for (const unsigned shift : {24u, 16u, 8u, 0u}) {
            stored.push_back(static_cast<std::uint8_t>(child >> shift & 0xFF));
        }
        old = view.Behind(at) - at;
    }
    Remove(node, at, old);
    Insert(node, at, stored);
}

void IndexPageEditor::Insert(std::uint32_t page, std::size_t at, std::span<const std::uint8_t> bytes) {
    const Format& format = pages_.Layout();
    const auto whole = pages_.Write(page).Mutable();
    const auto bits = whole.subspan(format.index.bitmap, format.index.entries - format.index.bitmap);
    const std::size_t end = PreviousBit(bits, bits.size() * 8 - 1).value_or(0);
    const auto gap = whole.subspan(format.index.entries + at, end - at + bytes.size());
    std::memmove(gap.data() + bytes.size(), gap.data(), end - at);
    std::copy(bytes.begin(), bytes.end(), gap.begin());
    InsertEnd(bits, at, bytes.size());
    StoreLittle(whole.subspan(format.data.freeBytes),
                static_cast<std::uint16_t>(whole.size() - format.index.entries - end - bytes.size()));
}

void IndexPageEditor::Remove(std::uint32_t page, std::size_t at, std::size_t length) {
    const Format& format = pages_.Layout();
    const auto whole = pages_.Write(page).Mutable();
    const auto bits = whole.subspan(format.index.bitmap, format.index.entries - format.index.bitmap);
    const std::size_t end = PreviousBit(bits, bits.size() * 8 - 1).value_or(0);
    const auto rest = whole.subspan(format.index.entries + at, end - at);
    std::memmove(rest.data(), rest.data() + length, rest.size() - length);
    std::fill(rest.end() - static_cast<std::ptrdiff_t>(length), rest.end(), std::uint8_t{0});
    RemoveEnd(bits, at, length);
    StoreLittle(whole.subspan(format.data.freeBytes),
                static_cast<std::uint16_t>(whole.size() - format.index.entries - end + length));
}

}  // namespace quardele::jet
