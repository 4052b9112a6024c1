// One page of an index tree, taken apart to be changed.
#pragma once

#include <vector>

#include "commit/transaction.h"
#include "indexes/index_page.h"

namespace quardele::jet {

struct IndexItem {
    ByteString entry;         ///< key and row; in a node those of the last leaf entry below the child
    std::uint32_t child = 0;  ///< nodes only
};

struct IndexNode {
    std::uint32_t number = 0;
    bool leaf = true;
    std::uint8_t level = 0;
    std::uint32_t previous = 0;
    std::uint32_t next = 0;
    /// The last child of a node right above the leaves, which has no item.
    std::uint32_t tail = 0;
    std::vector<IndexItem> items;

    [[nodiscard]] static IndexNode Load(const PageSource& pages, std::uint32_t number, std::uint32_t table);
    /// Whether items [first, last) fit on one page.
    [[nodiscard]] bool Fits(const Format& format, std::size_t first, std::size_t last) const;
    [[nodiscard]] bool Fits(const Format& format) const { return Fits(format, 0, items.size()); }
    /// Writes the node to its page. It must fit.
    void Store(Transaction& pages, std::uint32_t table) const;

    /// Number of children, the tail included.
    [[nodiscard]] std::size_t ChildCount() const { return items.size() + (tail != 0 ? 1 : 0); }
    [[nodiscard]] std::uint32_t Child(std::size_t position) const {
        return position < items.size() ? items[position].child : tail;
    }
};

/// A longer key would leave no room for two entries on a page.
inline constexpr std::size_t kLargestEntry = 1780;

}  // namespace quardele::jet
