// Rows that go, with all that belonged to them.

#include "index_check.h"
#include "opened_table.h"

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
