// Finding and following leaf entries of an index tree.
#pragma once

#include <optional>

#include "definitions/table_def.h"
#include "indexes/index_view.h"

namespace quardele::jet {

/// A place in the leaves of a tree: on an entry, or behind the last one of a leaf.
class IndexWalk {
 public:
    /// `pages` must outlive the walk.
    IndexWalk(const PageSource& pages, std::uint32_t table, const RealIndex& index);

    /// Each goes to an entry and returns true, or finds none and returns false.
    bool First();
    bool Last();
    bool Next();
    bool Previous();
    /// Goes to the first entry that compares greater than `sought`, or equal to it as well unless `behind`.
    /// An entry that starts with `sought` is equal.
    bool FirstFrom(std::span<const std::uint8_t> sought, bool behind);
    /// Goes to the last entry before the one that FirstFrom finds.
    bool LastBefore(std::span<const std::uint8_t> sought, bool behind);

    /// Key and row of the entry.
    [[nodiscard]] const ByteString& Entry() const { return entry_; }
    [[nodiscard]] std::uint32_t PageNumber() const { return leaf_->Number(); }

 private:
    [[nodiscard]] IndexView Load(std::uint32_t number) const;
    /// Goes down from the root; `choose` gives an entry of each node, End() for the tail.
    template <class Choose>
    void Descend(const Choose& choose);
    void GoToLeafOf(std::span<const std::uint8_t> sought, bool behind);
    bool ForwardFrom(std::size_t entry);
    bool BackwardFrom(std::size_t entry);
    bool Settle(std::size_t entry);

    const PageSource& pages_;
    std::uint32_t table_;
    std::uint32_t root_;
    std::optional<IndexView> leaf_;
    std::size_t at_ = 0;
    ByteString entry_;
};

}  // namespace quardele::jet
