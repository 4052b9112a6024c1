// Columns added to tables that have rows.

#include "csv.h"
#include "index_check.h"
#include "opened_table.h"
#include "structure_support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

constexpr ColumnType kTypes[] = {
    ColumnType::Boolean, ColumnType::Byte,   ColumnType::Integer, ColumnType::Long,   ColumnType::Currency,
    ColumnType::Single,  ColumnType::Double, ColumnType::Date,    ColumnType::Binary, ColumnType::Text,
    ColumnType::Ole,     ColumnType::Memo,   ColumnType::Guid};

class AddColumn : public testing::Test {
 protected:
    AddColumn() : file_(folder_.Path() / "new.mdb"), database_(Database::Create(file_)) {
        database_->CreateTable(EveryType());
        FillEveryType(*database_, *Open(), kRows);
    }
    std::shared_ptr<Table> Open() { return database_->OpenTable(u"Tout"); }

    static constexpr int kRows = 100;
    TempFolder folder_;
    fs::path file_;
    std::shared_ptr<Database> database_;
};

TEST_F(AddColumn, OfEveryTypeIsNullInOldRowsAndFilledInNewOnes) {
    const auto before = Rows(*Open());
    int number = 0;
    for (const ColumnType type : kTypes) {
        database_->AddColumn(u"Tout", ColumnOf(basic::FromUtf8("plus" + std::to_string(number++)), type));
    }
    const auto table = Open();
    ASSERT_EQ(table->Columns().size(), 14 + std::size(kTypes));
    RowScan scan = table->Scan();
    for (int i = 0; i < kRows; ++i) {
        const auto row = scan.Next();
        ASSERT_TRUE(row);
        EXPECT_EQ(RowText(*table, *row).substr(0, before[static_cast<std::size_t>(i)].size()),
                  before[static_cast<std::size_t>(i)]);
        for (std::size_t column = 15; column < table->Columns().size(); ++column) {
            EXPECT_TRUE(row->IsNull(static_cast<int>(column)));
        }
    }
    std::vector<ColumnChange> values = RowOfEveryType(kRows);
    values.push_back({14 + 11, Text(6000, u'q')});
    values.push_back({14 + 10, basic::Binary(70, 1)});
    values.push_back({14 + 3, std::int32_t{77}});
    const RowId id = table->Insert(values);
    EXPECT_EQ(table->Fetch(id)->Value(14 + 11), Variant(Text(6000, u'q')));
    EXPECT_EQ(table->Fetch(id)->Value(14 + 3), Variant(std::int32_t{77}));
    EXPECT_EQ(FaultsOf(*table), "");
    EXPECT_EQ(Findings(file_), "");
}

TEST_F(AddColumn, OldRowsTakeValuesInTheNewColumns) {
    database_->AddColumn(u"Tout", ColumnOf(u"Memo2", ColumnType::Memo));
    database_->AddColumn(u"Tout", ColumnOf(u"Long2", ColumnType::Long));
    const auto table = Open();
    const auto before = Rows(*table);
    for (const RowId row : AllRows(*table)) {
        const std::vector<ColumnChange> values = {{14, Text(100, u'k')}, {15, std::int32_t{5}}};
        table->Update(row, values);
    }
    const auto after = Rows(*table);
    for (std::size_t i = 0; i < after.size(); ++i) {
        const std::string start = before[i].substr(0, before[i].size() - std::string("null|null|").size());
        EXPECT_EQ(after[i], start + "\"" + std::string(100, 'k') + "\"|5|");
    }
    EXPECT_EQ(Findings(file_), "");
}

TEST_F(AddColumn, TheDefinitionGrowsOverItsPage) {
    for (int i = 0; i < 120; ++i) {
        database_->AddColumn(u"Tout",
                             ColumnOf(basic::FromUtf8("une colonne de nom assez long " + std::to_string(i)),
                                      i % 10 == 0 ? ColumnType::Memo : ColumnType::Integer));
    }
    EXPECT_EQ(Open()->Columns().size(), 134U);
    EXPECT_EQ(FaultsOf(*Open()), "");
    EXPECT_EQ(Findings(file_), "");
}

TEST_F(AddColumn, RulesComeWithIt) {
    Column column = ColumnOf(u"Regle", ColumnType::Text, 20);
    column.required = true;
    column.allowZeroLength = false;
    column.defaultValue = u"\"neuf\"";
    database_->AddColumn(u"Tout", column);
    const Column made = Open()->Columns().back();
    EXPECT_TRUE(made.required);
    EXPECT_FALSE(made.allowZeroLength);
    EXPECT_EQ(made.defaultValue, column.defaultValue);
    EXPECT_EQ(made.size, 20);
    EXPECT_TRUE(Open()->Columns()[8].required);
}

TEST_F(AddColumn, IsRefusedForNamesTypesAndTables) {
    EXPECT_EQ(ErrorNumber([&] { database_->AddColumn(u"Tout", ColumnOf(u"nom")); }),
              basic::error::kFieldExists);
    EXPECT_EQ(ErrorNumber([&] { database_->AddColumn(u"Tout", ColumnOf(u"a.b")); }), basic::error::kBadName);
    EXPECT_EQ(ErrorNumber([&] { database_->AddColumn(u"Rien", ColumnOf(u"a")); }),
              basic::error::kNoSuchTable);
    EXPECT_EQ(ErrorNumber([&] { database_->AddColumn(u"MSysObjects", ColumnOf(u"a")); }),
              basic::error::kReadOnly);
    EXPECT_EQ(ErrorNumber([&] { database_->AddColumn(u"Tout", ColumnOf(u"a", ColumnType::Opaque)); }),
              basic::error::kOperationNotSupported);
}

TEST_F(AddColumn, AnAutoNumberOnlyComesToATableWithoutRowsAndOnlyOnce) {
    Column counter = ColumnOf(u"Compteur", ColumnType::Long);
    counter.autoNumber = true;
    EXPECT_EQ(ErrorNumber([&] { database_->AddColumn(u"Tout", counter); }),
              basic::error::kOperationNotSupported);
    database_->CreateTable({.name = u"Vide", .columns = {ColumnOf(u"a")}, .indexes = {}});
    EXPECT_EQ(ErrorNumber([&] { database_->AddColumn(u"Vide", counter); }), 0);
    const auto table = database_->OpenTable(u"Vide");
    EXPECT_EQ(Get(*table, Add(*table, {{u"a", u"x"}}), u"Compteur"), Variant(std::int32_t{1}));
    counter.name = u"Encore";
    EXPECT_EQ(ErrorNumber([&] { database_->AddColumn(u"Vide", counter); }),
              basic::error::kOperationNotSupported);
}

TEST_F(AddColumn, TablesOpenedBeforeKeepTheirStructureAndRefuseChanges) {
    const auto old = Open();
    database_->AddColumn(u"Tout", ColumnOf(u"Plus"));
    EXPECT_EQ(old->Columns().size(), 14U);
    EXPECT_EQ(Rows(*old).size(), static_cast<std::size_t>(kRows));
    EXPECT_EQ(ErrorNumber([&] { old->Insert(RowOfEveryType(kRows)); }), basic::error::kRecordChanged);
    EXPECT_EQ(Open()->Columns().size(), 15U);
    EXPECT_EQ(ErrorNumber([&] { Open()->Insert(RowOfEveryType(kRows)); }), 0);
}

TEST_F(AddColumn, AnUndoneStepBringsTheOldStructureBack) {
    const auto before = ReadBytes(file_);
    {
        const Step step = database_->Begin();
        database_->AddColumn(u"Tout", ColumnOf(u"Plus"));
        EXPECT_EQ(Open()->Columns().size(), 15U);
    }
    EXPECT_EQ(Open()->Columns().size(), 14U);
    EXPECT_EQ(ErrorNumber([&] { Open()->Insert(RowOfEveryType(kRows)); }), 0);
    EXPECT_NE(ReadBytes(file_), before);
}

TEST(AddColumnShared, ATableOpenThroughAnotherDatabaseIsInUse) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    Database::Create(file)->CreateTable(EveryType());
    const auto one = Database::Open(file);
    const auto other = Database::Open(file);
    auto held = other->OpenTable(u"Tout");
    EXPECT_EQ(ErrorNumber([&] { one->AddColumn(u"Tout", ColumnOf(u"a")); }), basic::error::kTableInUse);
    EXPECT_EQ(ErrorNumber([&] { one->DropTable(u"Tout"); }), basic::error::kTableInUse);
    held.reset();
    EXPECT_EQ(ErrorNumber([&] { one->AddColumn(u"Tout", ColumnOf(u"a")); }), 0);
    other->Refresh();
    EXPECT_EQ(other->OpenTable(u"Tout")->Columns().size(), 15U);
}

// A second name of the file makes this process look like another one to itself.
TEST(AddColumnShared, AnotherProcessWithTheOldStructureIsToldAndReadsAnew) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    Database::Create(file)->CreateTable(EveryType());
    fs::create_hard_link(file, folder.Path() / "same.mdb");
    const auto here = Database::Open(file);
    const auto there = Database::Open(folder.Path() / "same.mdb");
    const auto held = there->OpenTable(u"Tout");
    here->AddColumn(u"Tout", ColumnOf(u"Plus", ColumnType::Long));
    EXPECT_EQ(ErrorNumber([&] { held->Insert(RowOfEveryType(1)); }), basic::error::kRecordChanged);
    there->Refresh();
    const auto anew = there->OpenTable(u"Tout");
    EXPECT_EQ(anew->Columns().size(), 15U);
    EXPECT_EQ(ErrorNumber([&] { anew->Insert(RowOfEveryType(1)); }), 0);
    EXPECT_EQ(Findings(file), "");
}

TEST(AddColumnLive, NoteColumnsComeToATableOfTheWorkshopWithRows) {
    SKIP_WITHOUT_MDB_EXPORT();
    const TempFolder folder;
    const fs::path file = folder.Copy(fs::path(QUARDELE_INSTALLATION_DIR) / "before-notes" / "talmeon.mdb");
    const auto before = ParseCsv(MdbExport(file, "TVEH"));
    {
        const auto database = Database::Open(file);
        const auto recordset = database->OpenTable(u"TVEH");  // one that a screen holds meanwhile
        for (const Text& name : {Text(u"TVEH_Note1"), Text(u"TVEH_Note2")}) {
            database->AddColumn(u"TVEH", ColumnOf(name, ColumnType::Text, 100));
        }
        EXPECT_EQ(Rows(*recordset).size(), before.size() - 1);
        const auto table = database->OpenTable(u"TVEH");
        Set(*table, AllRows(*table)[3], u"TVEH_Note2", Variant(u"à revoir"));
        EXPECT_EQ(FaultsOf(*table), "");
    }
    const auto after = ParseCsv(MdbExport(file, "TVEH"));
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        auto line = before[i];
        line.push_back(i == 0 ? CsvField("TVEH_Note1") : std::nullopt);
        line.push_back(i == 0 ? CsvField("TVEH_Note2") : i == 4 ? CsvField("à revoir") : std::nullopt);
        EXPECT_EQ(after[i], line);
    }
    EXPECT_EQ(Findings(file, false), "");
}

TEST(AddColumnCorpus, TablesWithDeletedColumnsAndMovedRowsTakeColumns) {
    SKIP_WITHOUT_CORPUS();
    for (const auto& [name, tableName] :
         {std::pair("delColV2000.mdb", u"Table1"), std::pair("overflowV2000.mdb", u"Table1"),
          std::pair("fixedNumericV2000.mdb", u"test"), std::pair("common2V2000.mdb", u"MSP_PROJECTS")}) {
        const TempFolder folder;
        const fs::path file = folder.Copy(CorpusFile(name));
        const auto database = Database::Open(file);
        const auto before = Rows(*database->OpenTable(tableName));
        for (const ColumnType type :
             {ColumnType::Long, ColumnType::Memo, ColumnType::Text, ColumnType::Double}) {
            database->AddColumn(
                tableName,
                ColumnOf(u"plus" + Text(1, static_cast<char16_t>(u'a' + static_cast<int>(type))), type));
        }
        const auto table = database->OpenTable(tableName);
        const auto after = Rows(*table);
        ASSERT_EQ(after.size(), before.size()) << name;
        for (std::size_t i = 0; i < after.size(); ++i) {
            EXPECT_EQ(after[i], before[i] + "null|null|null|null|") << name;
        }
        for (const RowId row : AllRows(*table)) {
            const int first = static_cast<int>(table->Columns().size()) - 4;
            const std::vector<ColumnChange> values = {
                {first, std::int32_t{1}}, {first + 1, Text(90, u'm')}, {first + 2, u"t"}, {first + 3, 2.0}};
            table->Update(row, values);
        }
        const auto filled = Rows(*table);
        for (std::size_t i = 0; i < filled.size(); ++i) {
            EXPECT_EQ(filled[i].substr(0, before[i].size()), before[i]) << name;
        }
        EXPECT_EQ(Findings(file, false), "") << name;
    }
}

}  // namespace
}  // namespace quardele::jet::test
