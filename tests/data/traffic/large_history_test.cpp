// The history of a vehicle with 2 000 jobs among 150 000, as the vehicle form opens it.
#include <algorithm>

#include <gtest/gtest.h>

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

constexpr int kJobs = 150'000;
constexpr std::size_t kJobsOfVehicle = 2'000;
/// Most pages that a row found takes: down the indexes to the job and to its lines, by either of two ways.
constexpr std::size_t kPagesOfRow = 8;
/// Rows that the frame of the history shows without scrolling.
constexpr std::size_t kRowsInView = 9;
const Text kRegistration = u"ZY-900-AA";

class LargeHistoryTest : public testing::Test {
 protected:
    static void SetUpTestSuite() {
        folder_ = std::make_unique<jet::test::TempFolder>();
        auto scale = workshop::ScaleFor(1'500, basic::Date{46346});
        scale.jobs = kJobs;
        workshop::MakeInstallation(folder_->Path() / "QUARDELE", scale);
        // The jobs of many years lie all over the table.
        const auto database = jet::Database::Open(File());
        const auto changed = sql::Execute(*database, u"UPDATE TAFF SET TAFF_Immatr = '" + kRegistration +
                                                         u"' WHERE TAFF_Numaff Mod 75 = 0");
        static_cast<void>(changed);
    }
    static void TearDownTestSuite() { folder_.reset(); }

    [[nodiscard]] static fs::path File() { return folder_->Path() / "QUARDELE" / "DATA" / "talmeon.mdb"; }

    [[nodiscard]] static Text SomeOtherVehicle(const std::shared_ptr<jet::Database>& database) {
        const auto query = sql::Query::Prepare(
            database, u"SELECT TAFF_DETAIL_Ident FROM TAFF_DETAIL WHERE TAFF_DETAIL_Id = 3000");
        return query->Run().Value(0, 0).As<Text>();
    }

    /// Opens the history and reads what the operator sees of it.
    static Traffic Open(std::size_t& jobs, const Text& registration = kRegistration) {
        const auto file = dao::OpenFile::Open(File(), jet::OpenMode::Shared);
        const auto database = dao::DBEngine::Instance().Workspaces(0).OpenDatabase(
            basic::FromUtf8(file->Database()->File().string()));
        return TrafficIn(*file->Database(), [&] {
            const auto rows = database->OpenRecordset(HistoryOf(registration), dao::RecordsetType::Dynaset);
            for (std::size_t row = 0; row < std::min(kRowsInView, rows->RowCount()); ++row) {
                for (int field = 0; field < static_cast<int>(rows->Fields().size()); ++field) {
                    static_cast<void>(rows->ValueAt(row, field));
                }
            }
            jobs = rows->RowCount();
        });
    }

 private:
    static inline std::unique_ptr<jet::test::TempFolder> folder_;
};

/// Half of the jobs' pages hold one of the vehicle's, and no others are read; nothing leads from a
/// registration to the detail lines, which are all looked at. Pages asked for more than once are counted each
/// time: they tell what a row costs, while that the jobs are not read through, `read` tells, and the vehicle
/// with few jobs.
TEST_F(LargeHistoryTest, TheJobsAreReadThroughTheIndexesThatThereAre) {
    const auto database = jet::Database::Open(File(), jet::OpenMode::ReadOnly);
    const std::size_t jobPages = RowPagesOf(*database, u"TAFF");
    const std::size_t linePages = RowPagesOf(*database, u"TAFF_DETAIL");
    std::size_t rows = 0;
    const Traffic opening = Open(rows);
    EXPECT_GE(rows, kJobsOfVehicle);
    EXPECT_LT(opening.read, jobPages + linePages);
    EXPECT_LT(opening.asked, linePages + kPagesOfRow * rows);
}

TEST_F(LargeHistoryTest, AVehicleWithFewJobsTakesLittleMoreThanTheLines) {
    const auto database = jet::Database::Open(File(), jet::OpenMode::ReadOnly);
    std::size_t rows = 0;
    const Traffic opening = Open(rows, SomeOtherVehicle(database));
    EXPECT_GT(rows, 0U);
    EXPECT_LT(rows, kJobsOfVehicle / 4);
    EXPECT_LT(opening.asked, RowPagesOf(*database, u"TAFF_DETAIL") + kPagesOfRow * rows);
}

}  // namespace
}  // namespace quardele::tests
