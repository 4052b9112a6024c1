// Installations made from nothing: clean files, the same every time, as large as they were asked for.
#include <algorithm>
#include <map>

#include <gtest/gtest.h>

#include <basic/date.h>
#include <jet/check.h>
#include <workshop/installation.h>

#include "../data/jet/csv.h"
#include "../data/jet/support.h"
#include "structure.h"

namespace quardele::workshop {
namespace {

namespace fs = std::filesystem;

Scale Small() {
    return {.vehicles = 300,
            .customers = 80,
            .visits = 900,
            .jobs = 500,
            .seed = 3,
            .today = basic::DateOf(2026, 11, 20)};
}

const std::map<std::string, Tables>& Files() {
    static const std::map<std::string, Tables> files = {
        {"DATA/talmeon.mdb", DataTables(Notes::With)}, {"DATA/BDTRAD.MDB", TranslationTables()},
        {"STOCK/SERVANDA.MDB", StockTables()},         {"dbpath.mdb", PathTables()},
        {"EvolutionV95.MDB", ChangeTables()},          {"SIGNETS.MDB", BookmarkTables()}};
    return files;
}

class InstallationTest : public testing::Test {
 protected:
    InstallationTest() { MakeInstallation(folder_.Path() / "QUARDELE", Small()); }

    [[nodiscard]] fs::path File(const std::string& name) const { return folder_.Path() / "QUARDELE" / name; }
    [[nodiscard]] std::shared_ptr<jet::Table> OpenTable(TextView name) const {
        return jet::Database::Open(File("DATA/talmeon.mdb"), jet::OpenMode::ReadOnly)->OpenTable(name);
    }

    jet::test::TempFolder folder_;
};

TEST_F(InstallationTest, EveryFileIsCleanDownToItsNotes) {
    for (const auto& [name, tables] : Files()) {
        for (const jet::Fault& fault : jet::CheckFile(File(name))) {
            ADD_FAILURE() << name << ": " << basic::ToUtf8(Describe(fault, jet::FaultLanguage::English));
        }
    }
}

TEST_F(InstallationTest, TablesAreThoseOfTheDesigns) {
    for (const auto& [name, tables] : Files()) {
        const auto database = jet::Database::Open(File(name), jet::OpenMode::ReadOnly);
        for (const jet::TableDesign& design : tables) {
            const auto table = database->OpenTable(design.name);
            ASSERT_EQ(table->Columns().size(), design.columns.size());
            ASSERT_EQ(table->Indexes().size(), design.indexes.size());
            for (std::size_t i = 0; i < design.columns.size(); ++i) {
                EXPECT_EQ(table->Columns()[i].name, design.columns[i].name);
                EXPECT_EQ(table->Columns()[i].type, design.columns[i].type);
                EXPECT_EQ(table->Columns()[i].defaultValue, design.columns[i].defaultValue);
            }
        }
    }
}

TEST_F(InstallationTest, EverythingIsThereInItsNumber) {
    EXPECT_EQ(OpenTable(u"TVEH")->RowCount(), 300U);
    EXPECT_EQ(OpenTable(u"TCLI")->RowCount(), 80U);
    EXPECT_EQ(OpenTable(u"TVEH_DETAIL")->RowCount(), 900U);
    EXPECT_EQ(OpenTable(u"TAFF")->RowCount(), 500U);
    EXPECT_GT(OpenTable(u"TAFF_DETAIL")->RowCount(), 250U);
    EXPECT_EQ(OpenTable(u"TTYP")->RowCount(), 12U);
}

TEST_F(InstallationTest, TheIndependentReaderReadsEveryTableAsWeDo) {
    SKIP_WITHOUT_MDB_EXPORT();
    for (const auto& [name, tables] : Files()) {
        const auto database = jet::Database::Open(File(name), jet::OpenMode::ReadOnly);
        for (const jet::TableDesign& design : tables) {
            SCOPED_TRACE(name + "/" + basic::ToUtf8(design.name));
            const auto table = database->OpenTable(design.name);
            const auto lines =
                jet::test::ParseCsv(jet::test::MdbExport(File(name), basic::ToUtf8(design.name)));
            ASSERT_EQ(lines.size(), table->RowCount() + 1);
            jet::RowScan scan = table->Scan();
            for (std::size_t line = 1; const auto row = scan.Next(); ++line) {
                EXPECT_EQ(jet::test::Difference(*table, *row, lines[line], {.emptyIsNull = true}), "");
            }
        }
    }
}

/// Whether a page may differ between two files with the same rows: the header and the rows of the catalogue
/// carry dates, of the file and of its objects.
bool MayHoldDates(const std::vector<std::uint8_t>& file, std::size_t page) {
    constexpr std::size_t kPage = 4096;
    constexpr std::uint8_t kData = 1;
    constexpr std::uint8_t kCatalogue = 2;  // the page of its definition, which its rows' pages name
    const std::uint8_t* bytes = file.data() + page * kPage;
    return page == 0 || (bytes[0] == kData && bytes[4] == kCatalogue && bytes[5] == 0);
}

TEST_F(InstallationTest, AnotherOneDiffersInTheDatesOfItsObjectsOnly) {
    MakeInstallation(folder_.Path() / "AUTRE", Small());
    constexpr std::size_t kPage = 4096;
    for (const auto& [name, tables] : Files()) {
        SCOPED_TRACE(name);
        const auto first = jet::test::ReadBytes(File(name));
        const auto second = jet::test::ReadBytes(folder_.Path() / "AUTRE" / name);
        ASSERT_EQ(first.size(), second.size());
        for (std::size_t page = 0; page < first.size() / kPage; ++page) {
            const auto at = static_cast<std::ptrdiff_t>(page * kPage);
            const bool isSame =
                std::equal(first.begin() + at, first.begin() + at + kPage, second.begin() + at);
            EXPECT_TRUE(isSame || MayHoldDates(first, page)) << "page " << page;
        }
    }
}

TEST_F(InstallationTest, AnInstallationThatIsThereStays) {
    const auto before = jet::test::ReadBytes(File("DATA/talmeon.mdb"));
    EXPECT_EQ(jet::test::ErrorNumber([&] { MakeInstallation(folder_.Path() / "QUARDELE", Small()); }), 3204);
    EXPECT_EQ(jet::test::ReadBytes(File("DATA/talmeon.mdb")), before);
}

TEST(FormerDataFile, HasNoNotes) {
    const jet::test::TempFolder folder;
    const fs::path file = folder.Path() / "talmeon.mdb";
    MakeFormerDataFile(file, Small());
    const auto table = jet::Database::Open(file, jet::OpenMode::ReadOnly)->OpenTable(u"TVEH");
    EXPECT_EQ(table->FindColumn(u"TVEH_Note1"), -1);
    EXPECT_EQ(table->RowCount(), 300U);
    EXPECT_TRUE(jet::CheckFile(file).empty());
}

}  // namespace
}  // namespace quardele::workshop
