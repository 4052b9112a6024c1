#include "indexes/index_walk.h"

namespace quardele::jet {

namespace {

/// With two entries per node a file of 2 GiB has no deeper tree; a deeper one goes in circles.
constexpr int kDeepest = 24;

// Whether the last entry of a leaf does not come before its first.
bool Grows(const IndexView& leaf) {
    if (leaf.IsEmpty()) {
        return true;
    }
    ByteString first;
    leaf.CopyEntry(0, first);
    return leaf.CompareStart(leaf.Before(leaf.End()), first) >= 0;
}

}  // namespace

IndexWalk::IndexWalk(const PageSource& pages, std::uint32_t table, const RealIndex& index)
    : pages_(pages), table_(table), root_(index.root) {}

IndexView IndexWalk::Load(std::uint32_t number) const {
    return {pages_.Read(number), pages_.Layout(), table_};
}

template <class Choose>
void IndexWalk::Descend(const Choose& choose) {
    IndexView page = Load(root_);
    for (int depth = 0; !page.IsLeaf(); ++depth) {
        if (depth == kDeepest) {
            ThrowDamaged(page.Number(), u"index sans fin");
        }
        const std::size_t chosen = choose(page);
        if (chosen < page.End()) {
            page = Load(page.Child(chosen));
        } else if (page.Tail() != 0) {
            page = Load(page.Tail());
        } else if (!page.IsEmpty()) {
            page = Load(page.Child(page.Before(page.End())));
        } else {
            ThrowDamaged(page.Number(), u"nœud d'index vide");
        }
    }
    leaf_.emplace(std::move(page));
}

bool IndexWalk::Settle(std::size_t entry) {
    at_ = entry;
    leaf_->CopyEntry(entry, entry_);
    return true;
}

// The entry itself, or the first one of the leaves that follow. Entries must grow from leaf to leaf and
// from end to end of each: this is what ends the walk in a chain of leaves that goes in a circle.
bool IndexWalk::ForwardFrom(std::size_t entry) {
    ByteString last;
    for (std::uint32_t hops = 0; entry >= leaf_->End(); ++hops, entry = 0) {
        if (!leaf_->IsEmpty()) {
            leaf_->CopyEntry(leaf_->Before(leaf_->End()), last);
        }
        const std::uint32_t next = leaf_->Next();
        if (next == 0) {
            leaf_.reset();
            return false;
        }
        leaf_.emplace(Load(next));
        const bool inOrder = last.empty() || leaf_->IsEmpty() || leaf_->CompareStart(0, last) > 0;
        if (!leaf_->IsLeaf() || !inOrder || !Grows(*leaf_) || hops > pages_.PageCount()) {
            ThrowDamaged(next, u"feuilles d'index mal enchaînées");
        }
    }
    return Settle(entry);
}

// The entry before one, in this leaf or the leaves before.
bool IndexWalk::BackwardFrom(std::size_t entry) {
    ByteString first;
    for (std::uint32_t hops = 0; entry == 0; ++hops, entry = leaf_->End()) {
        if (!leaf_->IsEmpty()) {
            leaf_->CopyEntry(0, first);
        }
        const std::uint32_t previous = leaf_->Previous();
        if (previous == 0) {
            leaf_.reset();
            return false;
        }
        leaf_.emplace(Load(previous));
        const bool inOrder =
            leaf_->IsEmpty() || first.empty() || leaf_->CompareStart(leaf_->Before(leaf_->End()), first) < 0;
        if (!leaf_->IsLeaf() || !inOrder || !Grows(*leaf_) || hops > pages_.PageCount()) {
            ThrowDamaged(previous, u"feuilles d'index mal enchaînées");
        }
    }
    return Settle(leaf_->Before(entry));
}

bool IndexWalk::First() {
    Descend([](const IndexView&) { return std::size_t{0}; });
    return ForwardFrom(0);
}

bool IndexWalk::Last() {
    Descend([](const IndexView& node) { return node.End(); });
    return BackwardFrom(leaf_->End());
}

bool IndexWalk::Next() {
    return ForwardFrom(leaf_->Behind(at_));
}

bool IndexWalk::Previous() {
    return BackwardFrom(at_);
}

void IndexWalk::GoToLeafOf(std::span<const std::uint8_t> sought, bool behind) {
    Descend([&](const IndexView& node) { return node.LowerBound(sought, behind); });
}

bool IndexWalk::FirstFrom(std::span<const std::uint8_t> sought, bool behind) {
    GoToLeafOf(sought, behind);
    return ForwardFrom(leaf_->LowerBound(sought, behind));
}

bool IndexWalk::LastBefore(std::span<const std::uint8_t> sought, bool behind) {
    GoToLeafOf(sought, behind);
    return BackwardFrom(leaf_->LowerBound(sought, behind));
}

}  // namespace quardele::jet
