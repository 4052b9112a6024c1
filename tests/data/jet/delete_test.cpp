// Rows that go, with all that belonged to them.

#include <algorithm>
#include <random>

#include <jet/check.h>

#include "index_check.h"
#include "opened_table.h"
#include "pages/usage_map.h"
#include "table_impl.h"

namespace quardele::jet::test {
namespace {

TEST(Delete, ARowIsGoneForEverybody) {
    SKIP_WITHOUT_MDB_EXPORT();
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TVEH_DETAIL");
    auto expected = table.Dump();
    const std::vector<RowId> rows = AllRows(*table);
    const std::size_t count = table->RowCount();
    constexpr std::size_t kDeleted = 1234;
    table->Delete(rows[kDeleted]);
    EXPECT_FALSE(table->Fetch(rows[kDeleted]).has_value());
    EXPECT_EQ(ErrorNumber([&] { table->Delete(rows[kDeleted]); }), basic::error::kRecordDeleted);
    EXPECT_EQ(table->RowCount(), count - 1);
    EXPECT_EQ(FaultsOf(*table), "");
    expected.erase(expected.begin() + kDeleted + 1);
    EXPECT_EQ(table.Dump(), expected);
}

// Their entries cannot be computed, only found.
// In no order, so that every page of the indexes loses most of its entries and none of them all at once.
TEST(Delete, IndexesGivePagesBackAsMostRowsGo) {
    const TempFolder folder;
    const auto file = folder.Path() / "shrinking.mdb";
    {
        const auto database = Database::Create(file);
        database->CreateTable(
            {.name = u"T",
             .columns = {{.name = u"n", .type = ColumnType::Long, .defaultValue = {}},
                         {.name = u"t", .type = ColumnType::Text, .size = 100, .defaultValue = {}}},
             .indexes = {{.name = u"PrimaryKey", .columns = {{u"n"}}, .primary = true},
                         {.name = u"ByText", .columns = {{u"t", false}, {u"n"}}}}});
        const auto table = database->OpenTable(u"T");
        Step filling = database->Begin();
        for (std::int32_t i = 0; i < 4000; ++i) {
            const std::vector<ColumnChange> row = {
                {0, i}, {1, Text(60, u'x') + basic::FromUtf8(std::to_string(i * 7919 % 4000))}};
            table->Insert(row);
        }
        filling.Commit();
        const auto pagesOf = [&table](std::size_t index) {
            return ReadUsageMap(table->Impl().Pages(), table->Impl().Def().realIndexes[index].map).size();
        };
        const std::size_t before[] = {pagesOf(0), pagesOf(1)};
        std::vector<RowId> rows = AllRows(*table);
        std::shuffle(rows.begin(), rows.end(), std::mt19937(20261121));
        Step emptying = database->Begin();
        for (std::size_t i = 0; i < rows.size() / 8 * 7; ++i) {
            table->Delete(rows[i]);
        }
        emptying.Commit();
        EXPECT_LE(pagesOf(0) * 2, before[0]);
        EXPECT_LE(pagesOf(1) * 3, before[1]);
        EXPECT_EQ(FaultsOf(*table), "");
    }
    EXPECT_TRUE(CheckFile(file).empty());
}

TEST(Delete, RowsGoWhoseTextsHaveAnOrderThatIsNotKnown) {
    SKIP_WITHOUT_CORPUS();
    const TempFolder folder;
    const auto database = Database::Open(folder.Copy(CorpusFile("unicodeCompV2003.mdb")));
    std::size_t deleted = 0;
    for (const CatalogEntry& entry : database->Catalog()) {
        if (entry.system || entry.linked) {
            continue;
        }
        const auto table = database->OpenTable(entry.name);
        for (const RowId row : AllRows(*table)) {
            table->Delete(row);
            ++deleted;
        }
        EXPECT_EQ(AllRows(*table).size(), 0u);
        EXPECT_EQ(FaultsOf(*table), "") << basic::ToUtf8(entry.name);
    }
    EXPECT_GT(deleted, 3u);
}

}  // namespace
}  // namespace quardele::jet::test
