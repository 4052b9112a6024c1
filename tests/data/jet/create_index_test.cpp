// Indexes made over rows that are there, and trees built in one go.

#include <random>

#include <basic/date.h>

#include "index_check.h"
#include "indexes/index_node.h"
#include "indexes/index_tree.h"
#include "indexes/index_walk.h"
#include "opened_table.h"
#include "pages/usage_map.h"
#include "structure/index_build.h"
#include "structure_support.h"
#include "table_impl.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

class CreateIndex : public testing::Test {
 protected:
    CreateIndex() : file_(folder_.Path() / "new.mdb"), database_(Database::Create(file_)) {
        TableDesign design = EveryType();
        design.indexes.clear();
        database_->CreateTable(design);
    }
    std::shared_ptr<Table> Open() { return database_->OpenTable(u"Tout"); }
    int Make(const IndexDesign& design) {
        return ErrorNumber([&] { database_->CreateIndex(u"Tout", design); });
    }

    TempFolder folder_;
    fs::path file_;
    std::shared_ptr<Database> database_;
};

TEST_F(CreateIndex, OverEveryTypeOfColumnEqualsTheRows) {
    FillEveryType(*database_, *Open(), 700);
    for (const Column& column : EveryType().columns) {
        if (column.type == ColumnType::Ole) {
            continue;
        }
        for (const bool ascending : {true, false}) {
            const Text name = (ascending ? u"a " : u"d ") + column.name;
            EXPECT_EQ(Make({.name = name, .columns = {{.column = column.name, .ascending = ascending}}}), 0)
                << basic::ToUtf8(name);
        }
    }
    EXPECT_EQ(Open()->Indexes().size(), 26U);
    EXPECT_EQ(FaultsOf(*Open()), "");
    EXPECT_EQ(Findings(file_), "");
    const auto table = Open();
    for (int i = 700; i < 760; ++i) {
        table->Insert(RowOfEveryType(i));
    }
    EXPECT_EQ(FaultsOf(*table), "");
    EXPECT_EQ(Findings(file_), "");
}

TEST_F(CreateIndex, EqualsTheOneThatWasThereFromTheStart) {
    FillEveryType(*database_, *Open(), 500);
    for (const IndexDesign& index : EveryType().indexes) {
        EXPECT_EQ(Make(index), 0);
    }
    TableDesign design = EveryType();
    design.name = u"Autre";
    database_->CreateTable(design);
    const auto other = database_->OpenTable(u"Autre");
    FillEveryType(*database_, *other, 500);
    const auto table = Open();
    ASSERT_EQ(table->Indexes().size(), other->Indexes().size());
    for (int i = 0; i < 4; ++i) {
        IndexCursor a = table->OpenIndex(i);
        IndexCursor b = other->OpenIndex(i);
        bool more = a.First();
        EXPECT_EQ(b.First(), more);
        while (more) {
            EXPECT_EQ(CompareBytes(a.KeyBytes(), b.KeyBytes()), 0);
            more = a.Next();
            EXPECT_EQ(b.Next(), more);
        }
    }
    EXPECT_EQ(Findings(file_), "");
}

TEST_F(CreateIndex, DuplicatesAreRefusedAndNothingIsWritten) {
    FillEveryType(*database_, *Open(), 10);
    const auto before = ReadBytes(file_);
    EXPECT_EQ(Make({.name = u"u", .columns = {{.column = u"Vrai"}}, .unique = true}),
              basic::error::kDuplicateKey);
    EXPECT_EQ(Make({.name = u"p", .columns = {{.column = u"Vrai"}}, .primary = true}),
              basic::error::kDuplicateKey);
    EXPECT_EQ(ReadBytes(file_), before);
    EXPECT_EQ(Open()->Indexes().size(), 0U);
}

TEST_F(CreateIndex, OverATextWhoseOrderIsNotKnownIsRefusedAndNothingIsWritten) {
    const auto table = Open();
    const std::vector<ColumnChange> values = {{table->FindColumn(u"Nom"), Text(u"\u65E5\u672C")},
                                              {table->FindColumn(u"Jour"), basic::DateOf(2026, 1, 1)}};
    table->Insert(values);
    const auto before = ReadBytes(file_);
    EXPECT_EQ(Make({.name = u"n", .columns = {{.column = u"Nom"}}}), basic::error::kOperationNotSupported);
    EXPECT_EQ(ReadBytes(file_), before);
    EXPECT_EQ(Open()->Indexes().size(), 0U);
}

TEST_F(CreateIndex, NullsAreRefusedWhereOneIsRequiredAndRepeatedInAUniqueOne) {
    const auto table = Open();
    for (int i = 0; i < 3; ++i) {
        const std::vector<ColumnChange> values = {{8, basic::DateOf(2026, 1, 1)}};
        table->Insert(values);
    }
    EXPECT_EQ(Make({.name = u"r", .columns = {{.column = u"Nom"}}, .required = true}),
              basic::error::kNullInPrimaryKey);
    EXPECT_EQ(Make({.name = u"p", .columns = {{.column = u"Nom"}}, .primary = true}),
              basic::error::kNullInPrimaryKey);
    EXPECT_EQ(Make({.name = u"u", .columns = {{.column = u"Nom"}}, .unique = true}), 0);
    EXPECT_EQ(Make({.name = u"i", .columns = {{.column = u"Nom"}}, .ignoreNulls = true}), 0);
    EXPECT_EQ(FaultsOf(*Open()), "");
    EXPECT_EQ(Findings(file_), "");
}

TEST_F(CreateIndex, ASecondPrimaryKeyANameTwiceAndAnUnknownColumnAreRefused) {
    EXPECT_EQ(Make({.name = u"pk", .columns = {{.column = u"Id"}}, .primary = true}), 0);
    EXPECT_EQ(Make({.name = u"PK", .columns = {{.column = u"Id"}}}), basic::error::kIndexExists);
    EXPECT_EQ(Make({.name = u"pk2", .columns = {{.column = u"Id"}}, .primary = true}),
              basic::error::kPrimaryKeyExists);
    EXPECT_EQ(Make({.name = u"x", .columns = {{.column = u"Absent"}}}), basic::error::kBadIndexField);
    EXPECT_EQ(Make({.name = u"o", .columns = {{.column = u"Image"}}}), basic::error::kBadIndexField);
    EXPECT_EQ(
        ErrorNumber([&] { database_->CreateIndex(u"Rien", {.name = u"x", .columns = {{.column = u"Id"}}}); }),
        basic::error::kNoSuchTable);
}

TEST_F(CreateIndex, TheThirtyThirdIsRefused) {
    for (int i = 0; i < 32; ++i) {
        ASSERT_EQ(Make({.name = basic::FromUtf8("i" + std::to_string(i)), .columns = {{.column = u"Id"}}}),
                  0);
    }
    EXPECT_EQ(Make({.name = u"trop", .columns = {{.column = u"Id"}}}), basic::error::kTooManyIndexes);
}

TEST_F(CreateIndex, AnUndoneStepLeavesNoIndex) {
    FillEveryType(*database_, *Open(), 20);
    {
        const Step step = database_->Begin();
        EXPECT_EQ(Make({.name = u"i", .columns = {{.column = u"Nom"}}}), 0);
        EXPECT_EQ(Open()->Indexes().size(), 1U);
    }
    EXPECT_EQ(Open()->Indexes().size(), 0U);
    EXPECT_EQ(Findings(file_), "");
}

TEST(CreateIndexCorpus, RealTablesGetIndexesAndStillReadTheSame) {
    SKIP_WITHOUT_CORPUS();
    SKIP_WITHOUT_MDB_EXPORT();
    const TempFolder folder;
    const fs::path file = folder.Copy(CorpusFile("indexCodesV2000-r2009.mdb"));
    const auto database = Database::Open(file);
    for (const Text& name : {Text(u"Table1"), Text(u"Table11"), Text(u"Table13_desc"), Text(u"Table6")}) {
        const std::string before = MdbExport(file, basic::ToUtf8(name));
        const auto columns = database->OpenTable(name)->Columns();
        for (const Column& column : columns) {
            if (column.type != ColumnType::Ole) {
                database->CreateIndex(name,
                                      {.name = u"neuf " + column.name, .columns = {{.column = column.name}}});
            }
        }
        EXPECT_EQ(MdbExport(file, basic::ToUtf8(name)), before);
        EXPECT_EQ(FaultsOf(*database->OpenTable(name)), "");
    }
    EXPECT_EQ(Findings(file, false), "");
}

/// Entries of one width, so that heights can be chosen.
IndexEntries MakeEntries(std::size_t count, std::size_t width) {
    std::mt19937 random(7);
    IndexEntries entries;
    for (std::size_t i = 0; i < count; ++i) {
        ByteString key(width, 0x40);
        for (std::size_t j = 0; j < 4; ++j) {
            key[width - 1 - j] = static_cast<std::uint8_t>(i >> 8 * j & 0xFF);
        }
        key[0] = static_cast<std::uint8_t>(random() % 200);
        entries.Add(key, {.page = static_cast<std::uint32_t>(i + 100), .slot = 3});
    }
    entries.Sort();
    return entries;
}

std::vector<ByteString> Walked(const PageSource& pages, std::uint32_t table, const RealIndex& index,
                               bool forward) {
    std::vector<ByteString> result;
    IndexWalk walk(pages, table, index);
    for (bool found = forward ? walk.First() : walk.Last(); found;
         found = forward ? walk.Next() : walk.Previous()) {
        result.push_back(walk.Entry());
    }
    return result;
}

int HeightOf(const PageSource& pages, std::uint32_t table, std::uint32_t root) {
    const IndexNode node = IndexNode::Load(pages, root, table);
    return node.leaf ? 1 : 1 + HeightOf(pages, table, node.Child(0));
}

class IndexBuild : public testing::TestWithParam<std::tuple<std::size_t, std::size_t, int>> {};

TEST_P(IndexBuild, ATreeBuiltAtOnceEqualsOneBuiltEntryByEntry) {
    const auto& [count, width, height] = GetParam();
    const TempFolder folder;
    const auto database = Database::Create(folder.Path() / "new.mdb");
    database->CreateTable({.name = u"t",
                           .columns = {ColumnOf(u"a")},
                           .indexes = {{.name = u"bulk", .columns = {{.column = u"a"}}},
                                       {.name = u"step", .columns = {{.column = u"a"}}}}});
    const auto table = database->OpenTable(u"t");
    const TableDef& def = table->Impl().Def();
    Transaction pages(table->Impl().Owner().Cache());
    PageAllocator allocator(pages);
    const IndexEntries entries = MakeEntries(count, width);
    BuildIndex(pages, allocator, def.page, def.realIndexes[0], entries);
    IndexTree tree(pages, allocator, def.page, def.realIndexes[1]);
    std::vector<ByteString> sorted;
    for (std::size_t i = 0; i < entries.Size(); ++i) {
        sorted.emplace_back(entries.At(i).begin(), entries.At(i).end());
        tree.Insert(sorted.back());
    }
    EXPECT_EQ(Walked(pages, def.page, def.realIndexes[0], true), sorted);
    EXPECT_EQ(Walked(pages, def.page, def.realIndexes[1], true), sorted);
    EXPECT_EQ(HeightOf(pages, def.page, def.realIndexes[0].root), height);
    auto backward = Walked(pages, def.page, def.realIndexes[0], false);
    std::reverse(backward.begin(), backward.end());
    EXPECT_EQ(backward, sorted);
    // A tree built at once takes changes as any other.
    IndexTree bulk(pages, allocator, def.page, def.realIndexes[0]);
    for (std::size_t i = 0; i < sorted.size(); i += 2) {
        bulk.Remove(sorted[i]);
    }
    for (std::size_t i = 0; i < sorted.size(); i += 2) {
        bulk.Insert(sorted[i]);
    }
    EXPECT_EQ(Walked(pages, def.page, def.realIndexes[0], true), sorted);
    EXPECT_EQ(ReadUsageMap(pages, def.realIndexes[0].map).size() > 1, height > 1);
}

INSTANTIATE_TEST_SUITE_P(Heights, IndexBuild,
                         testing::Values(std::tuple(std::size_t{1}, std::size_t{20}, 1),
                                         std::tuple(std::size_t{100}, std::size_t{20}, 1),
                                         std::tuple(std::size_t{3000}, std::size_t{20}, 2),
                                         std::tuple(std::size_t{1000}, std::size_t{200}, 3),
                                         std::tuple(std::size_t{4000}, std::size_t{300}, 4),
                                         std::tuple(std::size_t{40}, std::size_t{1776}, 7)));

TEST(IndexBuildFill, LeavesAreNineTenthsFull) {
    const TempFolder folder;
    const auto database = Database::Create(folder.Path() / "new.mdb");
    database->CreateTable({.name = u"t", .columns = {ColumnOf(u"a", ColumnType::Long)}, .indexes = {}});
    const auto table = database->OpenTable(u"t");
    constexpr int kRows = 5000;
    {
        Step step = database->Begin();
        for (int i = 0; i < kRows; ++i) {
            const ColumnChange value{0, std::int32_t{i * 7919 % 10007}};
            table->Insert({&value, 1});
        }
        step.Commit();
    }
    database->CreateIndex(u"t", {.name = u"i", .columns = {{.column = u"a"}}});
    const auto indexed = database->OpenTable(u"t");
    const TableDef& def = indexed->Impl().Def();
    const auto pages = ReadUsageMap(indexed->Impl().Pages(), def.realIndexes[0].map);
    constexpr std::size_t kEntry = 9;
    constexpr std::size_t kPerLeaf = 3616 * 9 / 10 / kEntry;
    EXPECT_EQ(pages.size(), (kRows + kPerLeaf - 1) / kPerLeaf + 1);
    EXPECT_EQ(FaultsOf(*indexed), "");
}

}  // namespace
}  // namespace quardele::jet::test
