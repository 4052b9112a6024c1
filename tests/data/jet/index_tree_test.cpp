// The index tree under thousands of changes, against a sorted set of entries.

#include <random>
#include <set>

#include "commit/transaction.h"
#include "indexes/index_node.h"
#include "indexes/index_tree.h"
#include "indexes/index_walk.h"
#include "pages/usage_map.h"
#include "support.h"
#include "table_impl.h"

namespace quardele::jet::test {
namespace {

using Entries = std::set<ByteString>;

ByteString MakeEntry(const std::string& key, std::uint32_t row) {
    ByteString entry = {0x7F};
    entry.insert(entry.end(), key.begin(), key.end());
    entry.insert(entry.end(), {0x01, 0x00, static_cast<std::uint8_t>(row >> 16),
                               static_cast<std::uint8_t>(row >> 8), static_cast<std::uint8_t>(row), 7});
    return entry;
}

/// An index of a real table, whose entries are free to be changed: its rows are not looked at.
class Tree {
 public:
    Tree()
        : database_(Database::Open(folder_.Copy(SampleFile("DATA/talmeon.mdb")))),
          table_(database_->OpenTable(u"TVEH_DETAIL")),
          index_(table_->Impl().Def().realIndexes.at(0)),
          pages_(table_->Impl().Owner().Cache()),
          allocator_(pages_),
          tree_(pages_, allocator_, table_->Impl().Def().page, index_) {
        for (const ByteString& entry : Walk(true)) {
            tree_.Remove(entry);
        }
    }

    void Insert(const ByteString& entry) { tree_.Insert(entry); }
    void Remove(const ByteString& entry) { tree_.Remove(entry); }
    [[nodiscard]] const PageSource& Pages() const { return pages_; }
    [[nodiscard]] const RealIndex& Index() const { return index_; }
    [[nodiscard]] std::uint32_t TablePage() const { return table_->Impl().Def().page; }

    [[nodiscard]] std::vector<ByteString> Walk(bool forward) const {
        std::vector<ByteString> entries;
        IndexWalk walk(pages_, TablePage(), index_);
        for (bool found = forward ? walk.First() : walk.Last(); found;
             found = forward ? walk.Next() : walk.Previous()) {
            entries.push_back(walk.Entry());
        }
        return entries;
    }

    void ExpectHolds(const Entries& expected) {
        const std::vector<ByteString> sorted(expected.begin(), expected.end());
        ASSERT_EQ(Walk(true), sorted);
        ASSERT_EQ(Walk(false), std::vector<ByteString>(sorted.rbegin(), sorted.rend()));
        pagesOfTree_.clear();
        height_ = 0;
        CheckBelow(index_.root, 0);
        std::sort(pagesOfTree_.begin(), pagesOfTree_.end());
        EXPECT_EQ(pagesOfTree_, ReadUsageMap(pages_, index_.map));
    }
    [[nodiscard]] int Height() const { return height_; }

 private:
    // Entries that were put in and taken out one by one leave the page that a node writes with all of them.
    void ExpectAsStoredWhole(const IndexNode& node) {
        const ByteString now = Bytes(node.number);
        node.Store(pages_, TablePage());
        EXPECT_EQ(now, Bytes(node.number));
    }
    ByteString Bytes(std::uint32_t page) const {
        const PagePtr held = pages_.Read(page);
        return {held->bytes.begin(), held->bytes.end()};
    }

    // Each item of a node is the last entry below its child; only nodes right above leaves have a tail, and
    // then an item as well; siblings below one parent are chained.
    ByteString CheckBelow(std::uint32_t page, int depth) {
        pagesOfTree_.push_back(page);
        height_ = std::max(height_, depth + 1);
        const IndexNode node = IndexNode::Load(pages_, page, TablePage());
        EXPECT_TRUE(node.Fits(pages_.Layout()));
        ExpectAsStoredWhole(node);
        if (node.leaf) {
            EXPECT_TRUE(depth == 0 || !node.items.empty());
            return node.items.empty() ? ByteString() : node.items.back().entry;
        }
        EXPECT_FALSE(node.items.empty());
        EXPECT_TRUE(depth > 0 || node.ChildCount() > 1);
        const bool aboveLeaves = IndexNode::Load(pages_, node.Child(0), TablePage()).leaf;
        EXPECT_EQ(node.tail != 0, aboveLeaves && node.ChildCount() > 1);
        ByteString last;
        for (std::size_t i = 0; i < node.ChildCount(); ++i) {
            last = CheckBelow(node.Child(i), depth + 1);
            EXPECT_TRUE(i == node.items.size() || last == node.items[i].entry);
            const IndexNode child = IndexNode::Load(pages_, node.Child(i), TablePage());
            if (!child.leaf) {
                EXPECT_EQ(child.previous, i == 0 ? 0 : node.Child(i - 1));
                EXPECT_EQ(child.next, i + 1 == node.ChildCount() ? 0 : node.Child(i + 1));
            }
        }
        return last;
    }

    TempFolder folder_;
    std::shared_ptr<Database> database_;
    std::shared_ptr<Table> table_;
    const RealIndex& index_;
    Transaction pages_;
    PageAllocator allocator_;
    IndexTree tree_;
    std::vector<std::uint32_t> pagesOfTree_;
    int height_ = 0;
};

TEST(IndexTree, EntriesInOrderFillThePagesToTheEnd) {
    Tree tree;
    Entries expected;
    for (std::uint32_t i = 0; i < 6000; ++i) {
        const ByteString entry = MakeEntry(std::to_string(1000000 + i), i);
        tree.Insert(entry);
        expected.insert(entry);
    }
    tree.ExpectHolds(expected);
    EXPECT_EQ(tree.Height(), 2);
    // Leaves that entries are appended to stay full, so that few are needed.
    EXPECT_LT(ReadUsageMap(tree.Pages(), tree.Index().map).size(), 20u);
}

TEST(IndexTree, RandomChangesOfLongKeysKeepADeepTreeInOrder) {
    Tree tree;
    Entries expected;
    std::mt19937 random(20261120);
    const auto randomEntry = [&random] {
        const auto number = static_cast<std::uint32_t>(random() % 100000);
        return MakeEntry(
            std::string(number * 7 % 250, static_cast<char>('J' + number % 40)) + std::to_string(number),
            number);
    };
    for (int round = 0; round < 4; ++round) {
        const bool growing = round % 2 == 0;
        for (int i = 0; i < 3000; ++i) {
            if (growing ? random() % 5 != 0 : random() % 5 == 0) {
                const ByteString entry = randomEntry();
                if (expected.insert(entry).second) {
                    tree.Insert(entry);
                }
            } else if (!expected.empty()) {
                const auto found = expected.lower_bound(randomEntry());
                const ByteString entry = found == expected.end() ? *expected.begin() : *found;
                tree.Remove(entry);
                expected.erase(entry);
            }
        }
        tree.ExpectHolds(expected);
        EXPECT_TRUE(!growing || tree.Height() >= 3);
    }
    while (!expected.empty()) {
        const auto found = expected.lower_bound(randomEntry());
        const ByteString entry = found == expected.end() ? *expected.begin() : *found;
        tree.Remove(entry);
        expected.erase(entry);
        if (expected.size() % 500 == 0) {
            tree.ExpectHolds(expected);
        }
    }
    EXPECT_EQ(tree.Height(), 1);
    EXPECT_EQ(ReadUsageMap(tree.Pages(), tree.Index().map).size(), 1u);
}

/// Takes out all entries but one in eight, in no order, and returns the number of pages of the tree.
std::size_t PagesAfterMostAreGone(Tree& tree, Entries& expected) {
    std::vector<ByteString> going(expected.begin(), expected.end());
    std::shuffle(going.begin(), going.end(), std::mt19937(20261121));
    going.resize(going.size() / 8 * 7);
    for (const ByteString& entry : going) {
        tree.Remove(entry);
        expected.erase(entry);
    }
    tree.ExpectHolds(expected);
    return ReadUsageMap(tree.Pages(), tree.Index().map).size();
}

TEST(IndexTree, LeavesThatFitOnOnePageAreJoined) {
    Tree tree;
    Entries expected;
    for (std::uint32_t i = 0; i < 8000; ++i) {
        const ByteString entry = MakeEntry(std::to_string(1000000 + i), i);
        tree.Insert(entry);
        expected.insert(entry);
    }
    const std::size_t full = ReadUsageMap(tree.Pages(), tree.Index().map).size();
    EXPECT_LE(PagesAfterMostAreGone(tree, expected) * 3, full);
}

TEST(IndexTree, NodesThatFitOnOnePageAreJoined) {
    Tree tree;
    Entries expected;
    for (std::uint32_t i = 0; i < 4000; ++i) {
        const std::string scattered = std::to_string(1000000 + i * 7919 % 4000);
        const ByteString entry = MakeEntry(scattered + std::string(200 + i % 100, 'M'), i);
        tree.Insert(entry);
        expected.insert(entry);
    }
    tree.ExpectHolds(expected);
    ASSERT_GE(tree.Height(), 4);
    const std::size_t full = ReadUsageMap(tree.Pages(), tree.Index().map).size();
    EXPECT_LE(PagesAfterMostAreGone(tree, expected) * 3, full);
    EXPECT_EQ(tree.Height(), 3);
}

TEST(IndexTree, EqualKeysAreOrderedByRow) {
    Tree tree;
    Entries expected;
    for (std::uint32_t i = 0; i < 3000; ++i) {
        const ByteString entry = MakeEntry("MMMMMMMM", i * 7919 % 3000);
        tree.Insert(entry);
        expected.insert(entry);
    }
    tree.ExpectHolds(expected);
}

TEST(IndexTree, AKeyThatLeavesNoRoomForTwoIsRefused) {
    Tree tree;
    EXPECT_EQ(ErrorNumber([&] { tree.Insert(MakeEntry(std::string(1800, 'J'), 1)); }),
              basic::error::kOperationNotSupported);
    Entries expected;
    for (std::uint32_t i = 0; i < 60; ++i) {
        const ByteString entry = MakeEntry(std::string(1700, static_cast<char>('J' + i)), i);
        tree.Insert(entry);
        expected.insert(entry);
    }
    tree.ExpectHolds(expected);
}

TEST(IndexTree, AnEntryThatIsNotThereIsADamage) {
    Tree tree;
    tree.Insert(MakeEntry("JJJ", 1));
    EXPECT_EQ(ErrorNumber([&] { tree.Remove(MakeEntry("JJJ", 2)); }), basic::error::kNotADatabase);
    EXPECT_EQ(ErrorNumber([&] { tree.Insert(MakeEntry("JJJ", 1)); }), basic::error::kNotADatabase);
}

}  // namespace
}  // namespace quardele::jet::test
