// Rows and values at the borders of what fits: in a row, on a page, into an index.

#include <algorithm>

#include <jet/check.h>

#include "index_check.h"
#include "opened_table.h"
#include "pages/data_page.h"
#include "rows/long_value.h"
#include "rows/row_codec.h"
#include "table_impl.h"

namespace quardele::jet::test {
namespace {

using basic::Null;

Column Made(const Text& name, ColumnType type, int size = 0) {
    Column column;
    column.name = name;
    column.type = type;
    column.size = size;
    return column;
}

class RowBorder : public testing::Test {
 protected:
    void MakeTable(std::vector<Column> columns, std::vector<IndexDesign> indexes = {}) {
        database_ = Database::Create(folder_.Path() / "bords.mdb");
        TableDesign design;
        design.name = u"T";
        design.columns = std::move(columns);
        design.indexes = std::move(indexes);
        database_->CreateTable(design);
        table_ = database_->OpenTable(u"T");
    }

    RowId Insert(std::vector<ColumnChange> values) { return table_->Insert(values); }

    [[nodiscard]] LongValueDescriptor DescriptorOf(RowId row, int column) const {
        const auto fetched = table_->Fetch(row);
        const RowLayout layout({fetched->Bytes(), row.page}, table_->Impl().Def(), table_->Impl().Layout());
        return LongValueDescriptor::Load(
            *layout.Field(table_->Impl().Def().stored[static_cast<std::size_t>(column)]));
    }

    /// Closes the file.
    void ExpectSound() {
        EXPECT_EQ(FaultsOf(*table_), "");
        const auto file = database_->File();
        table_.reset();
        database_.reset();
        for (const Fault& fault : CheckFile(file)) {
            ADD_FAILURE() << basic::ToUtf8(Describe(fault, FaultLanguage::English));
        }
    }

    TempFolder folder_;
    std::shared_ptr<Database> database_;
    std::shared_ptr<Table> table_;
};

TEST_F(RowBorder, LongValuesTakeTheFormOfTheirLength) {
    MakeTable({Made(u"O", ColumnType::Ole)});
    const std::pair<std::size_t, std::uint32_t> kForms[] = {
        {1, long_value::kInline},
        {63, long_value::kInline},
        {64, long_value::kInline},
        {65, long_value::kSingle},
        {4076, long_value::kSingle},
        {4077, 0},
        {8144, 0},
        {8145, 0},
        {100000, 0},
    };
    for (const auto& [length, form] : kForms) {
        basic::Binary data(length);
        for (std::size_t i = 0; i < length; ++i) {
            data[i] = static_cast<std::uint8_t>(i * 31 % 251);
        }
        const RowId row = Insert({{0, data}});
        EXPECT_EQ(DescriptorOf(row, 0).form, form) << length;
        EXPECT_EQ(table_->Fetch(row)->Value(0), Variant(data)) << length;
    }
    ExpectSound();
}

TEST_F(RowBorder, AShortMemoIsCompressedInItsRow) {
    MakeTable({Made(u"M", ColumnType::Memo)});
    // 32 units are 64 bytes plain: the longest that stays, and is compressed.
    EXPECT_EQ(DescriptorOf(Insert({{0, Text(32, u'é')}}), 0).length, 34u);
    const RowId outside = Insert({{0, Text(33, u'é')}});
    EXPECT_EQ(DescriptorOf(outside, 0).form, long_value::kSingle);
    EXPECT_EQ(DescriptorOf(outside, 0).length, 66u);
    EXPECT_EQ(DescriptorOf(Insert({{0, Text(32, u'Ω')}}), 0).length, 64u);
    ExpectSound();
}

// 8 columns of 510 bytes: with count, offsets, their number and the bitmap 23 bytes more.
TEST_F(RowBorder, ARowOf4060BytesFitsAndNoLongerOne) {
    std::vector<Column> columns;
    for (char16_t name = u'A'; name < u'I'; ++name) {
        columns.push_back(Made(Text(1, name), ColumnType::Binary, 510));
    }
    MakeTable(columns);
    const auto values = [](std::size_t total) {
        std::vector<ColumnChange> changes;
        for (int i = 0; i < 8; ++i) {
            const std::size_t length = std::min<std::size_t>(total, 510);
            changes.push_back({i, basic::Binary(length, 7)});
            total -= length;
        }
        return changes;
    };
    constexpr std::size_t kFrame = 2 + 9 * 2 + 2 + 1;
    const RowId row = Insert(values(4060 - kFrame));
    EXPECT_EQ(table_->Fetch(row)->Bytes().size(), 4060u);
    EXPECT_EQ(ErrorNumber([&] { Insert(values(4061 - kFrame)); }), basic::error::kRecordTooLarge);
    EXPECT_EQ(ErrorNumber([&] { table_->Update(row, values(4061 - kFrame)); }),
              basic::error::kRecordTooLarge);
    EXPECT_EQ(table_->RowCount(), 1u);
    ExpectSound();
}

TEST_F(RowBorder, MemosMoveOutOfARowThatGrowsTooLong) {
    std::vector<Column> columns = {Made(u"M", ColumnType::Memo), Made(u"N", ColumnType::Memo)};
    for (char16_t name = u'A'; name < u'I'; ++name) {
        columns.push_back(Made(Text(1, name), ColumnType::Binary, 510));
    }
    MakeTable(columns);
    std::vector<ColumnChange> values = {{0, Text(20, u'm')}, {1, Text(30, u'Ω')}};
    for (int i = 2; i < 9; ++i) {
        values.push_back({i, basic::Binary(510, 1)});
    }
    const RowId row = Insert(values);
    EXPECT_EQ(DescriptorOf(row, 0).form, long_value::kInline);
    // What is left for the last column lets neither memo stay, the one that does not change included.
    const std::vector<ColumnChange> more = {{9, basic::Binary(425, 1)}, {1, Text(31, u'Ω')}};
    table_->Update(row, more);
    EXPECT_EQ(DescriptorOf(row, 0).form, long_value::kSingle);
    EXPECT_EQ(DescriptorOf(row, 1).form, long_value::kSingle);
    EXPECT_EQ(table_->Fetch(row)->Value(0), Variant(Text(20, u'm')));
    EXPECT_EQ(table_->Fetch(row)->Value(1), Variant(Text(31, u'Ω')));
    ExpectSound();
}

TEST_F(RowBorder, APageTakesNoMoreThan255Rows) {
    MakeTable({Made(u"B", ColumnType::Byte)});
    std::vector<RowId> rows;
    for (int i = 0; i < 600; ++i) {
        rows.push_back(Insert({{0, static_cast<std::uint8_t>(i % 256)}}));
    }
    EXPECT_EQ(rows[254].page, rows[0].page);
    EXPECT_EQ(rows[254].slot, 254);
    EXPECT_NE(rows[255].page, rows[0].page);
    EXPECT_EQ(table_->RowCount(), 600u);
    // A slot that was given is not given again while a row of the page lives.
    table_->Delete(rows[3]);
    EXPECT_NE(Insert({{0, std::uint8_t{1}}}).page, rows[0].page);
    ExpectSound();
}

TEST_F(RowBorder, AutoNumbersCountOnFromTheLargestOneGiven) {
    Column id = Made(u"Id", ColumnType::Long);
    id.autoNumber = true;
    MakeTable(
        {id, Made(u"B", ColumnType::Byte)},
        {{.name = u"PrimaryKey", .columns = {{u"Id"}}, .primary = true, .unique = true, .required = true}});
    const auto number = [&](RowId row) { return table_->Fetch(row)->Value(0).As<std::int32_t>(); };
    EXPECT_EQ(number(Insert({})), 1);
    EXPECT_EQ(number(Insert({{0, Null{}}})), 2);
    EXPECT_EQ(number(Insert({{0, std::int32_t{100}}})), 100);
    EXPECT_EQ(number(Insert({})), 101);
    EXPECT_EQ(number(Insert({{0, std::int32_t{50}}})), 50);
    EXPECT_EQ(number(Insert({})), 102);
    // A row that is refused uses no number up.
    EXPECT_EQ(ErrorNumber([&] { Insert({{1, u"x"}}); }), basic::error::kTypeConversion);
    EXPECT_EQ(ErrorNumber([&] { Insert({{0, std::int32_t{50}}}); }), basic::error::kDuplicateKey);
    EXPECT_EQ(number(Insert({})), 103);
    const ColumnChange change{0, std::int32_t{7}};
    const RowId row = Insert({});
    EXPECT_EQ(ErrorNumber([&] { table_->Update(row, {&change, 1}); }), basic::error::kFieldNotUpdatable);
    ExpectSound();
}

TEST_F(RowBorder, NullsInUniqueIndexesAreNoDuplicatesUnlessAnotherColumnSaysSo) {
    MakeTable({Made(u"A", ColumnType::Text, 10), Made(u"B", ColumnType::Text, 10)},
              {{.name = u"AB", .columns = {{u"A"}, {u"B", false}}, .unique = true}});
    Insert({});
    Insert({});
    Insert({{0, u"x"}});
    EXPECT_EQ(ErrorNumber([&] { Insert({{0, u"X "}}); }), basic::error::kDuplicateKey);
    Insert({{0, u"x"}, {1, u"y"}});
    EXPECT_EQ(ErrorNumber([&] { Insert({{0, u"x"}, {1, u"Y"}}); }), basic::error::kDuplicateKey);
    const RowId row = Insert({{1, u"y"}});
    const ColumnChange change{0, u"X"};
    EXPECT_EQ(ErrorNumber([&] { table_->Update(row, {&change, 1}); }), basic::error::kDuplicateKey);
    EXPECT_EQ(table_->RowCount(), 5u);
    ExpectSound();
}

TEST_F(RowBorder, ATextWhoseOrderIsNotKnownStaysOutOfIndexes) {
    MakeTable({Made(u"A", ColumnType::Text, 10), Made(u"B", ColumnType::Text, 10)},
              {{.name = u"A", .columns = {{u"A"}}}});
    const Text unknown = u"日本";
    EXPECT_EQ(ErrorNumber([&] { Insert({{0, unknown}}); }), basic::error::kOperationNotSupported);
    const RowId row = Insert({{0, u"a"}, {1, unknown}});
    EXPECT_EQ(table_->Fetch(row)->Value(1), Variant(unknown));
    const ColumnChange change{0, unknown};
    EXPECT_EQ(ErrorNumber([&] { table_->Update(row, {&change, 1}); }), basic::error::kOperationNotSupported);
    ExpectSound();
}

// The index is found to be damaged when the row lies on its page already.
TEST_F(RowBorder, AStepThatHoldsHalfOfAChangeIsNotWritten) {
    MakeTable({Made(u"A", ColumnType::Long)}, {{.name = u"A", .columns = {{u"A"}}}});
    Insert({{0, std::int32_t{1}}});
    const std::size_t root = table_->Impl().Def().realIndexes[0].root;
    const auto file = database_->File();
    table_.reset();
    database_.reset();
    auto damaged = ReadBytes(file);
    damaged[root * 4096] = static_cast<std::uint8_t>(PageType::Data);
    WriteBytes(file, damaged);
    database_ = Database::Open(file);
    table_ = database_->OpenTable(u"T");
    {
        Step step = database_->Begin();
        EXPECT_EQ(ErrorNumber([&] { Insert({{0, std::int32_t{2}}}); }), basic::error::kNotADatabase);
        EXPECT_EQ(ErrorNumber([&] { step.Commit(); }), basic::error::kInvalidOperation);
    }
    EXPECT_EQ(table_->RowCount(), 1u);
    EXPECT_EQ(AllRows(*table_).size(), 1u);
}

TEST_F(RowBorder, DistinctKeysAreCounted) {
    MakeTable({Made(u"A", ColumnType::Long)}, {{.name = u"A", .columns = {{u"A"}}}});
    const auto distinct = [&] {
        const auto& at = table_->Impl().Layout().def;
        return table_->Impl().Pages().Read(table_->Impl().Def().page)->View().U32(at.end + at.distinctKeys);
    };
    std::vector<RowId> rows;
    for (std::int32_t i = 0; i < 3000; ++i) {
        rows.push_back(Insert({{0, i % 5}}));
    }
    EXPECT_EQ(distinct(), 5u);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (i % 5 == 2) {
            table_->Delete(rows[i]);
        }
    }
    EXPECT_EQ(distinct(), 4u);
    const ColumnChange change{0, std::int32_t{9}};
    table_->Update(rows[0], {&change, 1});
    EXPECT_EQ(distinct(), 5u);
    ExpectSound();
}

}  // namespace
}  // namespace quardele::jet::test
