#include "structure/index_build.h"

#include "indexes/index_node.h"

namespace quardele::jet {

namespace {

/// A page that stands: its place, and its last entry.
struct Built {
    std::uint32_t page = 0;
    std::size_t last = 0;  ///< position among all entries
};

/// Members [first, last) of a level share a page of the level above.
struct Group {
    std::size_t first;
    std::size_t last;
};

class Builder {
 public:
    Builder(Transaction& pages, PageAllocator& allocator, std::uint32_t table, const RealIndex& index,
            const IndexEntries& entries)
        : pages_(pages), allocator_(allocator), table_(table), index_(index), entries_(entries) {}

    void Run() {
        std::vector<Built> level = BuildLeaves();
        for (std::uint8_t height = 1; level.size() > 1; ++height) {
            level = BuildNodes(level, height);
        }
    }

 private:
    [[nodiscard]] std::vector<Built> BuildLeaves() {
        const auto groups =
            Divide(entries_.Size(), 1, [this](std::size_t entry) { return entries_.At(entry).size(); });
        const auto numbers = PagesFor(groups.size());
        std::vector<Built> level;
        for (std::size_t i = 0; i < groups.size(); ++i) {
            IndexNode leaf{.number = numbers[i],
                           .previous = i == 0 ? 0 : numbers[i - 1],
                           .next = i + 1 == groups.size() ? 0 : numbers[i + 1],
                           .items = {}};
            for (std::size_t entry = groups[i].first; entry < groups[i].last; ++entry) {
                leaf.items.push_back({.entry = Copy(entry)});
            }
            leaf.Store(pages_, table_);
            level.push_back({.page = leaf.number, .last = groups[i].last - 1});
        }
        return level;
    }

    [[nodiscard]] std::vector<Built> BuildNodes(const std::vector<Built>& children, std::uint8_t height) {
        const auto groups = Divide(children.size(), 2, [&](std::size_t child) {
            return entries_.At(children[child].last).size() + kEntryChild;
        });
        const auto numbers = PagesFor(groups.size());
        std::vector<Built> level;
        for (std::size_t i = 0; i < groups.size(); ++i) {
            StoreNode(numbers[i], height,
                      std::span(children).subspan(groups[i].first, groups[i].last - groups[i].first));
            level.push_back({.page = numbers[i], .last = children[groups[i].last - 1].last});
        }
        return level;
    }

    // Right above the leaves the last child of several is the tail. Higher nodes have an item for each child,
    // and chain their children.
    void StoreNode(std::uint32_t number, std::uint8_t height, std::span<const Built> children) {
        IndexNode node{.number = number, .leaf = false, .level = height, .items = {}};
        for (const Built& child : children) {
            node.items.push_back({.entry = Copy(child.last), .child = child.page});
        }
        if (height == 1 && children.size() > 1) {
            node.tail = children.back().page;
            node.items.pop_back();
        }
        if (height > 1) {
            Chain(children);
        }
        node.Store(pages_, table_);
    }

    void Chain(std::span<const Built> siblings) {
        for (std::size_t i = 0; i < siblings.size(); ++i) {
            IndexNode node = IndexNode::Load(pages_, siblings[i].page, table_);
            node.previous = i == 0 ? 0 : siblings[i - 1].page;
            node.next = i + 1 == siblings.size() ? 0 : siblings[i + 1].page;
            node.Store(pages_, table_);
        }
    }

    /// Divides the members of a level into pages of at least `least` members, the last one apart.
    template <class SizeOf>
    [[nodiscard]] std::vector<Group> Divide(std::size_t count, std::size_t least,
                                            const SizeOf& sizeOf) const {
        const Format& format = pages_.Layout();
        const std::size_t enough = (format.pageSize - format.index.entries) * 9 / 10;
        std::vector<Group> groups = {{0, 0}};
        std::size_t used = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t size = sizeOf(i);
            if (used + size > enough && i - groups.back().first >= least) {
                groups.push_back({i, i});
                used = 0;
            }
            used += size;
            groups.back().last = i + 1;
        }
        LendToLast(groups, least);
        return groups;
    }

    // A last page with too few members gets some of the page before it, if that can spare them.
    static void LendToLast(std::vector<Group>& groups, std::size_t least) {
        while (groups.size() > 1 && groups.back().last - groups.back().first < least) {
            Group& before = groups[groups.size() - 2];
            if (before.last - before.first <= least) {
                return;
            }
            --before.last;
            --groups.back().first;
        }
    }

    /// New pages for a level; the root's own when one is enough.
    [[nodiscard]] std::vector<std::uint32_t> PagesFor(std::size_t count) {
        if (count == 1) {
            return {index_.root};
        }
        std::vector<std::uint32_t> numbers;
        for (std::size_t i = 0; i < count; ++i) {
            numbers.push_back(allocator_.Allocate().number);
            allocator_.AddToMap(index_.map, numbers.back());
        }
        return numbers;
    }

    [[nodiscard]] ByteString Copy(std::size_t entry) const {
        const auto bytes = entries_.At(entry);
        return {bytes.begin(), bytes.end()};
    }

    Transaction& pages_;
    PageAllocator& allocator_;
    std::uint32_t table_;
    const RealIndex& index_;
    const IndexEntries& entries_;
};

}  // namespace

void BuildIndex(Transaction& pages, PageAllocator& allocator, std::uint32_t table, const RealIndex& index,
                const IndexEntries& entries) {
    if (entries.Size() != 0) {
        Builder(pages, allocator, table, index, entries).Run();
    }
}

}  // namespace quardele::jet
