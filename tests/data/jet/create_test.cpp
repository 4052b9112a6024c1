// Files and tables made from nothing, read back by us and by an independent reader.

#include <array>
#include <fstream>

#include <basic/date.h>

#include "csv.h"
#include "index_check.h"
#include "support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using basic::Null;

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

TableDesign EveryType() {
    return {.name = u"Tout",
            .columns = {{.name = u"Id", .type = ColumnType::Long, .autoNumber = true, .defaultValue = {}},
                        {.name = u"Vrai", .type = ColumnType::Boolean, .defaultValue = {}},
                        {.name = u"Octet", .type = ColumnType::Byte, .defaultValue = {}},
                        {.name = u"Entier", .type = ColumnType::Integer, .defaultValue = u"7"},
                        {.name = u"Notes", .type = ColumnType::Memo, .defaultValue = {}},
                        {.name = u"Prix", .type = ColumnType::Currency, .defaultValue = {}},
                        {.name = u"Simple", .type = ColumnType::Single, .defaultValue = {}},
                        {.name = u"Double", .type = ColumnType::Double, .defaultValue = {}},
                        {.name = u"Jour", .type = ColumnType::Date, .required = true, .defaultValue = {}},
                        {.name = u"Octets", .type = ColumnType::Binary, .size = 12, .defaultValue = {}},
                        {.name = u"Nom", .size = 40, .allowZeroLength = false, .defaultValue = u"\"x\""},
                        {.name = u"Image", .type = ColumnType::Ole, .defaultValue = {}},
                        {.name = u"Cle", .type = ColumnType::Guid, .defaultValue = {}},
                        {.name = u"Nombre",
                         .type = ColumnType::Numeric,
                         .precision = 18,
                         .scale = 4,
                         .defaultValue = {}}},
            .indexes = {{.name = u"PrimaryKey", .columns = {{.column = u"Id"}}, .primary = true},
                        {.name = u"ParNom",
                         .columns = {{.column = u"Nom"}, {.column = u"Jour", .ascending = false}},
                         .unique = true,
                         .ignoreNulls = true},
                        {.name = u"ParJour", .columns = {{.column = u"Jour"}}, .required = true},
                        {.name = u"ParNotes", .columns = {{.column = u"Notes", .ascending = false}}}}};
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

std::vector<ColumnChange> RowOfEveryType(int i) {
    return {{1, i % 2 == 0},
            {2, static_cast<std::uint8_t>(i % 256)},
            {3, static_cast<std::int16_t>(-i)},
            {4, Text(static_cast<std::size_t>(i) * 40, u'm')},
            {5, basic::Currency{12345 * std::int64_t{i}}},
            {6, 0.5F * static_cast<float>(i)},
            {7, 1.0 / (i + 1)},
            {8, basic::DateOf(2026, 1 + i % 12, 1 + i % 28)},
            {9, basic::Binary(static_cast<std::size_t>(i % 12 + 1), 0xAB)},
            {10, basic::FromUtf8("élan " + std::to_string(i))},
            {11, basic::Binary(static_cast<std::size_t>(i) * 100, 0xCD)},
            {12, basic::Guid{{1, 2, 3, static_cast<std::uint8_t>(i)}}},
            {13, basic::Decimal{.negative = true, .scale = 4, .magnitude = {0, 0, 0, 98765}}}};
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
        Step step = database->Begin();
        for (int i = 0; i < kRows; ++i) {
            table->Insert(RowOfEveryType(i));
        }
        step.Commit();
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

}  // namespace
}  // namespace quardele::jet::test
