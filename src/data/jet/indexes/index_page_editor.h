// Changing single entries of an index page where they lie.
#pragma once

#include "commit/transaction.h"
#include "indexes/index_view.h"

namespace quardele::jet {

/// The short way for the usual change: the entry shares the page's prefix, and the page has room. Whatever
/// asks for another prefix or another page is for an IndexNode. What a page looks like afterwards is what an
/// IndexNode would have made of it.
class IndexPageEditor {
 public:
    IndexPageEditor(Transaction& pages, std::uint32_t table) : pages_(pages), table_(table) {}

    /// Whether InsertLeafEntry can put an entry before another one, or at the end.
    [[nodiscard]] static bool CanInsert(const IndexView& leaf, std::size_t before,
                                        std::span<const std::uint8_t> entry);
    void InsertLeafEntry(std::uint32_t leaf, std::size_t before, std::span<const std::uint8_t> entry);

    /// Whether RemoveLeafEntry can take an entry away.
    [[nodiscard]] static bool CanRemove(const IndexView& leaf, std::size_t entry);
    void RemoveLeafEntry(std::uint32_t leaf, std::size_t entry);

    /// Whether ReplaceNodeEntry can give an entry of a node another key and row.
    [[nodiscard]] static bool CanReplace(const IndexView& node, std::size_t at,
                                         std::span<const std::uint8_t> entry);
    void ReplaceNodeEntry(std::uint32_t node, std::size_t at, std::span<const std::uint8_t> entry);

 private:
    /// Opens or closes a gap in the entries.
    void Insert(std::uint32_t page, std::size_t at, std::span<const std::uint8_t> bytes);
    void Remove(std::uint32_t page, std::size_t at, std::size_t length);

    Transaction& pages_;
    std::uint32_t table_;
};

}  // namespace quardele::jet
