// Files and tables made from nothing, read back by us and by an independent reader.

#include "commit/journal.h"
#include "csv.h"
#include "file/write_hook.h"
#include "index_check.h"
#include "structure_support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPage = 4096;

std::vector<std::uint8_t> PageOf(const std::vector<std::uint8_t>& file, std::size_t number) {
    const auto start = file.begin() + static_cast<std::ptrdiff_t>(number * kPage);
    return {start, start + static_cast<std::ptrdiff_t>(kPage)};
}

TEST(Create, AnEmptyFileEqualsTheOneOfTheOriginalEngine) {
    SKIP_WITHOUT_CORPUS();
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    Database::Create(file);
    const auto ours = ReadBytes(file);
    const auto theirs = ReadBytes(CorpusFile("adox_jet4.mdb"));
    ASSERT_EQ(ours.size(), theirs.size());
    // The definitions (2 to 5) hold junk of the memory of their maker, 14 the dates of the objects.
    for (const std::size_t page : {0, 1, 6, 7, 8, 9, 10, 11, 12, 13, 15}) {
        EXPECT_EQ(PageOf(ours, page), PageOf(theirs, page)) << "page " << page;
    }
}

TEST(Create, DefinitionsDifferFromTheOriginalOnesInJunkOnly) {
    SKIP_WITHOUT_CORPUS();
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    const auto ours = Database::Create(file);
    const auto theirs = Database::Open(CorpusFile("adox_jet4.mdb"), OpenMode::ReadOnly);
    ASSERT_EQ(ours->Catalog().size(), theirs->Catalog().size());
    for (const CatalogEntry& entry : theirs->Catalog()) {
        const auto a = ours->OpenTable(entry.name);
        const auto b = theirs->OpenTable(entry.name);
        ASSERT_EQ(a->Columns().size(), b->Columns().size());
        for (std::size_t i = 0; i < a->Columns().size(); ++i) {
            EXPECT_EQ(a->Columns()[i].name, b->Columns()[i].name);
            EXPECT_EQ(a->Columns()[i].type, b->Columns()[i].type);
            EXPECT_EQ(a->Columns()[i].size, b->Columns()[i].size);
        }
        ASSERT_EQ(a->Indexes().size(), b->Indexes().size());
        for (std::size_t i = 0; i < a->Indexes().size(); ++i) {
            EXPECT_EQ(a->Indexes()[i].name, b->Indexes()[i].name);
            EXPECT_EQ(a->Indexes()[i].unique, b->Indexes()[i].unique);
            EXPECT_EQ(a->Indexes()[i].primary, b->Indexes()[i].primary);
        }
        EXPECT_EQ(FaultsOf(*a), "");
    }
}

TEST(Create, AFileThatExistsIsLeftAlone) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "there.mdb";
    WriteBytes(file, {1, 2, 3});
    EXPECT_EQ(ErrorNumber([&] { Database::Create(file); }), basic::error::kDatabaseExists);
    EXPECT_EQ(ReadBytes(file), (std::vector<std::uint8_t>{1, 2, 3}));
}

// The file that it belongs to may come back; the new one has nothing to do with it.
TEST(Create, AJournalOfAnOldFileOfTheNameIsLeftAlone) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    WriteBytes(JournalPath(file), {1, 2, 3});
    EXPECT_EQ(ErrorNumber([&] { Database::Create(file); }), basic::error::kDatabaseExists);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(ReadBytes(JournalPath(file)), (std::vector<std::uint8_t>{1, 2, 3}));
}

TEST(Create, AJournalThatComesWhileTheFileIsMadeIsLeftAlone) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    CurrentWriteHook() = [&](const WriteEvent& event) {
        if (event.step == WritePoint::Sync) {
            WriteBytes(JournalPath(file), {1, 2, 3});
        }
    };
    EXPECT_EQ(ErrorNumber([&] { Database::Create(file); }), basic::error::kDatabaseExists);
    CurrentWriteHook() = nullptr;
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(ReadBytes(JournalPath(file)), (std::vector<std::uint8_t>{1, 2, 3}));
}

TEST(Create, AFolderThatIsMissingIsABadPath) {
    const TempFolder folder;
    EXPECT_EQ(ErrorNumber([&] { Database::Create(folder.Path() / "no" / "new.mdb"); }),
              basic::error::kBadPath);
}

TEST(Create, NothingStaysBesideTheFile) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    Database::Create(file);
    for (const auto& entry : fs::directory_iterator(folder.Path())) {
        EXPECT_EQ(entry.path(), file);
    }
}

TEST(Create, TheNewFileIsOpenedExclusively) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    const auto made = Database::Create(file);
    EXPECT_EQ(ErrorNumber([&] { Database::Open(file); }), basic::error::kOpenExclusive);
}

TEST(CreateTable, EveryTypeOfColumnAndOptionOfIndexIsReadBack) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    const TableDesign design = EveryType();
    Database::Create(file)->CreateTable(design);
    const auto table = Database::Open(file)->OpenTable(u"tout");
    EXPECT_EQ(table->Name(), u"Tout");
    ASSERT_EQ(table->Columns().size(), design.columns.size());
    for (std::size_t i = 0; i < design.columns.size(); ++i) {
        const Column& made = table->Columns()[i];
        const Column& wanted = design.columns[i];
        EXPECT_EQ(made.name, wanted.name);
        EXPECT_EQ(made.type, wanted.type);
        EXPECT_EQ(made.precision, wanted.precision);
        EXPECT_EQ(made.scale, wanted.scale);
        EXPECT_EQ(made.autoNumber, wanted.autoNumber);
        EXPECT_EQ(made.required, wanted.required);
        EXPECT_EQ(made.allowZeroLength, wanted.allowZeroLength);
        EXPECT_EQ(made.defaultValue, wanted.defaultValue);
    }
    EXPECT_EQ(table->Columns()[10].size, 40);
    EXPECT_EQ(table->Columns()[9].size, 12);
    ASSERT_EQ(table->Indexes().size(), 4U);
    EXPECT_TRUE(table->Indexes()[0].primary);
    EXPECT_TRUE(table->Indexes()[1].unique);
    EXPECT_TRUE(table->Indexes()[1].ignoreNulls);
    EXPECT_FALSE(table->Indexes()[1].columns[1].ascending);
    EXPECT_TRUE(table->Indexes()[2].required);
    EXPECT_FALSE(table->Indexes()[2].unique);
}

TEST(CreateTable, RowsOfEveryTypeAreReadBackByUsAndByOthers) {
    SKIP_WITHOUT_MDB_EXPORT();
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    constexpr int kRows = 120;
    {
        const auto database = Database::Create(file);
        database->CreateTable(EveryType());
        const auto table = database->OpenTable(u"Tout");
        FillEveryType(*database, *table, kRows);
    }
    const auto database = Database::Open(file);
    const auto table = database->OpenTable(u"Tout");
    EXPECT_EQ(FaultsOf(*table), "");
    EXPECT_EQ(table->RowCount(), static_cast<std::size_t>(kRows));
    RowScan scan = table->Scan();
    for (int i = 0; i < kRows; ++i) {
        const auto row = scan.Next();
        ASSERT_TRUE(row);
        EXPECT_EQ(row->Value(0), Variant(std::int32_t{i + 1}));
        for (const ColumnChange& change : RowOfEveryType(i)) {
            EXPECT_EQ(row->Value(change.column), change.value) << i << " " << change.column;
        }
    }
    const auto lines = ParseCsv(MdbExport(file, "Tout"));
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(kRows) + 1);
    EXPECT_EQ(lines[0][10], "Nom");
    for (std::size_t i = 0; i < static_cast<std::size_t>(kRows); ++i) {
        EXPECT_EQ(lines[i + 1][0], std::to_string(i + 1));
        EXPECT_EQ(lines[i + 1][10], "élan " + std::to_string(i));
        EXPECT_EQ(lines[i + 1][4].value_or("").size(), i * 40);
    }
}

TEST(CreateTable, TheFileHoldsTogether) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    {
        const auto database = Database::Create(file);
        EXPECT_EQ(Findings(file), "");
        database->CreateTable(EveryType());
        FillEveryType(*database, *database->OpenTable(u"Tout"), 200);
    }
    EXPECT_EQ(Findings(file), "");
}

TEST(CreateTable, TheIndependentReaderShowsTheSchema) {
    SKIP_WITHOUT_MDB_EXPORT();
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    Database::Create(file)->CreateTable(EveryType());
    const std::string columns = Output({"mdb-schema", file.string(), "access"});
    for (const char* line :
         {"[Tout]", "[Id]\t\t\tLong Integer", "[Nom]\t\t\tText (40)", "[Octets]\t\t\tBinary",
          "[Notes]\t\t\tMemo/Hyperlink", "[Nombre]\t\t\tNumeric (18, 4)", "[Jour]\t\t\tDateTime NOT NULL"}) {
        EXPECT_NE(columns.find(line), std::string::npos) << line << " in\n" << columns;
    }
    const std::string indexes =
        Output({"mdb-schema", "--indexes", "--default-values", file.string(), "postgres"});
    for (const char* line :
         {"PRIMARY KEY (\"id\")", "UNIQUE INDEX \"tout_parnom_idx\" ON \"tout\" (\"nom\", \"jour\" DESC)",
          "(\"notes\" DESC)", "DEFAULT 7"}) {
        EXPECT_NE(indexes.find(line), std::string::npos) << line << " in\n" << indexes;
    }
}

TEST(CreateTable, ATableOf255ColumnsHoldsRowsAndNoColumnMore) {
    SKIP_WITHOUT_MDB_EXPORT();
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    TableDesign design{.name = u"Large", .columns = {}, .indexes = {}};
    for (int i = 0; i < 255; ++i) {
        design.columns.push_back(ColumnOf(basic::FromUtf8("c" + std::to_string(i)),
                                          i % 5 == 0 ? ColumnType::Memo : ColumnType::Long));
    }
    {
        const auto database = Database::Create(file);
        database->CreateTable(design);
        const auto table = database->OpenTable(u"Large");
        for (int row = 0; row < 30; ++row) {
            const std::vector<ColumnChange> values = {
                {0, Text(200, u'a')}, {254, std::int32_t{row}}, {250, Text(5000, u'z')}};
            table->Insert(values);
        }
        EXPECT_EQ(ErrorNumber([&] { database->AddColumn(u"Large", ColumnOf(u"trop", ColumnType::Long)); }),
                  basic::error::kTooManyFields);
    }
    EXPECT_EQ(Findings(file), "");
    const auto lines = ParseCsv(MdbExport(file, "Large"));
    ASSERT_EQ(lines.size(), 31U);
    EXPECT_EQ(lines[0].size(), 255U);
    EXPECT_EQ(lines[30][254], "29");
    design.name = u"PlusLarge";
    design.columns.push_back(ColumnOf(u"trop", ColumnType::Long));
    const auto database = Database::Open(file);
    EXPECT_EQ(ErrorNumber([&] { database->CreateTable(design); }), basic::error::kTooManyFields);
}

class Refusals : public testing::Test {
 protected:
    Refusals() : database_(Database::Create(folder_.Path() / "new.mdb")) {
        database_->CreateTable({.name = u"Table", .columns = {ColumnOf(u"a")}, .indexes = {}});
    }
    int Create(const TableDesign& design) {
        return ErrorNumber([&] { database_->CreateTable(design); });
    }

    TempFolder folder_;
    std::shared_ptr<Database> database_;
};

TEST_F(Refusals, NamesThatCannotBe) {
    for (const TextView name : {u"", u" a", u"a.b", u"a!b", u"a`b", u"a[b", u"a]b", u"a\tb"}) {
        EXPECT_EQ(Create({.name = Text(name), .columns = {ColumnOf(u"a")}, .indexes = {}}),
                  basic::error::kBadName);
        EXPECT_EQ(Create({.name = u"t", .columns = {ColumnOf(Text(name))}, .indexes = {}}),
                  basic::error::kBadName);
        EXPECT_EQ(Create({.name = u"t",
                          .columns = {ColumnOf(u"a")},
                          .indexes = {{.name = Text(name), .columns = {{.column = u"a"}}}}}),
                  basic::error::kBadName);
    }
    EXPECT_EQ(Create({.name = Text(65, u'n'), .columns = {ColumnOf(u"a")}, .indexes = {}}),
              basic::error::kBadName);
    EXPECT_EQ(Create({.name = Text(64, u'n'), .columns = {ColumnOf(u"a")}, .indexes = {}}), 0);
}

TEST_F(Refusals, NamesThatAreTakenCaseIgnored) {
    EXPECT_EQ(Create({.name = u"TABLE", .columns = {ColumnOf(u"a")}, .indexes = {}}),
              basic::error::kTableExists);
    EXPECT_EQ(Create({.name = u"t", .columns = {ColumnOf(u"a"), ColumnOf(u"A")}, .indexes = {}}),
              basic::error::kFieldExists);
    const IndexDesign index{.name = u"i", .columns = {{.column = u"a"}}};
    IndexDesign other = index;
    other.name = u"I";
    EXPECT_EQ(Create({.name = u"t", .columns = {ColumnOf(u"a")}, .indexes = {index, other}}),
              basic::error::kIndexExists);
}

TEST_F(Refusals, ColumnsThatCannotBe) {
    const auto with = [](const Column& column) {
        return TableDesign{.name = u"t", .columns = {column}, .indexes = {}};
    };
    EXPECT_EQ(Create({.name = u"t", .columns = {}, .indexes = {}}), basic::error::kTooManyFields);
    EXPECT_EQ(Create(with(ColumnOf(u"a", ColumnType::Opaque))), basic::error::kOperationNotSupported);
    EXPECT_EQ(Create(with(ColumnOf(u"a", ColumnType::Text, 256))), basic::error::kOperationNotSupported);
    EXPECT_EQ(Create(with(ColumnOf(u"a", ColumnType::Binary, 511))), basic::error::kOperationNotSupported);
    Column column = ColumnOf(u"a", ColumnType::Numeric);
    EXPECT_EQ(Create(with(column)), basic::error::kOperationNotSupported);
    column.precision = 28;
    column.scale = 29;
    EXPECT_EQ(Create(with(column)), basic::error::kOperationNotSupported);
    TableDesign counters = with(ColumnOf(u"a", ColumnType::Long));
    counters.columns.push_back(ColumnOf(u"b", ColumnType::Long));
    counters.columns[0].autoNumber = counters.columns[1].autoNumber = true;
    EXPECT_EQ(Create(counters), basic::error::kOperationNotSupported);
    column = ColumnOf(u"a", ColumnType::Text, 10);
    column.autoNumber = true;
    EXPECT_EQ(Create(with(column)), basic::error::kOperationNotSupported);
}

TEST_F(Refusals, ARowThatWouldNeverFit) {
    TableDesign design{.name = u"t", .columns = {}, .indexes = {}};
    for (int i = 0; i < 240; ++i) {
        design.columns.push_back(ColumnOf(basic::FromUtf8("g" + std::to_string(i)), ColumnType::Numeric));
        design.columns.back().precision = 28;
    }
    EXPECT_EQ(Create(design), basic::error::kRecordTooLarge);
}

TEST_F(Refusals, IndexesThatCannotBe) {
    const auto with = [](std::vector<IndexDesign> indexes) {
        return TableDesign{.name = u"t",
                           .columns = {ColumnOf(u"a"), ColumnOf(u"o", ColumnType::Ole)},
                           .indexes = std::move(indexes)};
    };
    EXPECT_EQ(Create(with({{.name = u"i", .columns = {{.column = u"x"}}}})), basic::error::kBadIndexField);
    EXPECT_EQ(Create(with({{.name = u"i", .columns = {{.column = u"o"}}}})), basic::error::kBadIndexField);
    EXPECT_EQ(Create(with({{.name = u"i", .columns = {{.column = u"a"}, {.column = u"A"}}}})),
              basic::error::kBadIndexField);
    EXPECT_EQ(Create(with({{.name = u"i", .columns = {}}})), basic::error::kBadIndexField);
    EXPECT_EQ(Create(with({{.name = u"i", .columns = {{.column = u"a"}}, .primary = true},
                           {.name = u"j", .columns = {{.column = u"a"}}, .primary = true}})),
              basic::error::kPrimaryKeyExists);
    std::vector<IndexDesign> many;
    for (int i = 0; i < 33; ++i) {
        many.push_back({.name = basic::FromUtf8("i" + std::to_string(i)), .columns = {{.column = u"a"}}});
    }
    EXPECT_EQ(Create(with(many)), basic::error::kTooManyIndexes);
    many.pop_back();
    EXPECT_EQ(Create(with(many)), 0);
    EXPECT_EQ(database_->OpenTable(u"t")->Indexes().size(), 32U);
}

TEST_F(Refusals, ARefusalLeavesTheFileAsItWas) {
    const auto before = ReadBytes(database_->File());
    EXPECT_NE(Create({.name = u"TABLE", .columns = {ColumnOf(u"a")}, .indexes = {}}), 0);
    EXPECT_EQ(ReadBytes(database_->File()), before);
    EXPECT_EQ(database_->Catalog().size(), 5U);
}

TEST(CreateTable, AnUndoneStepLeavesNoTable) {
    const TempFolder folder;
    const auto database = Database::Create(folder.Path() / "new.mdb");
    const auto before = ReadBytes(database->File());
    {
        const Step step = database->Begin();
        database->CreateTable(EveryType());
        EXPECT_TRUE(database->HasTable(u"Tout"));
        FillEveryType(*database, *database->OpenTable(u"Tout"), 3);
    }
    EXPECT_FALSE(database->HasTable(u"Tout"));
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(database->OpenTable(u"Tout")); }),
              basic::error::kNoSuchTable);
    EXPECT_EQ(ReadBytes(database->File()), before);
}

TEST(CreateTable, AFileOfTheCorpusGetsATableAndStillReadsTheSame) {
    SKIP_WITHOUT_CORPUS();
    SKIP_WITHOUT_MDB_EXPORT();
    const TempFolder folder;
    const fs::path file = folder.Copy(CorpusFile("indexCodesV2000-r2009.mdb"));
    const std::string before = MdbExport(file, "Table1");
    Database::Open(file)->CreateTable(EveryType());
    {
        const auto database = Database::Open(file);
        FillEveryType(*database, *database->OpenTable(u"Tout"), 50);
    }
    EXPECT_EQ(MdbExport(file, "Table1"), before);
    EXPECT_EQ(ParseCsv(MdbExport(file, "Tout")).size(), 51U);
    EXPECT_EQ(Findings(file, false), "");
}

TEST(CreateTable, AnAccess97FileIsReadOnly) {
    SKIP_WITHOUT_CORPUS();
    const TempFolder folder;
    const auto database = Database::Open(folder.Copy(CorpusFile("common1V1997.mdb")));
    EXPECT_EQ(ErrorNumber([&] { database->CreateTable(EveryType()); }), basic::error::kReadOnly);
    EXPECT_EQ(ErrorNumber([&] { database->DropTable(u"Table1"); }), basic::error::kReadOnly);
    EXPECT_EQ(ErrorNumber([&] { database->AddColumn(u"Table1", ColumnOf(u"x")); }), basic::error::kReadOnly);
}

}  // namespace
}  // namespace quardele::jet::test
