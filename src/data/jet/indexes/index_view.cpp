#include "indexes/index_view.h"

#include <algorithm>

#include "indexes/entry_ends.h"

namespace quardele::jet {

IndexView::IndexView(PagePtr page, const Format& format, std::uint32_t table)
    : page_(std::move(page)), view_(page_->View()), format_(&format) {
    CheckIndexPage(*page_, format, table);
    prefix_ = jet::PrefixLength(*page_, format);
    end_ = PreviousBit(Bits(), Bits().size() * 8 - 1).value_or(0);
    if (end_ > page_->size - format.index.entries) {
        ThrowDamaged(page_->number, u"entrée d'index impossible");
    }
}

std::span<const std::uint8_t> IndexView::Bits() const {
    return view_.Span().subspan(format_->index.bitmap, format_->index.entries - format_->index.bitmap);
}

std::size_t IndexView::WholeSize() const {
    return IsEmpty() ? 0 : end_ + prefix_ * (CountBits(Bits()) - 1);
}

// What entries share may reach into their rows, as among equal keys, but never into a child's number.
std::size_t IndexView::Shortest(std::size_t entry) const {
    const std::size_t child = IsLeaf() ? 0 : kEntryChild;
    if (entry == 0) {
        return child + std::max(kEntryRow, prefix_);
    }
    return child + (prefix_ < kEntryRow ? kEntryRow - prefix_ : 0);
}

std::size_t IndexView::Behind(std::size_t entry) const {
    const std::size_t next = NextBit(Bits(), entry + 1).value_or(0);
    if (next < entry + Shortest(entry)) {
        ThrowDamaged(page_->number, u"entrée d'index impossible");
    }
    return next;
}

std::size_t IndexView::Before(std::size_t entry) const {
    return entry < 2 ? 0 : PreviousBit(Bits(), entry - 1).value_or(0);
}

std::span<const std::uint8_t> IndexView::Stored(std::size_t entry) const {
    const std::size_t child = IsLeaf() ? 0 : kEntryChild;
    return view_.Span().subspan(format_->index.entries + entry, Behind(entry) - entry - child);
}

std::span<const std::uint8_t> IndexView::Prefix() const {
    if (prefix_ != 0) {
        static_cast<void>(Behind(0));  // long enough
    }
    return view_.Span().subspan(format_->index.entries, prefix_);
}

void IndexView::CopyEntry(std::size_t entry, ByteString& target) const {
    const auto stored = Stored(entry);
    target.clear();
    if (entry != 0) {
        const auto prefix = Prefix();
        target.insert(target.end(), prefix.begin(), prefix.end());
    }
    target.insert(target.end(), stored.begin(), stored.end());
}

int IndexView::CompareStart(std::size_t entry, std::span<const std::uint8_t> sought) const {
    const auto stored = Stored(entry);
    if (entry != 0 && prefix_ != 0) {
        const auto prefix = Prefix();
        const std::size_t common = std::min(prefix.size(), sought.size());
        if (const int order = CompareBytes(prefix.first(common), sought.first(common)); order != 0) {
            return order;
        }
        sought = sought.subspan(common);
    }
    return CompareBytes(stored.first(std::min(stored.size(), sought.size())), sought);
}

std::uint32_t IndexView::Child(std::size_t entry) const {
    return view_.U32Big(format_->index.entries + Behind(entry) - kEntryChild);
}

// What the entries leave away is compared once, not for each of them.
std::size_t IndexView::LowerBound(std::span<const std::uint8_t> sought, bool behind) const {
    const auto shared = IsEmpty() ? std::span<const std::uint8_t>() : Prefix();
    const std::size_t common = std::min(shared.size(), sought.size());
    const int orderOfShared = CompareBytes(shared.first(common), sought.first(common));
    const auto rest = sought.subspan(common);
    const auto compare = [&](std::size_t entry) {
        if (entry == 0) {
            return CompareStart(entry, sought);
        }
        if (orderOfShared != 0) {
            return orderOfShared;
        }
        const auto stored = Stored(entry);
        return CompareBytes(stored.first(std::min(stored.size(), rest.size())), rest);
    };
    std::size_t low = 0;
    std::size_t high = end_;
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        const std::size_t entry = middle == 0 ? 0 : std::max(low, PreviousBit(Bits(), middle).value_or(0));
        const int order = compare(entry);
        if (order < 0 || (order == 0 && behind)) {
            low = Behind(entry);
        } else {
            high = entry;
        }
    }
    return low;
}

}  // namespace quardele::jet
