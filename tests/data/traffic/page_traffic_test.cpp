// Pages that lists, searches and queries ask for, on the files of a workshop with thousands of vehicles.
#include <gtest/gtest.h>

#include <basic/paths.h>
#include <dao/dao.h>
#include <sql/query.h>
#include <sql/statement.h>
#include <workshop/installation.h>

#include "../jet/support.h"
#include "open_file.h"
#include "traffic.h"

namespace quardele::tests {
namespace {

namespace fs = std::filesystem;
using basic::Text;
using basic::TextView;

constexpr int kVehicles = 4000;
constexpr int kVisits = 30000;
constexpr int kJobs = 15000;

/// The data database, made once for all tests.
class PageTrafficTest : public testing::Test {
 protected:
    static void SetUpTestSuite() {
        folder_ = std::make_unique<jet::test::TempFolder>();
        auto scale = workshop::ScaleFor(kVehicles, basic::Date{46346});
        scale.visits = kVisits;
        scale.jobs = kJobs;
        workshop::MakeInstallation(folder_->Path() / "QUARDELE", scale);
    }
    static void TearDownTestSuite() { folder_.reset(); }

    [[nodiscard]] static fs::path File() { return folder_->Path() / "QUARDELE" / "DATA" / "talmeon.mdb"; }
    [[nodiscard]] static double FilePages() { return static_cast<double>(fs::file_size(File())) / 4096; }

    /// What running a statement and reading all of its values asks for.
    [[nodiscard]] static Traffic TrafficOfQuery(const std::shared_ptr<jet::Database>& database,
                                                TextView statement, std::size_t* rows = nullptr) {
        const auto query = sql::Query::Prepare(database, statement);
        return TrafficIn(*database, [&] {
            const sql::RowSet found = query->Run();
            for (std::size_t row = 0; row < found.Size(); ++row) {
                for (int column = 0; column < static_cast<int>(query->Columns().size()); ++column) {
                    (void)found.Value(row, column);
                }
            }
            if (rows != nullptr) {
                *rows = found.Size();
            }
        });
    }

    /// A registration of a job with a detail row.
    [[nodiscard]] static Text SomeVehicle(const std::shared_ptr<jet::Database>& database) {
        const auto query = sql::Query::Prepare(
            database, u"SELECT TOP 1 TAFF_DETAIL_Ident FROM TAFF_DETAIL WHERE TAFF_DETAIL_Id > 3000");
        return query->Run().Value(0, 0).As<Text>();
    }

 private:
    static inline std::unique_ptr<jet::test::TempFolder> folder_;
};

/// A dynaset, and the file that it shares with everybody else in this program.
struct List {
    explicit List(const fs::path& path) : file(dao::OpenFile::Open(path, jet::OpenMode::Shared)) {}

    void Open() {
        list = dao::DBEngine::Instance()
                   .Workspaces(0)
                   .OpenDatabase(basic::WindowsPath(file->Database()->File()))
                   ->OpenRecordset(u"select * from TVEH", dao::RecordsetType::Dynaset);
    }
    [[nodiscard]] jet::Database& Database() const { return *file->Database(); }

    std::shared_ptr<dao::OpenFile> file;
    std::shared_ptr<dao::Recordset> list;
};

TEST_F(PageTrafficTest, OpeningAListReadsTheKeysAndTheRowsThatAreLookedAt) {
    constexpr std::size_t kFirstPage = 40;
    // The keys: the pages of the primary key, walked through by a reader of its own.
    const auto other = jet::Database::Open(File(), jet::OpenMode::ReadOnly);
    const Traffic keys = TrafficIn(*other, [&] {
        const auto table = other->OpenTable(u"TVEH");
        jet::IndexCursor cursor = table->OpenIndex(table->FindIndex(u"PrimaryKey"));
        for (bool found = cursor.First(); found; found = cursor.Next()) {
        }
    });
    List list(File());
    const Traffic opening = TrafficIn(list.Database(), [&] {
        list.Open();
        for (std::size_t row = 0; row < kFirstPage; ++row) {
            for (int field = 0; field < static_cast<int>(list.list->Fields().size()); ++field) {
                (void)list.list->ValueAt(row, field);
            }
        }
    });
    EXPECT_EQ(list.list->RowCount(), static_cast<std::size_t>(kVehicles));
    EXPECT_LT(static_cast<double>(opening.read) - static_cast<double>(keys.read), FilePages() * 0.05);
}

/// What opening a list and showing its first page asks the file for, keys included.
TEST_F(PageTrafficTest, TheFirstPageOfAListTouchesATwentiethOfTheFile) {
    constexpr std::size_t kFirstPage = 40;
    for (const TextView source : {TextView(u"select * from TVEH"), TextView(u"SELECT * FROM TVEH_DETAIL"),
                                  TextView(u"select * from TVEH where InStr(1, TVEH_IMMAT, '1') <> 0"),
                                  TextView(u"select * from TVEH where left(TVEH_IMMAT,4) = 'AB-1'")}) {
        const auto file = dao::OpenFile::Open(File(), jet::OpenMode::Shared);
        const Traffic opening = TrafficIn(*file->Database(), [&] {
            const auto list = dao::DBEngine::Instance()
                                  .Workspaces(0)
                                  .OpenDatabase(basic::FromUtf8(File().string()))
                                  ->OpenRecordset(source, dao::RecordsetType::Dynaset);
            ASSERT_GT(list->RowsFound(1), 0U);
            for (std::size_t row = 0; row < kFirstPage && list->RowsFound(row + 1) > row; ++row) {
                (void)list->ValueAt(row, 0);
            }
        });
        EXPECT_GT(opening.read, 0U);
        EXPECT_LT(static_cast<double>(opening.read), FilePages() * 0.05) << basic::ToUtf8(source);
    }
}

/// A sorted join has read its rows to sort them.
TEST_F(PageTrafficTest, TheValuesOfASortedJoinAreThereOnceItHasRun) {
    const auto database = jet::Database::Open(File(), jet::OpenMode::ReadOnly);
    const auto query = sql::Query::Prepare(
        database,
        u"SELECT TVEH_DETAIL_DATVIS, TVEH_MARQUE FROM TVEH_DETAIL LEFT JOIN TVEH ON TVEH_DETAIL_Immat = "
        u"TVEH_IMMAT WHERE TVEH_DETAIL_PERIOD > 6 ORDER BY TVEH_CODCLI, TVEH_IMMAT");
    const sql::RowSet rows = query->Run();
    ASSERT_GT(rows.Size(), 1000U);
    const Traffic reading = TrafficIn(*database, [&] {
        for (std::size_t row = 0; row < rows.Size(); ++row) {
            (void)rows.Value(row, 0);
            (void)rows.Value(row, 1);
        }
    });
    EXPECT_EQ(reading.asked, 0U);
}

TEST_F(PageTrafficTest, ASearchForAValueIsALookIntoAHashFromTheSecondOn) {
    List list(File());
    list.Open();
    dao::Recordset& rows = *list.list;
    rows.MoveLast();
    const Text last = rows.Value(u"TVEH_USER3").As<Text>();
    const Text sought = u"TVEH_USER3 = '" + last + u"'";
    const Traffic first = TrafficIn(list.Database(), [&] { rows.FindFirst(u"TVEH_USER3 = 'rien'"); });
    EXPECT_TRUE(rows.NoMatch());
    EXPECT_GE(first.asked, static_cast<std::uint64_t>(kVehicles));
    const Traffic second = TrafficIn(list.Database(), [&] { rows.FindFirst(sought); });
    EXPECT_FALSE(rows.NoMatch());
    EXPECT_EQ(rows.Value(u"TVEH_USER3").As<Text>(), last);
    EXPECT_LE(second.asked, 5U);
    const Traffic missing =
        TrafficIn(list.Database(), [&] { rows.FindFirst(u"TVEH_USER3 = 'toujours rien'"); });
    EXPECT_TRUE(rows.NoMatch());
    EXPECT_LE(missing.asked, 5U);
}

TEST_F(PageTrafficTest, AnEqualityOnAnIndexedColumnReadsItsRows) {
    const auto database = jet::Database::Open(File(), jet::OpenMode::ReadOnly);
    std::size_t rows = 0;
    const Text vehicle = SomeVehicle(database);
    const Traffic visits = TrafficOfQuery(
        database, u"Select * from TVEH_DETAIL where TVEH_DETAIL_Immat ='" + vehicle + u"'", &rows);
    EXPECT_GT(rows, 0U);
    EXPECT_LT(visits.asked, 100U);
    const Traffic ways = TrafficOfQuery(
        database, u"SELECT * FROM TVEH WHERE TVEH_IMMAT = '" + vehicle + u"' OR TVEH_IMMAT IN ('AA', 'BB')",
        &rows);
    EXPECT_EQ(rows, 1U);
    EXPECT_LT(ways.asked, 100U);
}

TEST_F(PageTrafficTest, AnIndexGivesAnOrderWithoutTheRows) {
    const auto database = jet::Database::Open(File(), jet::OpenMode::ReadOnly);
    const auto query = sql::Query::Prepare(database, u"SELECT * FROM TVEH ORDER BY TVEH_CODCLI");
    const Traffic traffic = TrafficIn(*database, [&] { (void)query->Run(); });
    EXPECT_LT(traffic.read, RowPagesOf(*database, u"TVEH"));
}

TEST_F(PageTrafficTest, TheHistoryOfAVehicleGoesThroughTheIndexesThatThereAre) {
    const jet::test::TempFolder folder;
    const fs::path file = folder.Copy(File());
    const auto database = jet::Database::Open(file);
    const Text history = HistoryOf(SomeVehicle(database));
    std::size_t rows = 0;
    // Nothing leads from a registration to the detail rows: they are all looked at, but not the jobs.
    const Traffic without = TrafficOfQuery(database, history, &rows);
    EXPECT_GT(rows, 0U);
    EXPECT_LT(without.asked, RowPagesOf(*database, u"TAFF_DETAIL") + 150);
    EXPECT_GT(RowPagesOf(*database, u"TAFF"), 300U);
    (void)sql::Execute(*database, u"CREATE INDEX IDENT ON TAFF_DETAIL (TAFF_DETAIL_Ident)");
    std::size_t rowsThrough = 0;
    const Traffic with =
        TrafficOfQuery(jet::Database::Open(file, jet::OpenMode::ReadOnly), history, &rowsThrough);
    EXPECT_EQ(rowsThrough, rows);
    EXPECT_LT(with.asked, 150U);
}

}  // namespace
}  // namespace quardele::tests
