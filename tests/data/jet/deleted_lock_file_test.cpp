// Somebody deletes the lock file while the data file is open, which Unix lets them do.

#include <jet/check.h>

#include "locks/lock_file.h"
#include "locks/lock_wait.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

class DeletedLockFile : public testing::Test {
 protected:
    void SetUp() override {
        LockPatience() = std::chrono::milliseconds(50);
        ASSERT_TRUE(fs::remove(LockFile::PathFor(file_)));
    }
    void TearDown() override { LockPatience() = usual_; }

    [[nodiscard]] std::shared_ptr<Table> Open() const {
        return Database::Open(file_)->OpenTable(u"VEHICLES");
    }
    [[nodiscard]] static double Km(const Table& table, RowId row) {
        return table.Fetch(row).value().NumberAt(table.FindColumn(u"KM"));
    }
    static void AddKm(Table& table, RowId row) {
        const RowLock lock = table.Lock(row);
        UpdateRow(table, row, {{u"KM", static_cast<std::int32_t>(Km(table, row)) + 1}});
    }
    [[nodiscard]] static int AddColumnError(Database& database) {
        Column column;
        column.name = u"MORE";
        column.type = ColumnType::Long;
        return ErrorNumber([&] { database.AddColumn(u"VEHICLES", column); });
    }

    std::chrono::milliseconds usual_ = LockPatience();
    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), 20);
    std::shared_ptr<Table> before_ = Open();
};

TEST_F(DeletedLockFile, NothingIsLostBetweenThoseWhoWereThereAndThoseWhoCome) {
    constexpr int kTimes = 20;
    const auto after = Open();
    const RowId row = RowAt(*before_, 3);
    const double km = Km(*before_, row);
    for (int i = 0; i < kTimes; ++i) {
        AddKm(*before_, row);
        AddKm(*after, row);
    }
    before_->Home().Refresh();
    EXPECT_EQ(Km(*before_, row), km + 2 * kTimes);
    EXPECT_TRUE(CheckFile(file_).empty());
}

TEST_F(DeletedLockFile, WhoWasThereTakesTheFileAwayThatItsChangeMakesAnew) {
    AddKm(*before_, RowAt(*before_, 3));
    EXPECT_TRUE(fs::exists(LockFile::PathFor(file_)));
    before_.reset();
    EXPECT_FALSE(fs::exists(LockFile::PathFor(file_)));
}

TEST_F(DeletedLockFile, WhoWasThereLeavesTheFileToThoseWhoCameLater) {
    const auto after = Open();
    AddKm(*before_, RowAt(*before_, 3));
    before_.reset();
    EXPECT_TRUE(fs::exists(LockFile::PathFor(file_)));
}

TEST_F(DeletedLockFile, ALockedRowStaysLocked) {
    const auto after = Open();
    const RowId row = RowAt(*before_, 3);
    const RowLock lock = before_->Lock(row);
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(after->Lock(row)); }), basic::error::kLockedHere);
}

TEST_F(DeletedLockFile, NobodyOpensTheFileForHimselfBesideThoseWhoWereThere) {
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(file_, OpenMode::Exclusive)); }),
              basic::error::kFileInUse);
}

TEST_F(DeletedLockFile, ThoseWhoWereThereChangeNoStructureUntilTheyComeAgain) {
    EXPECT_EQ(AddColumnError(before_->Home()), basic::error::kTableInUse);
    before_.reset();
    EXPECT_EQ(AddColumnError(*Database::Open(file_)), 0);
}

}  // namespace
}  // namespace quardele::jet::test
