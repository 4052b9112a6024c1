// Rows that one user is changing, and what others get meanwhile.

#include "child_action.h"
#include "locks/lock_bytes.h"
#include "locks/lock_file.h"
#include "locks/lock_wait.h"
#include "support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;
using quardele::test::Process;

[[nodiscard]] std::shared_ptr<Table> Open(const fs::path& file) {
    return Database::Open(file)->OpenTable(u"TVEH_DETAIL");
}

[[nodiscard]] RowId RowAt(const Table& table, int position) {
    RowScan scan = table.Scan();
    for (int i = 0; i < position; ++i) {
        static_cast<void>(scan.NextId());
    }
    return scan.NextId().value();
}

/// Has locked a row: file, position of the row.
const ChildAction kLock("lock", [](const ChildAction::Arguments& arguments) {
    const auto table = Open(PathOf(arguments[0]));
    const RowLock lock = table->Lock(RowAt(*table, std::stoi(arguments[1])));
    quardele::test::Stay();
});

/// Locks a row, says so and gives it back after a while: file, position of the row.
const ChildAction kLockForAWhile("lock for a while", [](const ChildAction::Arguments& arguments) {
    const auto table = Open(PathOf(arguments[0]));
    const RowLock lock = table->Lock(RowAt(*table, std::stoi(arguments[1])));
    quardele::test::GiveSign();
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
});

class RowLockTest : public testing::Test {
 protected:
    void SetUp() override { LockPatience() = std::chrono::milliseconds(60); }
    void TearDown() override { LockPatience() = usual_; }

    /// A process that has locked a row.
    [[nodiscard]] Process Locker(int position) const {
        return kLock.Keep({Argument(file_), std::to_string(position)});
    }
    [[nodiscard]] static int LockError(Table& table, RowId row) {
        return ErrorNumber([&] { static_cast<void>(table.Lock(row)); });
    }
    [[nodiscard]] static int UpdateError(Table& table, RowId row) {
        return ErrorNumber([&] {
            const ColumnChange change{3, std::int16_t{5}};
            table.Update(row, {&change, 1});
        });
    }

    std::chrono::milliseconds usual_ = LockPatience();
    TempFolder folder_;
    fs::path file_ = folder_.Copy(SampleFile("DATA/talmeon.mdb"));
};

TEST_F(RowLockTest, AnotherProcessGetsTheLockErrorAfterTheRetryTime) {
    Process other = Locker(3);
    const auto table = Open(file_);
    const RowId row = RowAt(*table, 3);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(LockError(*table, row), basic::error::kRecordLocked);
    EXPECT_GE(std::chrono::steady_clock::now() - start, LockPatience());
    EXPECT_EQ(UpdateError(*table, row), basic::error::kRecordLocked);
    EXPECT_EQ(ErrorNumber([&] { table->Delete(row); }), basic::error::kRecordLocked);
    EXPECT_EQ(other.Wait(), 0);
    EXPECT_EQ(UpdateError(*table, row), 0);
    EXPECT_EQ(LockError(*table, row), 0);
}

TEST_F(RowLockTest, OtherRowsOfThePageStayFree) {
    Process other = Locker(3);
    const auto table = Open(file_);
    ASSERT_EQ(RowAt(*table, 3).page, RowAt(*table, 4).page);
    const RowLock lock = table->Lock(RowAt(*table, 4));
    EXPECT_TRUE(lock.IsHeld());
    EXPECT_EQ(UpdateError(*table, RowAt(*table, 5)), 0);
}

TEST_F(RowLockTest, AKilledProcessHoldsNoRow) {
    Process other = Locker(3);
    other.Kill();
    const auto table = Open(file_);
    EXPECT_EQ(LockError(*table, RowAt(*table, 3)), 0);
}

TEST_F(RowLockTest, ALockThatIsGivenBackWithinTheRetryTimeIsGot) {
    LockPatience() = usual_;
    Process other = kLockForAWhile.Keep({Argument(file_), "3"});
    const auto table = Open(file_);
    EXPECT_EQ(LockError(*table, RowAt(*table, 3)), 0);
    EXPECT_EQ(other.Wait(), 0);
}

TEST_F(RowLockTest, AnotherDatabaseOfTheProcessIsToldSo) {
    const auto mine = Open(file_);
    const auto other = Open(file_);
    const RowId row = RowAt(*mine, 3);
    RowLock lock = mine->Lock(row);
    EXPECT_EQ(LockError(*other, row), basic::error::kLockedHere);
    EXPECT_EQ(UpdateError(*other, row), basic::error::kLockedHere);
    EXPECT_EQ(UpdateError(*mine, row), 0);
    lock.Release();
    EXPECT_FALSE(lock.IsHeld());
    EXPECT_EQ(UpdateError(*other, row), 0);
}

TEST_F(RowLockTest, OneDatabaseMayLockARowTwice) {
    const auto mine = Open(file_);
    const auto other = Open(file_);
    const RowId row = RowAt(*mine, 3);
    RowLock first = mine->Lock(row);
    RowLock second = mine->Lock(row);
    EXPECT_EQ(UpdateError(*mine, row), 0);
    first.Release();
    EXPECT_EQ(LockError(*other, row), basic::error::kLockedHere);
    second.Release();
    EXPECT_EQ(LockError(*other, row), 0);
}

TEST_F(RowLockTest, ALockedRowIsSeenAsItIsNow) {
    const auto mine = Open(file_);
    const auto other = Open(file_);
    const RowId row = RowAt(*mine, 3);
    static_cast<void>(mine->Fetch(row));
    EXPECT_EQ(UpdateError(*other, row), 0);
    const RowLock lock = mine->Lock(row);
    EXPECT_EQ(mine->Fetch(row)->NumberAt(3), 5);
}

TEST_F(RowLockTest, ARowThatIsGoneCannotBeLocked) {
    const auto mine = Open(file_);
    const auto other = Open(file_);
    const RowId row = RowAt(*mine, 3);
    other->Delete(row);
    EXPECT_EQ(LockError(*mine, row), basic::error::kRecordDeleted);
    EXPECT_EQ(LockError(*mine, {row.page, 254}), basic::error::kRecordDeleted);
    EXPECT_EQ(LockError(*mine, {1'000'000, 0}), basic::error::kRecordDeleted);
}

TEST_F(RowLockTest, AReadOnlyFileHasNoLocks) {
    const auto table = Database::Open(file_, OpenMode::ReadOnly)->OpenTable(u"TVEH_DETAIL");
    EXPECT_EQ(LockError(*table, RowAt(*table, 3)), basic::error::kReadOnly);
}

TEST_F(RowLockTest, AStepHoldsItsRowsUntilItsEnd) {
    const auto database = Database::Open(file_);
    const auto mine = database->OpenTable(u"TVEH_DETAIL");
    const auto other = Open(file_);
    const RowId row = RowAt(*mine, 3);
    {
        Step step = database->Begin();
        EXPECT_EQ(UpdateError(*mine, row), 0);
        EXPECT_EQ(LockError(*other, row), basic::error::kLockedHere);
        step.Commit();
    }
    EXPECT_EQ(LockError(*other, row), 0);
}

TEST_F(RowLockTest, AStepMeetsALockedRowAndGoesOnWithItsNeighbours) {
    Process locker = Locker(3);
    const auto database = Database::Open(file_);
    const auto table = database->OpenTable(u"TVEH_DETAIL");
    const RowLock own = table->Lock(RowAt(*table, 5));
    {
        Step step = database->Begin();
        EXPECT_EQ(UpdateError(*table, RowAt(*table, 3)), basic::error::kRecordLocked);
        EXPECT_EQ(UpdateError(*table, RowAt(*table, 4)), 0);
        EXPECT_EQ(UpdateError(*table, RowAt(*table, 5)), 0);
        step.Commit();
    }
    // The end of the step has not given back the row that was locked before it.
    EXPECT_EQ(LockError(*Open(file_), RowAt(*table, 5)), basic::error::kLockedHere);
    EXPECT_EQ(LockError(*Open(file_), RowAt(*table, 4)), 0);
}

TEST_F(RowLockTest, ARowThatAStepHasChangedCanBeLockedInItAndStaysLockedBehindIt) {
    const auto database = Database::Open(file_);
    const auto table = database->OpenTable(u"TVEH_DETAIL");
    const auto other = Open(file_);
    const RowId row = RowAt(*table, 3);
    RowLock lock;
    {
        Step step = database->Begin();
        EXPECT_EQ(UpdateError(*table, row), 0);
        lock = table->Lock(row);
        step.Commit();
    }
    EXPECT_EQ(LockError(*other, row), basic::error::kLockedHere);
    EXPECT_EQ(UpdateError(*table, row), 0);
    lock.Release();
    EXPECT_EQ(LockError(*other, row), 0);
}

// What another engine does to a page: an exclusive lock of its range in the lock file.
TEST_F(RowLockTest, APageThatAnotherEngineIsChangingIsRefused) {
    const auto table = Open(file_);
    const RowId row = RowAt(*table, 3);
    OsFile engine;
    ASSERT_TRUE(engine.Open(LockFile::PathFor(file_), OsFile::Access::ReadWrite));
    const std::uint64_t range = lock_bytes::kPageWrites + row.page * lock_bytes::kPerPage;
    ASSERT_EQ(engine.TryLock(range, OsFile::Lock::Exclusive, lock_bytes::kPerPage),
              OsFile::LockResult::Taken);
    EXPECT_EQ(LockError(*table, row), basic::error::kRecordLocked);
    engine.Unlock(range, lock_bytes::kPerPage);
    const RowLock lock = table->Lock(row);
    EXPECT_EQ(engine.TryLock(range, OsFile::Lock::Exclusive, lock_bytes::kPerPage), OsFile::LockResult::Held);
    EXPECT_EQ(engine.TryLock(range + lock_bytes::kPerPage, OsFile::Lock::Exclusive, lock_bytes::kPerPage),
              OsFile::LockResult::Taken);
}

}  // namespace
}  // namespace quardele::jet::test
