// One page of an index tree, leaf or node, for reading.
#pragma once

#include <vector>

#include "file/page.h"
#include "rows/row_pointer.h"

namespace quardele::jet {

/// Bytes behind the key in each entry: the row's page and slot, big-endian; in nodes the child page as well.
inline constexpr std::size_t kEntryRow = 4;
inline constexpr std::size_t kEntryChild = 4;

/// Throws 3343 when a page is none of an index of this table.
void CheckIndexPage(const Page& page, const Format& format, std::uint32_t table);
/// How many bytes all entries but the first leave away at their start, because the first has them too.
[[nodiscard]] std::size_t PrefixLength(const Page& page, const Format& format);

/// The entries of an index page, checked. In a leaf each entry is a key and the row that has it; in a node it
/// is the last leaf entry below a child, and the child's page.
class IndexPage {
 public:
    /// Throws 3343 when the page is none of an index of this table or its entries overlap.
    IndexPage(PagePtr page, const Format& format, std::uint32_t table);

    [[nodiscard]] std::uint32_t Number() const { return page_->number; }
    [[nodiscard]] bool IsLeaf() const { return page_->Type() == PageType::IndexLeaf; }
    [[nodiscard]] std::size_t Count() const { return ends_.size(); }
    /// Bytes that the entries take.
    [[nodiscard]] std::size_t UsedBytes() const { return ends_.empty() ? 0 : ends_.back(); }
    [[nodiscard]] std::uint32_t Previous() const { return view_.U32(format_->index.previous); }
    [[nodiscard]] std::uint32_t Next() const { return view_.U32(format_->index.next); }
    [[nodiscard]] std::uint32_t Tail() const { return view_.U32(format_->index.tail); }
    [[nodiscard]] std::uint8_t Level() const { return view_.U8(format_->index.level); }

    /// Key and row of an entry, without the child.
    void CopyEntry(std::size_t entry, ByteString& target) const;
    /// Compares key and row of an entry with `sought`, as bytes. An entry that only goes on behind `sought`
    /// counts as equal.
    [[nodiscard]] int CompareStart(std::size_t entry, std::span<const std::uint8_t> sought) const;
    [[nodiscard]] std::uint32_t Child(std::size_t entry) const;

 private:
    [[nodiscard]] std::span<const std::uint8_t> Stored(std::size_t entry) const;
    [[nodiscard]] std::span<const std::uint8_t> Prefix(std::size_t entry) const;
    void ReadEnds();

    PagePtr page_;
    ByteView view_;
    const Format* format_;
    std::vector<std::uint16_t> ends_;
    std::size_t prefix_ = 0;
};

/// The row at the end of an entry of key and row.
[[nodiscard]] RowPointer EntryRow(std::span<const std::uint8_t> entry, std::uint32_t page);

}  // namespace quardele::jet
