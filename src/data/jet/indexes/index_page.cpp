#include "indexes/index_page.h"

#include <algorithm>

namespace quardele::jet {

void CheckIndexPage(const Page& page, const Format& format, std::uint32_t table) {
    if (page.Type() != PageType::IndexLeaf && page.Type() != PageType::IndexNode) {
        ThrowDamaged(page.number, u"page d'index attendue");
    }
    if (page.View().U32(format.index.owner) != table) {
        ThrowDamaged(page.number, u"page d'index d'une autre table");
    }
}

std::size_t PrefixLength(const Page& page, const Format& format) {
    const ByteView view = page.View();
    return format.index.prefixBytes == 1 ? view.U8(format.index.prefix) : view.U16(format.index.prefix);
}

IndexPage::IndexPage(PagePtr page, const Format& format, std::uint32_t table)
    : page_(std::move(page)), view_(page_->View()), format_(&format) {
    CheckIndexPage(*page_, format, table);
    prefix_ = PrefixLength(*page_, format);
    ReadEnds();
}

// A bit for each byte of the entries tells where one ends. What entries share may reach into their rows, as
// among equal keys, but never into a child's number.
void IndexPage::ReadEnds() {
    const std::size_t child = IsLeaf() ? 0 : kEntryChild;
    const std::size_t shortest = kEntryRow + child;
    const std::size_t capacity = page_->size - format_->index.entries;
    const ByteView bits = view_.Sub(format_->index.bitmap, format_->index.entries - format_->index.bitmap);
    std::size_t start = 0;
    for (std::size_t i = 0; i < bits.Size(); ++i) {
        const std::uint8_t byte = bits.U8(i);
        for (unsigned bit = 0; byte >> bit != 0; ++bit) {
            if ((byte >> bit & 1) == 0) {
                continue;
            }
            const std::size_t end = i * 8 + bit;
            const std::size_t shared = ends_.empty() ? 0 : prefix_;
            const std::size_t stored = end - start;
            if (end > capacity || stored < child || stored + shared < shortest ||
                (ends_.empty() && stored < prefix_ + child)) {
                ThrowDamaged(page_->number, u"entrée d'index impossible");
            }
            ends_.push_back(static_cast<std::uint16_t>(end));
            start = end;
        }
    }
}

std::span<const std::uint8_t> IndexPage::Stored(std::size_t entry) const {
    const std::size_t start = entry == 0 ? 0 : ends_[entry - 1];
    const std::size_t child = IsLeaf() ? 0 : kEntryChild;
    return view_.Span().subspan(format_->index.entries + start, ends_[entry] - start - child);
}

std::span<const std::uint8_t> IndexPage::Prefix(std::size_t entry) const {
    return view_.Span().subspan(format_->index.entries, entry == 0 ? 0 : prefix_);
}

void IndexPage::CopyEntry(std::size_t entry, ByteString& target) const {
    const auto prefix = Prefix(entry);
    const auto stored = Stored(entry);
    target.assign(prefix.begin(), prefix.end());
    target.insert(target.end(), stored.begin(), stored.end());
}

int IndexPage::CompareStart(std::size_t entry, std::span<const std::uint8_t> sought) const {
    const auto prefix = Prefix(entry);
    const auto inPrefix = std::min(prefix.size(), sought.size());
    if (const int order = CompareBytes(prefix.first(inPrefix), sought.first(inPrefix)); order != 0) {
        return order;
    }
    const auto stored = Stored(entry);
    const auto rest = sought.subspan(inPrefix);
    if (prefix.size() > sought.size()) {
        return 0;
    }
    return CompareBytes(stored.first(std::min(stored.size(), rest.size())), rest);
}

std::uint32_t IndexPage::Child(std::size_t entry) const {
    return view_.U32Big(format_->index.entries + ends_[entry] - kEntryChild);
}

RowPointer EntryRow(std::span<const std::uint8_t> entry, std::uint32_t page) {
    const ByteView row(entry.last(kEntryRow), page);
    return {.page = row.U24Big(0), .slot = row.U8(3)};
}

}  // namespace quardele::jet
