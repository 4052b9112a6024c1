// One page of an index tree, leaf or node, whose entries are found as they are asked for.
#pragma once

#include "indexes/index_page.h"

namespace quardele::jet {

/// An entry is named by the offset of its first byte among the entries; End() lies behind the last one. What
/// is looked at is checked, nothing else: an IndexPage checks everything.
class IndexView {
 public:
    /// Throws 3343 when the page is none of an index of this table.
    IndexView(PagePtr page, const Format& format, std::uint32_t table);

    [[nodiscard]] std::uint32_t Number() const { return page_->number; }
    [[nodiscard]] bool IsLeaf() const { return page_->Type() == PageType::IndexLeaf; }
    [[nodiscard]] std::uint32_t Previous() const { return view_.U32(format_->index.previous); }
    [[nodiscard]] std::uint32_t Next() const { return view_.U32(format_->index.next); }
    [[nodiscard]] std::uint32_t Tail() const { return view_.U32(format_->index.tail); }

    [[nodiscard]] bool IsEmpty() const { return end_ == 0; }
    [[nodiscard]] std::size_t End() const { return end_; }
    /// Bytes behind the last entry that are free.
    [[nodiscard]] std::size_t Room() const { return page_->size - format_->index.entries - end_; }
    /// Bytes that the entries would take if none left its start away.
    [[nodiscard]] std::size_t WholeSize() const;
    /// The entry behind one, or End(). Throws 3343 for an entry of impossible length.
    [[nodiscard]] std::size_t Behind(std::size_t entry) const;
    /// The entry before one, or the last one before End(). There must be one.
    [[nodiscard]] std::size_t Before(std::size_t entry) const;

    [[nodiscard]] std::size_t PrefixLength() const { return prefix_; }
    /// What all entries but the first leave away at their start, because the first has it too. There must be
    /// a first one, unless nothing is left away.
    [[nodiscard]] std::span<const std::uint8_t> Prefix() const;
    /// Key and row of an entry, without the child.
    void CopyEntry(std::size_t entry, ByteString& target) const;
    /// Compares key and row of an entry with `sought`, as bytes. An entry that only goes on behind `sought`
    /// counts as equal.
    [[nodiscard]] int CompareStart(std::size_t entry, std::span<const std::uint8_t> sought) const;
    [[nodiscard]] std::uint32_t Child(std::size_t entry) const;

    /// The first entry that compares greater than `sought`, or equal to it as well unless `behind`; End()
    /// when there is none.
    [[nodiscard]] std::size_t LowerBound(std::span<const std::uint8_t> sought, bool behind) const;

 private:
    [[nodiscard]] std::span<const std::uint8_t> Bits() const;
    /// Key and row as stored, without what the prefix says.
    [[nodiscard]] std::span<const std::uint8_t> Stored(std::size_t entry) const;
    [[nodiscard]] std::size_t Shortest(std::size_t entry) const;

    PagePtr page_;
    ByteView view_;
    const Format* format_;
    std::size_t prefix_ = 0;
    std::size_t end_ = 0;
};

}  // namespace quardele::jet
