// How much of a file is read for what.

#include "definitions/table_def.h"
#include "engine.h"
#include "pages/usage_map.h"
#include "support.h"
#include "table_impl.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

std::uint64_t PagesReadByOpening(const fs::path& file) {
    Engine engine(file, OpenMode::ReadOnly);
    EXPECT_FALSE(engine.Objects().Tables().empty());
    return engine.Cache().PagesRead();
}

TEST(PagesRead, OpeningReadsTheCatalogueOnlyHoweverLargeTheTablesAre) {
    const TempFolder small;
    const TempFolder large;
    const fs::path few = MakeWorkshop(small.Path(), 10);
    const fs::path many = MakeWorkshop(large.Path(), 20'000);
    ASSERT_GT(fs::file_size(many), 10 * fs::file_size(few));
    EXPECT_EQ(PagesReadByOpening(many), PagesReadByOpening(few));
}

// The definition of the catalogue, its map and its own pages.
TEST(PagesRead, OpeningAFileReadsNoMoreThanItsCatalogueTakes) {
    for (const fs::path& file : SampleFiles()) {
        Engine engine(file, OpenMode::ReadOnly);
        const TableDef catalog = TableDef::Read(engine.Pages(), kCatalogPage);
        const std::size_t own = ReadUsageMap(engine.Pages(), catalog.ownedMap).size();
        EXPECT_LE(PagesReadByOpening(file), own + 2) << file;
    }
}

TEST(PagesRead, ASeekReadsAPageForEachLevelAndTheRow) {
    const TempFolder folder;
    const fs::path file = MakeWorkshop(folder.Path(), 20'000);
    const auto database = Database::Open(file, OpenMode::ReadOnly);
    const auto vehicles = database->OpenTable(u"VEHICLES");
    IndexCursor cursor = vehicles->OpenIndex(vehicles->FindIndex(u"PrimaryKey"));
    const Variant first(std::int32_t{1});
    ASSERT_TRUE(cursor.Seek(SeekOperator::Equal, {&first, 1}));
    const PageCache& cache = vehicles->Impl().Owner().Cache();
    const std::uint64_t before = cache.PagesRead();
    const Variant far(std::int32_t{15'000});
    ASSERT_TRUE(cursor.Seek(SeekOperator::Equal, {&far, 1}));
    ASSERT_TRUE(vehicles->Fetch(cursor.Current()).has_value());
    constexpr std::uint64_t kMostLevels = 3;
    EXPECT_LE(cache.PagesRead() - before, kMostLevels + 1);
}

TEST(PagesRead, AScanReadsNoPageTwice) {
    const TempFolder folder;
    const fs::path file = MakeWorkshop(folder.Path(), 20'000);
    const auto database = Database::Open(file, OpenMode::ReadOnly);
    const auto vehicles = database->OpenTable(u"VEHICLES");
    const PageCache& cache = vehicles->Impl().Owner().Cache();
    RowScan scan = vehicles->Scan();
    const std::uint64_t before = cache.PagesRead();
    int rows = 0;
    while (scan.Next()) {
        ++rows;
    }
    EXPECT_EQ(rows, 20'000);
    EXPECT_GE(cache.PagesRead() - before, vehicles->Impl().DataPages()->size());
    EXPECT_LE(cache.PagesRead() - before, cache.PageCount());
}

// Whoever looks at rows in an order that is not theirs finds their pages again after somebody has read a
// large table.
TEST(PagesRead, PagesLookedAtByPlaceOutliveAScanOfMoreThanTheCacheKeepsInOrder) {
    const TempFolder folder;
    const fs::path file = MakeWorkshop(folder.Path(), 80'000);
    const auto database = Database::Open(file, OpenMode::ReadOnly);
    const auto vehicles = database->OpenTable(u"VEHICLES");
    constexpr std::size_t kPagesInOrder = 1024;
    ASSERT_GT(vehicles->Impl().DataPages()->size(), kPagesInOrder);
    const PageCache& cache = vehicles->Impl().Owner().Cache();
    const auto look = [&] {
        IndexCursor cursor = vehicles->OpenIndex(vehicles->FindIndex(u"PrimaryKey"));
        for (std::int32_t key = 1; key < 80'000; key += 5'003) {
            const Variant sought(key);
            ASSERT_TRUE(cursor.Seek(SeekOperator::Equal, {&sought, 1}));
            ASSERT_TRUE(vehicles->Fetch(cursor.Current()).has_value());
        }
    };
    const std::uint64_t atStart = cache.PagesRead();
    look();
    const std::uint64_t looked = cache.PagesRead() - atStart;
    RowScan scan = vehicles->Scan();
    while (scan.NextId()) {
    }
    const std::uint64_t before = cache.PagesRead();
    look();
    // A page that lies behind the one read last passes for a reader's in order.
    EXPECT_LT((cache.PagesRead() - before) * 4, looked);
}

TEST(PagesRead, AScanThatIsLeftAfterItsFirstRowReadsOnePage) {
    const TempFolder folder;
    const fs::path file = MakeWorkshop(folder.Path(), 20'000);
    const auto database = Database::Open(file, OpenMode::ReadOnly);
    const auto vehicles = database->OpenTable(u"VEHICLES");
    const PageCache& cache = vehicles->Impl().Owner().Cache();
    RowScan scan = vehicles->Scan();
    const std::uint64_t before = cache.PagesRead();
    ASSERT_TRUE(scan.Next().has_value());
    EXPECT_EQ(cache.PagesRead() - before, 1U);
}

}  // namespace
}  // namespace quardele::jet::test
