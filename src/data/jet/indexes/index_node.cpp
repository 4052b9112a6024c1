#include "indexes/index_node.h"

#include <algorithm>

namespace quardele::jet {

namespace {

std::size_t Capacity(const Format& format) {
    return format.pageSize - format.index.entries;
}

std::size_t StoredSize(const IndexNode& node, std::size_t item) {
    return node.items[item].entry.size() + (node.leaf ? 0 : kEntryChild);
}

std::size_t FullSize(const IndexNode& node, std::size_t first, std::size_t last) {
    std::size_t size = 0;
    for (std::size_t i = first; i < last; ++i) {
        size += StoredSize(node, i);
    }
    return size;
}

// What all entries have in common at their start, the row apart.
std::size_t CommonPrefix(const IndexNode& node, std::size_t first, std::size_t last) {
    const ByteString& start = node.items[first].entry;
    std::size_t common = start.size() - kEntryRow;
    for (std::size_t i = first + 1; i < last; ++i) {
        const ByteString& entry = node.items[i].entry;
        common = std::min(common, entry.size() - kEntryRow);
        const auto difference =
            std::mismatch(entry.begin(), entry.begin() + static_cast<std::ptrdiff_t>(common), start.begin());
        common = static_cast<std::size_t>(difference.first - entry.begin());
    }
    return common;
}

// The prefix is left away only when the entries would not fit otherwise.
std::size_t PrefixToUse(const IndexNode& node, const Format& format, std::size_t first, std::size_t last) {
    return FullSize(node, first, last) <= Capacity(format) ? 0 : CommonPrefix(node, first, last);
}

void StoreBig(std::span<std::uint8_t> target, std::uint32_t value) {
    for (std::size_t i = 4; i-- > 0;) {
        target[i] = static_cast<std::uint8_t>(value & 0xFF);
        value >>= 8;
    }
}

void StoreEntries(const IndexNode& node, const Format& format, std::size_t prefix,
                  std::span<std::uint8_t> page) {
    const auto bitmap = page.subspan(format.index.bitmap, format.index.entries - format.index.bitmap);
    const auto entries = page.subspan(format.index.entries);
    std::size_t end = 0;
    for (const IndexItem& item : node.items) {
        const std::size_t skipped = end == 0 ? 0 : prefix;
        std::copy(item.entry.begin() + static_cast<std::ptrdiff_t>(skipped), item.entry.end(),
                  entries.begin() + static_cast<std::ptrdiff_t>(end));
        end += item.entry.size() - skipped;
        if (!node.leaf) {
            StoreBig(entries.subspan(end), item.child);
            end += kEntryChild;
        }
        bitmap[end / 8] |= static_cast<std::uint8_t>(1u << end % 8);
    }
    StoreLittle(page.subspan(format.data.freeBytes), static_cast<std::uint16_t>(Capacity(format) - end));
}

}  // namespace

IndexNode IndexNode::Load(const PageSource& pages, std::uint32_t number, std::uint32_t table) {
    const IndexPage page(pages.Read(number), pages.Layout(), table);
    IndexNode node{.number = number,
                   .leaf = page.IsLeaf(),
                   .level = page.Level(),
                   .previous = page.Previous(),
                   .next = page.Next(),
                   .tail = page.IsLeaf() ? 0 : page.Tail(),
                   .items = {}};
    for (std::size_t i = 0; i < page.Count(); ++i) {
        IndexItem& item = node.items.emplace_back();
        page.CopyEntry(i, item.entry);
        item.child = node.leaf ? 0 : page.Child(i);
    }
    return node;
}

bool IndexNode::Fits(const Format& format, std::size_t first, std::size_t last) const {
    if (first == last) {
        return true;
    }
    const std::size_t saved = PrefixToUse(*this, format, first, last) * (last - first - 1);
    return FullSize(*this, first, last) - saved <= Capacity(format);
}

void IndexNode::Store(Transaction& pages, std::uint32_t table) const {
    const Format& format = pages.Layout();
    if (!Fits(format, 0, items.size())) {
        // Entries of a damaged page may have less in common than the page leaves out of each.
        ThrowDamaged(number, u"entrées d'index trop longues pour leur page");
    }
    const std::size_t prefix = items.empty() ? 0 : PrefixToUse(*this, format, 0, items.size());
    const auto page = pages.Write(number).Mutable();
    std::fill(page.begin(), page.end(), std::uint8_t{0});
    page[0] = static_cast<std::uint8_t>(leaf ? PageType::IndexLeaf : PageType::IndexNode);
    page[1] = kLivePage;
    StoreLittle(page.subspan(format.index.owner), table);
    StoreLittle(page.subspan(format.index.previous), previous);
    StoreLittle(page.subspan(format.index.next), next);
    StoreLittle(page.subspan(format.index.tail), tail);
    StoreLittle(page.subspan(format.index.prefix), static_cast<std::uint16_t>(prefix));
    page[format.index.level] = level;
    StoreEntries(*this, format, prefix, page);
}

}  // namespace quardele::jet
