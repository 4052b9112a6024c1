#include "check/check_index.h"

#include <algorithm>

#include "check/check_maps.h"

namespace quardele::jet {

namespace {

/// No tree of a file of 2 GiB is deeper.
constexpr std::size_t kDeepest = 24;
constexpr std::uint8_t kNullAscending = 0x00;
constexpr std::uint8_t kNullDescending = 0xFF;

}  // namespace

IndexCheck::IndexCheck(CheckContext& context, CheckPlace place, const TableDef& def, const RealIndex& index)
    : context_(context),
      place_(std::move(place)),
      def_(def),
      index_(index),
      entries_(context, place_, def, index),
      owner_(context.ledger.AddOwner(place_)) {}

void IndexCheck::Report(FaultCode code, std::uint32_t page, Text detail) {
    context_.report.Add(code, place_, page, std::move(detail));
}

void IndexCheck::Run(const std::vector<std::uint32_t>& dataPages) {
    Descend(index_.root, 0);
    for (const Level& level : nodes_) {
        CheckLinks(level, true);
    }
    CheckLinks(leaves_, false);
    CheckMapOfTree();
    if (!entries_.Agrees(found_)) {
        entries_.ReportDifferences(dataPages, [this](const EntriesCheck::UseEntry& use) { WalkLeaves(use); });
    }
}

// A page that is met twice, as in a tree that goes in a circle, cannot be claimed the second time.
void IndexCheck::Descend(std::uint32_t number, std::size_t depth) {
    if (depth > kDeepest) {
        Report(FaultCode::IndexPage, number, u"index sans fin");
        return;
    }
    if (!context_.ledger.Claim(number, owner_)) {
        return;
    }
    treePages_.push_back(number);
    context_.report.Guard(FaultCode::IndexPage, place_, number, [&] {
        const IndexPage page(context_.pages.Read(number), context_.pages.Layout(), def_.page);
        CheckPage(page, depth);
        if (page.IsLeaf()) {
            CheckLeaf(page);
        } else {
            CheckNode(page, depth);
        }
    });
    context_.pageDone();
}

void IndexCheck::CheckPage(const IndexPage& page, std::size_t depth) {
    const Format& format = context_.pages.Layout();
    const PagePtr bytes = context_.pages.Read(page.Number());
    const std::size_t room = format.pageSize - format.index.entries;
    if (bytes->View().U16(format.data.freeBytes) + page.UsedBytes() != room) {
        Report(FaultCode::FreeBytes, page.Number());
    }
    const Linked linked{page.Number(), page.Previous(), page.Next()};
    if (!page.IsLeaf()) {
        nodes_.resize(std::max(nodes_.size(), depth + 1));
        nodes_[depth].push_back(linked);
        return;
    }
    if (leaves_.empty()) {
        leafDepth_ = depth;
    }
    if (depth != leafDepth_) {
        Report(FaultCode::IndexPage, page.Number(), u"feuille d'un autre niveau");
    }
    leaves_.push_back(linked);
}

void IndexCheck::CheckNode(const IndexPage& node, std::size_t depth) {
    if (node.Count() == 0) {
        Report(FaultCode::IndexPage, node.Number(), u"nœud d'index vide");
    }
    for (std::size_t i = 0; i < node.Count(); ++i) {
        Descend(node.Child(i), depth + 1);
        node.CopyEntry(i, bound_);
        if (!previous_.empty() && CompareBytes(previous_, bound_) > 0) {
            Report(FaultCode::IndexSeparator, node.Number(), NumberText(node.Child(i)));
        }
    }
    if (node.Tail() != 0) {
        Descend(node.Tail(), depth + 1);
    }
}

void IndexCheck::CheckLeaf(const IndexPage& leaf) {
    if (leaf.Tail() != 0) {
        Report(FaultCode::IndexPage, leaf.Number(), u"feuille d'index avec un enfant");
    }
    for (std::size_t i = 0; i < leaf.Count(); ++i) {
        leaf.CopyEntry(i, entry_);
        CheckEntry(leaf.Number());
        found_.Add(entries_.Comparable(entry_));
        previous_.swap(entry_);
        bound_.clear();
    }
}

void IndexCheck::CheckEntry(std::uint32_t page) {
    if (!bound_.empty() && CompareBytes(bound_, entry_) >= 0) {
        Report(FaultCode::IndexSeparator, page);
    }
    if (!previous_.empty() && CompareBytes(previous_, entry_) >= 0) {
        Report(FaultCode::IndexOrder, page);
    }
    if (index_.unique && !previous_.empty() && IsDuplicate()) {
        Report(FaultCode::IndexDuplicate, page);
    }
}

// Keys that are Null in all columns may occur again.
bool IndexCheck::IsDuplicate() const {
    const auto key = std::span(entry_).first(entry_.size() - kEntryRow);
    if (previous_.size() != entry_.size() || !StartsWith(previous_, key)) {
        return false;
    }
    bool allNull = key.size() == index_.columns.size();
    for (std::size_t i = 0; allNull && i < key.size(); ++i) {
        allNull = key[i] == (index_.columns[i].ascending ? kNullAscending : kNullDescending);
    }
    return !allNull;
}

void IndexCheck::CheckLinks(const Level& level, bool mayBeUnlinked) {
    for (std::size_t i = 0; i < level.size(); ++i) {
        const std::uint32_t left = i == 0 ? 0 : level[i - 1].page;
        const std::uint32_t right = i + 1 == level.size() ? 0 : level[i + 1].page;
        const auto isRight = [mayBeUnlinked](std::uint32_t link, std::uint32_t wanted) {
            return link == wanted || (mayBeUnlinked && link == 0);
        };
        if (!isRight(level[i].previous, left) || !isRight(level[i].next, right)) {
            Report(FaultCode::IndexLinks, level[i].page);
        }
    }
}

void IndexCheck::CheckMapOfTree() {
    const auto mapPages = CheckMap(context_, index_.map, place_);
    std::sort(treePages_.begin(), treePages_.end());
    std::vector<std::uint32_t> different;
    std::set_symmetric_difference(mapPages.begin(), mapPages.end(), treePages_.begin(), treePages_.end(),
                                  std::back_inserter(different));
    for (const std::uint32_t page : different) {
        Report(FaultCode::IndexMap, page);
    }
}

void IndexCheck::WalkLeaves(const EntriesCheck::UseEntry& use) const {
    CheckReport unheard;
    ByteString entry;
    for (const Linked& linked : leaves_) {
        unheard.Guard(FaultCode::IndexPage, place_, linked.page, [&] {
            const IndexPage leaf(context_.pages.Read(linked.page), context_.pages.Layout(), def_.page);
            for (std::size_t i = 0; i < leaf.Count(); ++i) {
                leaf.CopyEntry(i, entry);
                use(entry, linked.page);
            }
        });
    }
}

}  // namespace quardele::jet
