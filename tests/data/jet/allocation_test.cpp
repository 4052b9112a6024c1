// Taking pages and keeping maps of pages, however far they must reach.

#include <algorithm>
#include <random>
#include <set>

#include "pages/data_page_editor.h"
#include "pages/page_allocator.h"
#include "pages/usage_map.h"
#include "support.h"
#include "table_impl.h"

namespace quardele::jet::test {
namespace {

constexpr RowPointer kFree{.page = kGlobalMapPage, .slot = 0};

class Allocation : public testing::Test {
 protected:
    /// Pages that belong to nobody yet, so that there is something far away to name.
    void ExtendBy(std::size_t pages) {
        for (std::size_t i = 0; i < pages; ++i) {
            static_cast<void>(pages_.Append());
        }
    }
    std::set<std::uint32_t> Members(RowPointer map) const {
        const auto members = ReadUsageMap(pages_, map);
        return {members.begin(), members.end()};
    }
    /// Fills a map page up, so that no row of it can grow.
    void FillPage(std::uint32_t page) {
        DataPageEditor editor(pages_, page);
        ASSERT_TRUE(editor.Add(0, ByteString(editor.FreeBytes() - 2)).has_value());
        editor.Store();
    }

    TempFolder folder_;
    std::shared_ptr<Table> table_ =
        Database::Open(folder_.Copy(SampleFile("SIGNETS.MDB")))->OpenTable(u"MSysObjects");
    Transaction pages_{table_->Impl().Owner().Cache()};
    PageAllocator allocator_{pages_};
    RowPointer map_ = table_->Impl().Def().freeMap;
};

TEST_F(Allocation, FreePagesAreTakenBeforeTheFileGrows) {
    const auto free = Members(kFree);
    const std::uint32_t end = pages_.PageCount();
    std::set<std::uint32_t> taken;
    for (std::size_t i = 0; i < free.size() + 3; ++i) {
        EXPECT_TRUE(taken.insert(allocator_.Allocate().number).second);
    }
    EXPECT_TRUE(std::includes(taken.begin(), taken.end(), free.begin(), free.end()));
    EXPECT_EQ(pages_.PageCount(), end + 3);
    EXPECT_TRUE(Members(kFree).empty());
    allocator_.Free(*taken.begin());
    EXPECT_EQ(Members(kFree), std::set{*taken.begin()});
    EXPECT_EQ(allocator_.Allocate().number, *taken.begin());
}

TEST_F(Allocation, TheMapOfFreePagesFollowsTheFileOntoPagesOfItsOwn) {
    FillPage(kGlobalMapPage);
    std::set<std::uint32_t> taken;
    for (int i = 0; i < 1500; ++i) {
        ASSERT_TRUE(taken.insert(allocator_.Allocate().number).second);
    }
    EXPECT_GT(pages_.PageCount(), 1024u);
    EXPECT_TRUE(Members(kFree).empty());
    for (const std::uint32_t page : taken) {
        allocator_.Free(page);
    }
    EXPECT_EQ(Members(kFree), taken);
}

TEST_F(Allocation, TheMapOfFreePagesGrowsInItsPage) {
    for (int i = 0; i < 1500; ++i) {
        static_cast<void>(allocator_.Allocate());
    }
    EXPECT_TRUE(Members(kFree).empty());
    EXPECT_GT(ReadRow(pages_, kFree).bytes.Size(), 128u + 5);
    EXPECT_EQ(ReadRow(pages_, kFree).bytes.U8(0), usage_map::kInline);
}

void AddInRandomOrder(Transaction& pages, PageAllocator& allocator, RowPointer map,
                      std::vector<std::uint32_t> add) {
    const auto before = ReadUsageMap(pages, map);
    std::set<std::uint32_t> expected(before.begin(), before.end());
    std::shuffle(add.begin(), add.end(), std::mt19937(7));
    for (const std::uint32_t page : add) {
        allocator.AddToMap(map, page);
        expected.insert(page);
        const auto now = ReadUsageMap(pages, map);
        ASSERT_EQ(std::set<std::uint32_t>(now.begin(), now.end()), expected);
    }
    for (const std::uint32_t page : add) {
        allocator.RemoveFromMap(map, page);
        expected.erase(page);
    }
    const auto now = ReadUsageMap(pages, map);
    EXPECT_EQ(std::set<std::uint32_t>(now.begin(), now.end()), expected);
}

TEST_F(Allocation, AMapReachesFarAwayPages) {
    ExtendBy(3000);
    std::vector<std::uint32_t> add;
    for (std::uint32_t page = 40; page < 3000; page += 37) {
        add.push_back(page);
    }
    AddInRandomOrder(pages_, allocator_, map_, add);
    EXPECT_EQ(ReadRow(pages_, map_).bytes.U8(0), usage_map::kInline);
}

TEST_F(Allocation, AMapWithoutRoomMovesItsBitsToPagesOfTheirOwn) {
    FillPage(map_.page);
    ExtendBy(3000);
    AddInRandomOrder(pages_, allocator_, map_, {100, 2900, 500, 700, 1800});
    EXPECT_EQ(ReadRow(pages_, map_).bytes.U8(0), usage_map::kReference);
}

TEST_F(Allocation, AMapWhosePagesLieTogetherMoves) {
    FillPage(map_.page);
    for (const std::uint32_t member : ReadUsageMap(pages_, map_)) {
        allocator_.RemoveFromMap(map_, member);
    }
    ExtendBy(3000);
    AddInRandomOrder(pages_, allocator_, map_, {2900, 2901, 2999, 2600});
    EXPECT_EQ(ReadRow(pages_, map_).bytes.U8(0), usage_map::kInline);
}

}  // namespace
}  // namespace quardele::jet::test
