#include "index_walk.h"

namespace quardele::jet {

namespace {

/// With two entries per node a file of 2 GiB has no deeper tree; a deeper one goes in circles.
constexpr int kDeepest = 24;

}  // namespace

IndexWalk::IndexWalk(const PageSource& pages, std::uint32_t table, const RealIndex& index)
    : pages_(pages), table_(table), root_(index.root) {}

IndexPage IndexWalk::Load(std::uint32_t number) const {
    return {pages_.Read(number), pages_.Layout(), table_};
}

template <class Choose>
void IndexWalk::Descend(const Choose& choose) {
    IndexPage page = Load(root_);
    for (int depth = 0; !page.IsLeaf(); ++depth) {
        if (depth == kDeepest) {
            ThrowDamaged(page.Number(), u"index sans fin");
        }
        const std::size_t chosen = choose(page);
        if (chosen < page.Count()) {
            page = Load(page.Child(chosen));
        } else if (page.Tail() != 0) {
            page = Load(page.Tail());
        } else if (page.Count() > 0) {
            page = Load(page.Child(page.Count() - 1));
        } else {
            ThrowDamaged(page.Number(), u"nœud d'index vide");
        }
    }
    leaf_.emplace(std::move(page));
}

std::size_t IndexWalk::LowerBound(const IndexPage& page, std::span<const std::uint8_t> sought, bool behind) {
    std::size_t first = 0;
    for (std::size_t count = page.Count(); count > 0;) {
        const std::size_t half = count / 2;
        const int order = page.CompareStart(first + half, sought);
        if (order < 0 || (order == 0 && behind)) {
            first += half + 1;
            count -= half + 1;
        } else {
            count = half;
        }
    }
    return first;
}

bool IndexWalk::Settle(std::size_t position) {
    position_ = position;
    leaf_->CopyEntry(position, entry_);
    return true;
}

// The entry at the position, or the first one of the leaves that follow. Entries must grow from leaf to leaf:
// this is what ends the walk in a chain of leaves that goes in a circle.
bool IndexWalk::ForwardFrom(std::size_t position) {
    ByteString last;
    for (std::uint32_t hops = 0; position >= leaf_->Count(); ++hops, position = 0) {
        if (leaf_->Count() > 0) {
            leaf_->CopyEntry(leaf_->Count() - 1, last);
        }
        const std::uint32_t next = leaf_->Next();
        if (next == 0) {
            leaf_.reset();
            return false;
        }
        leaf_.emplace(Load(next));
        const bool inOrder = leaf_->Count() == 0 || last.empty() || leaf_->CompareStart(0, last) > 0;
        if (!leaf_->IsLeaf() || !inOrder || hops > pages_.PageCount()) {
            ThrowDamaged(next, u"feuilles d'index mal enchaînées");
        }
    }
    return Settle(position);
}

// The entry before the position, in this leaf or the leaves before.
bool IndexWalk::BackwardFrom(std::size_t position) {
    ByteString first;
    for (std::uint32_t hops = 0; position == 0; ++hops, position = leaf_->Count()) {
        if (leaf_->Count() > 0) {
            leaf_->CopyEntry(0, first);
        }
        const std::uint32_t previous = leaf_->Previous();
        if (previous == 0) {
            leaf_.reset();
            return false;
        }
        leaf_.emplace(Load(previous));
        const bool inOrder =
            leaf_->Count() == 0 || first.empty() || leaf_->CompareStart(leaf_->Count() - 1, first) < 0;
        if (!leaf_->IsLeaf() || !inOrder || hops > pages_.PageCount()) {
            ThrowDamaged(previous, u"feuilles d'index mal enchaînées");
        }
    }
    return Settle(position - 1);
}

bool IndexWalk::First() {
    Descend([](const IndexPage&) { return std::size_t{0}; });
    return ForwardFrom(0);
}

bool IndexWalk::Last() {
    Descend([](const IndexPage& node) { return node.Count(); });
    return BackwardFrom(leaf_->Count());
}

bool IndexWalk::Next() {
    return ForwardFrom(position_ + 1);
}

bool IndexWalk::Previous() {
    return BackwardFrom(position_);
}

void IndexWalk::GoToLeafOf(std::span<const std::uint8_t> sought, bool behind) {
    Descend([&](const IndexPage& node) { return LowerBound(node, sought, behind); });
}

bool IndexWalk::FirstFrom(std::span<const std::uint8_t> sought, bool behind) {
    GoToLeafOf(sought, behind);
    return ForwardFrom(LowerBound(*leaf_, sought, behind));
}

bool IndexWalk::LastBefore(std::span<const std::uint8_t> sought, bool behind) {
    GoToLeafOf(sought, behind);
    return BackwardFrom(LowerBound(*leaf_, sought, behind));
}

}  // namespace quardele::jet
