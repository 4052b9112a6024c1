// Adding entries to an index tree and taking them out.
#pragma once

#include <optional>
#include <vector>

#include "definitions/table_def.h"
#include "indexes/index_node.h"
#include "indexes/index_view.h"
#include "pages/page_allocator.h"

namespace quardele::jet {

/// A place between the entries of a leaf, and the way to it from the root. Good until the tree changes.
struct IndexSpot {
    struct Step {
        std::uint32_t node = 0;
        std::size_t child = 0;  ///< the entry that was followed; End() for the tail or an empty end
    };
    std::vector<Step> path;
    std::uint32_t leaf = 0;
    std::size_t before = 0;  ///< the entry that lies behind the place
};

/// One tree within a transaction. The root's page number never changes; leaves are chained from left to
/// right; a node right above the leaves keeps its last child as its tail, other nodes have an item for each
/// child. A page that is half empty after a removal is joined with a neighbour when both fit on one.
class IndexTree {
 public:
    IndexTree(Transaction& pages, PageAllocator& allocator, std::uint32_t table, const RealIndex& index)
        : pages_(pages), allocator_(allocator), table_(table), index_(index) {}

    /// Throws 3251 when an entry is too long for an index.
    static void CheckLength(std::size_t entry);
    /// An entry is a key and the row that has it. Throws like CheckLength, and 3343 for one that is there.
    /// Returns whether no other entry has its key.
    bool Insert(const ByteString& entry);
    /// Throws 3343 when the tree has no such entry. Returns whether no other entry has its key.
    bool Remove(const ByteString& entry);

    /// The place of an entry with a key that no entry has yet; none when one has it.
    [[nodiscard]] std::optional<IndexSpot> SpotOfNew(std::span<const std::uint8_t> key) const;
    /// Inserts an entry with the key that the spot was found for.
    void InsertAt(const IndexSpot& spot, const ByteString& entry);
    /// The entry of a row, found by looking at all. Throws 3343 when there is none.
    [[nodiscard]] ByteString EntryOf(RowId row) const;
    /// Whether an entry has exactly this key.
    [[nodiscard]] bool HasKey(std::span<const std::uint8_t> key) const;
    /// Whether an entry of another row has exactly this key.
    [[nodiscard]] bool HasKeyOfOther(std::span<const std::uint8_t> key, RowId row) const;

 private:
    struct Step {
        std::uint32_t node;
        std::size_t position;  ///< of the child that was taken
    };
    using Path = std::vector<Step>;

    /// What a child has become, for its parent. Without `last` the entry that stood for it goes on standing.
    struct ChildRef {
        std::uint32_t page;
        std::optional<ByteString> last;
    };
    using Children = std::vector<ChildRef>;

    [[nodiscard]] IndexNode Load(std::uint32_t page) const { return IndexNode::Load(pages_, page, table_); }
    void Store(const IndexNode& node) { node.Store(pages_, table_); }
    [[nodiscard]] std::uint32_t NewPage();
    void DropPage(std::uint32_t page);

    /// The leaf where an entry belongs, and the nodes above it.
    [[nodiscard]] IndexNode Descend(std::span<const std::uint8_t> entry, Path& path) const;
    [[nodiscard]] IndexView View(std::uint32_t page) const {
        return {pages_.Read(page), pages_.Layout(), table_};
    }
    [[nodiscard]] IndexSpot SpotOf(std::span<const std::uint8_t> sought) const;
    /// Whether the entry before or behind the place starts with a key.
    [[nodiscard]] bool HasNeighbour(const IndexSpot& spot, std::size_t behind,
                                    std::span<const std::uint8_t> key) const;
    template <class Says>
    [[nodiscard]] bool FirstFound(std::uint32_t leaf, std::uint32_t (IndexView::*further)() const,
                                  const Says& says) const;
    [[nodiscard]] bool StartsAt(const IndexSpot& spot, const ByteString& entry) const;
    /// The short ways, for changes that fit into their pages; false when nothing was done.
    [[nodiscard]] bool TryInsert(const IndexSpot& spot, const ByteString& entry);
    [[nodiscard]] bool TryRemove(const IndexSpot& spot);
    /// Whether the way to a leaf leads along last children only, so that a new last entry of the leaf can be
    /// told to all nodes above.
    [[nodiscard]] bool CanTellNodes(const IndexSpot& spot, const ByteString& entry) const;
    void TellNodes(const IndexSpot& spot, const ByteString& entry);
    void InsertAnyhow(const ByteString& entry);
    void RemoveAnyhow(const ByteString& entry);
    [[nodiscard]] ByteString LastBelow(std::uint32_t page) const;

    void SaveLeaf(const Path& path, IndexNode leaf, bool appended);
    void DropLeaf(const Path& path, const IndexNode& leaf);
    /// Puts new children in the place of the one that the path took at a depth, upwards to the root.
    void ReplaceChild(const Path& path, std::size_t depth, const Children& children);
    void SaveNode(const Path& path, std::size_t depth, IndexNode node, bool lastChanged);
    [[nodiscard]] bool IsHalfEmpty(std::size_t used) const;
    /// Whether a leaf, once the entry at the place is out, may be joined with a neighbour.
    [[nodiscard]] bool MayJoin(const IndexSpot& spot) const;
    /// Joins the child that the path took at a depth with a neighbour below the same node when both fit on
    /// one page, and tells the nodes above. The child must be stored; false when nothing was done.
    [[nodiscard]] bool TryJoin(const Path& path, std::size_t depth);
    [[nodiscard]] std::optional<IndexNode> Joined(IndexNode left, const IndexNode& right) const;
    void StoreJoined(const Path& path, std::size_t depth, std::size_t left, const IndexNode& joined);
    [[nodiscard]] Children Split(IndexNode node, bool appended);
    void SplitRoot(IndexNode root, bool appended);
    void CollapseRoot(IndexNode root);
    [[nodiscard]] std::size_t SplitPoint(const IndexNode& node, bool appended) const;
    [[nodiscard]] bool IsAboveLeaves(const IndexNode& node) const;
    void RelinkChildren(const IndexNode& node);
    void Relink(std::uint32_t page, std::optional<std::uint32_t> previous, std::optional<std::uint32_t> next);

    Transaction& pages_;
    PageAllocator& allocator_;
    std::uint32_t table_;
    const RealIndex& index_;
};

}  // namespace quardele::jet
