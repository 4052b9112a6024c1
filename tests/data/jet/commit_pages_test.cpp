// The pages of a commit in the lock file: what keeps another engine from them, and for how long.

#include <functional>

#include "file/write_hook.h"
#include "locks/lock_bytes.h"
#include "locks/lock_file.h"
#include "locks/lock_wait.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

constexpr int kVehicles = 3000;

class CommitPagesTest : public testing::Test {
 protected:
    void SetUp() override {
        LockPatience() = std::chrono::milliseconds(60);
        ASSERT_TRUE(engine_.Open(LockFile::PathFor(file_), OsFile::Access::ReadWrite));
    }
    void TearDown() override {
        CurrentWriteHook() = {};
        LockPatience() = usual_;
    }

    /// Takes a page as another engine does that changes it.
    [[nodiscard]] bool TakeAsAnotherEngine(std::uint32_t page) {
        return engine_.TryLock(RangeOf(page), OsFile::Lock::Exclusive, lock_bytes::kPerPage) ==
               OsFile::LockResult::Taken;
    }
    void GiveBack(std::uint32_t page) { engine_.Unlock(RangeOf(page), lock_bytes::kPerPage); }
    [[nodiscard]] bool IsFree(std::uint32_t page) {
        const bool taken = TakeAsAnotherEngine(page);
        if (taken) {
            GiveBack(page);
        }
        return taken;
    }
    void SetKm(RowId row) { UpdateRow(*table_, row, {{u"KM", std::int32_t{5}}}); }

    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), kVehicles);
    std::shared_ptr<Database> database_ = Database::Open(file_);
    std::shared_ptr<Table> table_ = database_->OpenTable(u"VEHICLES");
    RowId near_ = RowAt(*table_, 1);
    RowId far_ = RowAt(*table_, kVehicles - 20);
    OsFile engine_;

 private:
    [[nodiscard]] static std::uint64_t RangeOf(std::uint32_t page) {
        return lock_bytes::kPageWrites + page * lock_bytes::kPerPage;
    }
    std::chrono::milliseconds usual_ = LockPatience();
};

TEST_F(CommitPagesTest, AreKeptWhileTheyAreWrittenAndFreeBehindTheCommit) {
    int looks = 0;
    CurrentWriteHook() = [&](const WriteEvent& event) {
        if (event.step == WritePoint::Write && event.path == file_) {
            EXPECT_FALSE(IsFree(near_.page));
            EXPECT_TRUE(IsFree(far_.page));
            ++looks;
        }
    };
    SetKm(near_);
    EXPECT_GT(looks, 0);
    EXPECT_TRUE(IsFree(near_.page));
    SetKm(near_);
    EXPECT_TRUE(IsFree(near_.page));
}

TEST_F(CommitPagesTest, AreFreeBehindACommitThatFailed) {
    CurrentWriteHook() = [&](const WriteEvent& event) {
        if (event.step == WritePoint::Sync) {
            throw basic::RuntimeError(basic::error::kDeviceIo);
        }
    };
    EXPECT_EQ(ErrorNumber([&] { SetKm(near_); }), basic::error::kDeviceIo);
    CurrentWriteHook() = {};
    EXPECT_TRUE(IsFree(near_.page));
}

TEST_F(CommitPagesTest, AreAllFreeWhenOneOfThemIsRefused) {
    ASSERT_LT(near_.page, far_.page);
    ASSERT_TRUE(TakeAsAnotherEngine(far_.page));
    EXPECT_EQ(ErrorNumber([&] {
                  Step step = database_->Begin();
                  SetKm(near_);
                  SetKm(far_);
                  step.Commit();
              }),
              basic::error::kRecordLocked);
    EXPECT_TRUE(IsFree(near_.page));
    GiveBack(far_.page);
    SetKm(far_);
}

TEST_F(CommitPagesTest, OfANewRowAreRefusedAsWell) {
    const auto insert = [&] { InsertRow(*table_, {{u"PLATE", basic::Text(u"ZZ-999-ZZ")}}); };
    const auto pages = static_cast<std::uint64_t>(fs::file_size(file_) / 4096 + 1);
    ASSERT_EQ(engine_.TryLock(lock_bytes::kPageWrites, OsFile::Lock::Exclusive, pages * lock_bytes::kPerPage),
              OsFile::LockResult::Taken);
    EXPECT_EQ(ErrorNumber(insert), basic::error::kRecordLocked);
    engine_.Unlock(lock_bytes::kPageWrites, pages * lock_bytes::kPerPage);
    EXPECT_EQ(ErrorNumber(insert), 0);
}

TEST_F(CommitPagesTest, AreOneRangeWhenTheyAreMany) {
    constexpr std::uint32_t kPages = 300;
    LockFile users;
    ASSERT_EQ(users.Enter(file_), LockFile::Entry::Entered);
    std::vector<std::uint32_t> everyOther;
    for (std::uint32_t page = 0; page < kPages; ++page) {
        everyOther.push_back(2 * page);
    }
    ASSERT_TRUE(users.TryHoldPages(everyOther));
    EXPECT_FALSE(IsFree(1));
    EXPECT_FALSE(IsFree(2 * kPages - 2));
    EXPECT_TRUE(IsFree(2 * kPages));
    users.ReleasePages();
    for (const std::uint32_t page : {0U, 1U, 2 * kPages - 2}) {
        EXPECT_TRUE(IsFree(page));
    }
    users.Leave();
}

}  // namespace
}  // namespace quardele::jet::test
