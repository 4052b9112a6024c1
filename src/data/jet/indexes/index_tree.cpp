#include "indexes/index_tree.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "indexes/index_page_editor.h"
#include "indexes/index_walk.h"

namespace quardele::jet {

namespace {

constexpr std::size_t kDeepest = 24;

bool EntryLess(const IndexItem& item, std::span<const std::uint8_t> entry) {
    return CompareBytes(item.entry, entry) < 0;
}

std::size_t LowerBound(const IndexNode& node, std::span<const std::uint8_t> entry) {
    const auto found = std::lower_bound(node.items.begin(), node.items.end(), entry, EntryLess);
    return static_cast<std::size_t>(found - node.items.begin());
}

auto At(std::vector<IndexItem>& items, std::size_t position) {
    return items.begin() + static_cast<std::ptrdiff_t>(position);
}

}  // namespace

ByteString IndexTree::EntryOf(RowId row) const {
    IndexWalk walk(pages_, table_, index_);
    for (bool found = walk.First(); found; found = walk.Next()) {
        if (EntryRow(walk.Entry(), index_.root) == row) {
            return walk.Entry();
        }
    }
    ThrowDamaged(index_.root, u"entrée d'index absente");
}

bool IndexTree::HasKey(std::span<const std::uint8_t> key) const {
    IndexWalk walk(pages_, table_, index_);
    return walk.FirstFrom(key, false) && StartsWith(walk.Entry(), key);
}

bool IndexTree::HasKeyOfOther(std::span<const std::uint8_t> key, RowId row) const {
    IndexWalk walk(pages_, table_, index_);
    for (bool found = walk.FirstFrom(key, false); found && StartsWith(walk.Entry(), key);
         found = walk.Next()) {
        if (EntryRow(walk.Entry(), index_.root) != row) {
            return true;
        }
    }
    return false;
}

void IndexTree::CheckLength(std::size_t entry) {
    if (entry > kLargestEntry) {
        throw basic::RuntimeError(basic::error::kOperationNotSupported,
                                  u"La valeur est trop longue pour être indexée.");
    }
}

IndexSpot IndexTree::SpotOf(std::span<const std::uint8_t> sought) const {
    IndexSpot spot;
    IndexView page = View(index_.root);
    while (!page.IsLeaf()) {
        if (spot.path.size() == kDeepest || (page.IsEmpty() && page.Tail() == 0)) {
            ThrowDamaged(page.Number(), u"index sans fin");
        }
        std::size_t child = page.LowerBound(sought, false);
        if (child == page.End() && page.Tail() == 0) {
            child = page.Before(child);
        }
        spot.path.push_back({page.Number(), child});
        page = View(child == page.End() ? page.Tail() : page.Child(child));
    }
    spot.leaf = page.Number();
    spot.before = page.LowerBound(sought, false);
    return spot;
}

bool IndexTree::HasNeighbour(const IndexSpot& spot, std::size_t behind,
                             std::span<const std::uint8_t> key) const {
    const IndexView leaf = View(spot.leaf);
    const bool before = spot.before > 0
                            ? leaf.CompareStart(leaf.Before(spot.before), key) == 0
                            : FirstFound(leaf.Previous(), &IndexView::Previous, [&](const IndexView& other) {
                                  return other.CompareStart(other.Before(other.End()), key) == 0;
                              });
    if (before || behind < leaf.End()) {
        return before || leaf.CompareStart(behind, key) == 0;
    }
    return FirstFound(leaf.Next(), &IndexView::Next,
                      [&](const IndexView& other) { return other.CompareStart(0, key) == 0; });
}

// What the first leaf that has entries says. Other programs leave empty ones behind.
template <class Says>
bool IndexTree::FirstFound(std::uint32_t leaf, std::uint32_t (IndexView::*further)() const,
                           const Says& says) const {
    for (std::uint32_t hops = 0; leaf != 0; ++hops) {
        const IndexView view = View(leaf);
        if (hops > pages_.PageCount()) {
            ThrowDamaged(leaf, u"feuilles d'index mal enchaînées");
        }
        if (!view.IsEmpty()) {
            return says(view);
        }
        leaf = (view.*further)();
    }
    return false;
}

std::optional<IndexSpot> IndexTree::SpotOfNew(std::span<const std::uint8_t> key) const {
    IndexSpot spot = SpotOf(key);
    if (HasNeighbour(spot, spot.before, key)) {
        return std::nullopt;
    }
    return spot;
}

bool IndexTree::Insert(const ByteString& entry) {
    CheckLength(entry.size());
    const IndexSpot spot = SpotOf(entry);
    if (StartsAt(spot, entry)) {
        ThrowDamaged(spot.leaf, u"entrée d'index en double");
    }
    const bool newKey = !HasNeighbour(spot, spot.before, std::span(entry).first(entry.size() - kEntryRow));
    InsertAt(spot, entry);
    return newKey;
}

bool IndexTree::StartsAt(const IndexSpot& spot, const ByteString& entry) const {
    const IndexView leaf = View(spot.leaf);
    return spot.before < leaf.End() && leaf.CompareStart(spot.before, entry) == 0;
}

void IndexTree::InsertAt(const IndexSpot& spot, const ByteString& entry) {
    if (!TryInsert(spot, entry)) {
        InsertAnyhow(entry);
    }
}

bool IndexTree::TryInsert(const IndexSpot& spot, const ByteString& entry) {
    {
        const IndexView leaf = View(spot.leaf);
        const bool last = spot.before == leaf.End();
        if (!IndexPageEditor::CanInsert(leaf, spot.before, entry) || (last && !CanTellNodes(spot, entry))) {
            return false;
        }
        if (last) {
            TellNodes(spot, entry);
        }
    }
    IndexPageEditor(pages_, table_).InsertLeafEntry(spot.leaf, spot.before, entry);
    return true;
}

bool IndexTree::CanTellNodes(const IndexSpot& spot, const ByteString& entry) const {
    return std::all_of(spot.path.begin(), spot.path.end(), [&](const IndexSpot::Step& step) {
        const IndexView node = View(step.node);
        return step.child == node.End() || (node.Tail() == 0 && node.Behind(step.child) == node.End() &&
                                            node.CompareStart(step.child, entry) < 0 &&
                                            IndexPageEditor::CanReplace(node, step.child, entry));
    });
}

void IndexTree::TellNodes(const IndexSpot& spot, const ByteString& entry) {
    for (const IndexSpot::Step& step : spot.path) {
        if (step.child < View(step.node).End()) {
            IndexPageEditor(pages_, table_).ReplaceNodeEntry(step.node, step.child, entry);
        }
    }
}

void IndexTree::InsertAnyhow(const ByteString& entry) {
    Path path;
    IndexNode leaf = Descend(entry, path);
    const std::size_t position = LowerBound(leaf, entry);
    const bool appended = position == leaf.items.size() && leaf.next == 0;
    leaf.items.insert(At(leaf.items, position), {entry, 0});
    SaveLeaf(path, std::move(leaf), appended);
}

bool IndexTree::Remove(const ByteString& entry) {
    const IndexSpot spot = SpotOf(entry);
    if (!StartsAt(spot, entry)) {
        ThrowDamaged(spot.leaf, u"entrée d'index absente");
    }
    const auto key = std::span(entry).first(entry.size() - kEntryRow);
    const bool onlyOne = !HasNeighbour(spot, View(spot.leaf).Behind(spot.before), key);
    if (!TryRemove(spot)) {
        RemoveAnyhow(entry);
    }
    return onlyOne;
}

// The last entry of a leaf is known to the nodes above.
bool IndexTree::TryRemove(const IndexSpot& spot) {
    {
        const IndexView leaf = View(spot.leaf);
        const bool last = leaf.Behind(spot.before) == leaf.End();
        if ((last && !spot.path.empty()) || MayJoin(spot) || !IndexPageEditor::CanRemove(leaf, spot.before)) {
            return false;
        }
    }
    IndexPageEditor(pages_, table_).RemoveLeafEntry(spot.leaf, spot.before);
    return true;
}

void IndexTree::RemoveAnyhow(const ByteString& entry) {
    Path path;
    IndexNode leaf = Descend(entry, path);
    const std::size_t position = LowerBound(leaf, entry);
    if (position == leaf.items.size() || leaf.items[position].entry != entry) {
        ThrowDamaged(leaf.number, u"entrée d'index absente");
    }
    leaf.items.erase(At(leaf.items, position));
    if (leaf.items.empty() && !path.empty()) {
        return DropLeaf(path, leaf);
    }
    Store(leaf);
    if (!path.empty() && !TryJoin(path, path.size() - 1)) {
        ReplaceChild(path, path.size() - 1, {{leaf.number, leaf.items.back().entry}});
    }
}

IndexNode IndexTree::Descend(std::span<const std::uint8_t> entry, Path& path) const {
    IndexNode node = Load(index_.root);
    while (!node.leaf) {
        if (path.size() == kDeepest || node.ChildCount() == 0) {
            ThrowDamaged(node.number, u"index sans fin");
        }
        const std::size_t position = std::min(LowerBound(node, entry), node.ChildCount() - 1);
        path.push_back({node.number, position});
        node = Load(node.Child(position));
    }
    return node;
}

// Other programs leave empty leaves behind; the entry that stands for one in its node is as good.
ByteString IndexTree::LastBelow(std::uint32_t page) const {
    IndexNode node = Load(page);
    ByteString last;
    for (std::size_t depth = 0; !node.leaf; ++depth) {
        if (depth == kDeepest || node.ChildCount() == 0) {
            ThrowDamaged(node.number, u"index sans fin");
        }
        last = node.items.empty() ? last : node.items.back().entry;
        node = Load(node.Child(node.ChildCount() - 1));
    }
    last = node.items.empty() ? last : node.items.back().entry;
    if (last.empty()) {
        ThrowDamaged(node.number, u"feuille d'index vide");
    }
    return last;
}

std::uint32_t IndexTree::NewPage() {
    const std::uint32_t page = allocator_.Allocate().number;
    allocator_.AddToMap(index_.map, page);
    return page;
}

void IndexTree::DropPage(std::uint32_t page) {
    allocator_.RemoveFromMap(index_.map, page);
    allocator_.Free(page);
}

void IndexTree::SaveLeaf(const Path& path, IndexNode leaf, bool appended) {
    if (leaf.Fits(pages_.Layout())) {
        Store(leaf);
        if (!path.empty()) {
            ReplaceChild(path, path.size() - 1, {{leaf.number, leaf.items.back().entry}});
        }
    } else if (path.empty()) {
        SplitRoot(std::move(leaf), appended);
    } else {
        ReplaceChild(path, path.size() - 1, Split(std::move(leaf), appended));
    }
}

void IndexTree::DropLeaf(const Path& path, const IndexNode& leaf) {
    if (leaf.previous != 0) {
        Relink(leaf.previous, std::nullopt, leaf.next);
    }
    if (leaf.next != 0) {
        Relink(leaf.next, leaf.previous, std::nullopt);
    }
    DropPage(leaf.number);
    ReplaceChild(path, path.size() - 1, {});
}

void IndexTree::ReplaceChild(const Path& path, std::size_t depth, const Children& children) {
    IndexNode node = Load(path[depth].node);
    const std::size_t position = path[depth].position;
    const bool wasLast = position + 1 == node.ChildCount();
    const bool wasTail = position == node.items.size();
    std::vector<IndexItem> items;
    for (const ChildRef& child : children) {
        const bool keeps = !child.last && !wasTail;
        items.push_back({keeps ? node.items[position].entry : child.last.value_or(ByteString()), child.page});
    }
    if (wasTail) {
        node.tail = items.empty() ? 0 : items.back().child;
        if (!items.empty()) {
            items.pop_back();
        }
        node.items.insert(node.items.end(), items.begin(), items.end());
    } else {
        if (items.size() == 1 && items[0].entry == node.items[position].entry) {
            return;  // nothing that this node or those above it know has changed
        }
        node.items.erase(At(node.items, position));
        node.items.insert(At(node.items, position), items.begin(), items.end());
    }
    SaveNode(path, depth, std::move(node), wasLast);
}

// A node right above the leaves has a tail when it has two children or more; nobody else has one.
void IndexTree::SaveNode(const Path& path, std::size_t depth, IndexNode node, bool lastChanged) {
    if (node.ChildCount() == 0) {
        if (depth == 0) {
            return Store({.number = node.number, .items = {}});
        }
        DropPage(node.number);
        return ReplaceChild(path, depth - 1, {});
    }
    const bool aboveLeaves = IsAboveLeaves(node);
    if (node.tail != 0 && node.items.empty()) {
        node.items.push_back({LastBelow(node.tail), node.tail});
        node.tail = 0;
    } else if (aboveLeaves && node.tail == 0 && node.items.size() > 1) {
        node.tail = node.items.back().child;
        node.items.pop_back();
    }
    if (depth == 0 && node.ChildCount() == 1) {
        return CollapseRoot(std::move(node));
    }
    if (!node.Fits(pages_.Layout())) {
        if (depth == 0) {
            return SplitRoot(std::move(node), false);
        }
        return ReplaceChild(path, depth - 1, Split(std::move(node), false));
    }
    Store(node);
    if (!aboveLeaves) {
        RelinkChildren(node);
    }
    if (depth > 0 && !TryJoin(path, depth - 1) && lastChanged) {
        ReplaceChild(path, depth - 1, {{node.number, LastBelow(node.number)}});
    }
}

// Neighbours are looked at only by a page that is half empty: of two that fit on one page one always is.
bool IndexTree::IsHalfEmpty(std::size_t used) const {
    const Format& format = pages_.Layout();
    return used * 2 <= format.pageSize - format.index.entries;
}

// A neighbour may hang below another node, or need another prefix: Joined() knows for certain.
bool IndexTree::MayJoin(const IndexSpot& spot) const {
    const IndexView leaf = View(spot.leaf);
    const std::size_t used = leaf.End() - (leaf.Behind(spot.before) - spot.before);
    if (spot.path.empty() || !IsHalfEmpty(used)) {
        return false;
    }
    const auto hasRoom = [&](std::uint32_t neighbour) {
        return neighbour != 0 && View(neighbour).Room() >= used;
    };
    return hasRoom(leaf.Previous()) || hasRoom(leaf.Next());
}

bool IndexTree::TryJoin(const Path& path, std::size_t depth) {
    const IndexNode parent = Load(path[depth].node);
    const std::size_t position = path[depth].position;
    if (!IsHalfEmpty(View(parent.Child(position)).End())) {
        return false;
    }
    for (std::size_t left = position - std::min<std::size_t>(position, 1);
         left <= position && left + 1 < parent.ChildCount(); ++left) {
        const IndexView first = View(parent.Child(left));
        if (View(parent.Child(left + 1)).End() > first.Room()) {
            continue;
        }
        if (const auto joined = Joined(Load(first.Number()), Load(parent.Child(left + 1)))) {
            StoreJoined(path, depth, left, *joined);
            return true;
        }
    }
    return false;
}

// The left page with what is on the right one as well; none when that is too much, or when other programs
// have chained the pages in a way of their own.
std::optional<IndexNode> IndexTree::Joined(IndexNode left, const IndexNode& right) const {
    const bool chained = left.next == right.number && right.previous == left.number;
    if (left.leaf != right.leaf || !chained) {
        return std::nullopt;
    }
    if (left.tail != 0) {
        left.items.push_back({LastBelow(left.number), left.tail});
    }
    left.items.insert(left.items.end(), right.items.begin(), right.items.end());
    left.next = right.next;
    left.tail = right.tail;
    if (!left.leaf && left.tail == 0 && IsAboveLeaves(left)) {
        left.tail = left.items.back().child;
        left.items.pop_back();
    }
    return left.Fits(pages_.Layout()) ? std::optional(std::move(left)) : std::nullopt;
}

// What stood for the right page in the parent now stands for the left one.
void IndexTree::StoreJoined(const Path& path, std::size_t depth, std::size_t left, const IndexNode& joined) {
    IndexNode parent = Load(path[depth].node);
    const bool last = left + 2 == parent.ChildCount();
    const std::uint32_t right = parent.Child(left + 1);
    Store(joined);
    if (joined.next != 0) {
        Relink(joined.next, joined.number, std::nullopt);
    }
    if (!joined.leaf && !IsAboveLeaves(joined)) {
        RelinkChildren(joined);
    }
    DropPage(right);
    if (left + 1 < parent.items.size()) {
        parent.items[left + 1] = {LastBelow(joined.number), joined.number};
    } else {
        parent.tail = joined.number;
    }
    parent.items.erase(At(parent.items, left));
    SaveNode(path, depth, std::move(parent), last);
}

bool IndexTree::IsAboveLeaves(const IndexNode& node) const {
    return Load(node.Child(0)).leaf;
}

// The number of items that stay on the left page: all but the new one when entries come in order, otherwise
// about half of them.
std::size_t IndexTree::SplitPoint(const IndexNode& node, bool appended) const {
    const Format& format = pages_.Layout();
    const std::size_t count = node.items.size();
    if (appended && node.Fits(format, 0, count - 1)) {
        return count - 1;
    }
    // Rounded up: of three children of a node with very long keys two stay together on the left, which nobody
    // may ever add to.
    const std::size_t half = (count + 1) / 2;
    for (std::size_t distance = 0; distance <= half; ++distance) {
        for (const std::size_t point : {half - distance, half + distance}) {
            if (point > 0 && point < count && node.Fits(format, 0, point) &&
                node.Fits(format, point, count)) {
                return point;
            }
        }
    }
    ThrowDamaged(node.number, u"page d'index impossible à partager");
}

// The left part stays on the page, the right one gets a new page.
IndexTree::Children IndexTree::Split(IndexNode node, bool appended) {
    const bool aboveLeaves = !node.leaf && IsAboveLeaves(node);
    const std::size_t point = SplitPoint(node, appended);
    IndexNode right = node;
    right.number = NewPage();
    right.items.erase(right.items.begin(), At(right.items, point));
    right.previous = node.number;
    node.items.erase(At(node.items, point), node.items.end());
    node.tail = 0;
    const ByteString leftLast = node.items.back().entry;
    if (aboveLeaves && node.items.size() > 1) {
        node.tail = node.items.back().child;
        node.items.pop_back();
    }
    if (node.next != 0) {
        Relink(node.next, right.number, std::nullopt);
    }
    node.next = right.number;
    Store(node);
    Store(right);
    Children children = {{node.number, leftLast}, {right.number, std::nullopt}};
    if (right.leaf) {
        children[1].last = right.items.back().entry;
    } else {
        if (!aboveLeaves) {
            RelinkChildren(node);
            RelinkChildren(right);
        }
        children[1].last = LastBelow(right.number);
    }
    return children;
}

// The root keeps its page: what it held moves one level down.
void IndexTree::SplitRoot(IndexNode root, bool appended) {
    const std::uint32_t rootPage = root.number;
    const auto level = static_cast<std::uint8_t>(root.level + 1);
    const bool leaf = root.leaf;
    root.number = NewPage();
    const Children children = Split(std::move(root), appended);
    IndexNode parent{.number = rootPage, .leaf = false, .level = level, .items = {}};
    parent.items.push_back({*children[0].last, children[0].page});
    if (leaf) {
        parent.tail = children[1].page;
    } else {
        parent.items.push_back({*children[1].last, children[1].page});
    }
    Store(parent);
}

// A root with a single child takes its place.
void IndexTree::CollapseRoot(IndexNode root) {
    const std::uint32_t rootPage = root.number;
    while (!root.leaf && root.ChildCount() == 1) {
        const std::uint32_t child = root.Child(0);
        root = Load(child);
        DropPage(child);
    }
    root.number = rootPage;
    root.previous = 0;
    root.next = 0;
    Store(root);
}

// Nodes are chained with their siblings below the same parent only.
void IndexTree::RelinkChildren(const IndexNode& node) {
    for (std::size_t i = 0; i < node.ChildCount(); ++i) {
        Relink(node.Child(i), i == 0 ? 0 : node.Child(i - 1),
               i + 1 == node.ChildCount() ? 0 : node.Child(i + 1));
    }
}

void IndexTree::Relink(std::uint32_t page, std::optional<std::uint32_t> previous,
                       std::optional<std::uint32_t> next) {
    const auto& at = pages_.Layout().index;
    const PagePtr held = pages_.Read(page);
    const ByteView view = held->View();
    if ((!previous || view.U32(at.previous) == *previous) && (!next || view.U32(at.next) == *next)) {
        return;
    }
    const auto bytes = pages_.Write(page).Mutable();
    if (previous) {
        StoreLittle(bytes.subspan(at.previous), *previous);
    }
    if (next) {
        StoreLittle(bytes.subspan(at.next), *next);
    }
}

}  // namespace quardele::jet
