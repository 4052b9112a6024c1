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

}  // namespace
}  // namespace quardele::jet::test
