// The lock file beside a data file: who is in it, and when it goes.

#include <memory>

#include "child.h"
#include "lock_bytes.h"
#include "lock_file.h"
#include "lock_wait.h"
#include "support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

class LockFileTest : public testing::Test {
 protected:
    void SetUp() override { LockPatience() = std::chrono::milliseconds(50); }
    void TearDown() override { LockPatience() = usual_; }

    [[nodiscard]] fs::path LockPath() const { return LockFile::PathFor(file_); }
    [[nodiscard]] bool IsTaken(int user) const {
        OsFile locks;
        EXPECT_TRUE(locks.Open(LockPath(), OsFile::Access::ReadWrite));
        return locks.TryLock(lock_bytes::kUsers + static_cast<std::uint64_t>(user - 1),
                             OsFile::Lock::Exclusive) == OsFile::LockResult::Held;
    }
    [[nodiscard]] int OpenError(OpenMode mode = OpenMode::Shared) const {
        return ErrorNumber([&] { static_cast<void>(Database::Open(file_, mode)); });
    }

    std::chrono::milliseconds usual_ = LockPatience();
    TempFolder folder_;
    fs::path file_ = folder_.Copy(SampleFile("SIGNETS.MDB"));
};

TEST_F(LockFileTest, LiesBesideTheFileWhileItIsOpen) {
    EXPECT_EQ(LockPath(), folder_.Path() / "SIGNETS.ldb");
    EXPECT_FALSE(fs::exists(LockPath()));
    auto database = Database::Open(file_);
    EXPECT_TRUE(fs::exists(LockPath()));
    EXPECT_TRUE(IsTaken(1));
    database.reset();
    EXPECT_FALSE(fs::exists(LockPath()));
}

TEST_F(LockFileTest, NamesTheMachineAndTheUser) {
    const auto database = Database::Open(file_);
    const auto bytes = ReadBytes(LockPath());
    ASSERT_EQ(bytes.size(), 64U);
    const std::string machine(bytes.begin(), bytes.begin() + 32);
    const std::string user(bytes.begin() + 32, bytes.end());
    EXPECT_EQ(machine.substr(0, machine.find('\0')), MachineName().substr(0, 31));
    EXPECT_EQ(machine.back(), '\0');
    EXPECT_EQ(user, "Admin" + std::string(27, '\0'));
}

TEST_F(LockFileTest, TheLastOneOutDeletesIt) {
    Companion other([file = file_] { return Database::Open(file); });
    {
        const auto database = Database::Open(file_);
        EXPECT_EQ(fs::file_size(LockPath()), 128U);
        EXPECT_TRUE(IsTaken(1));
        EXPECT_TRUE(IsTaken(2));
    }
    EXPECT_TRUE(fs::exists(LockPath()));
    EXPECT_FALSE(IsTaken(2));
    other.Finish();
    EXPECT_FALSE(fs::exists(LockPath()));
}

TEST_F(LockFileTest, AFreePlaceIsTakenAgain) {
    Companion first([file = file_] { return Database::Open(file); });
    const auto second = Database::Open(file_);
    first.Finish();
    EXPECT_FALSE(IsTaken(1));
    const auto third = Database::Open(file_);
    EXPECT_TRUE(IsTaken(1));
    EXPECT_EQ(fs::file_size(LockPath()), 128U);
}

TEST_F(LockFileTest, AKilledProcessLeavesNoPlaceTaken) {
    Companion other([file = file_] { return Database::Open(file); });
    EXPECT_TRUE(IsTaken(1));
    other.Kill();
    ASSERT_TRUE(fs::exists(LockPath()));
    EXPECT_FALSE(IsTaken(1));
    EXPECT_EQ(OpenError(OpenMode::Exclusive), 0);
    EXPECT_EQ(OpenError(), 0);
    EXPECT_FALSE(fs::exists(LockPath()));
}

TEST_F(LockFileTest, ThereIsRoomForTwoHundredAndFiftyFiveUsers) {
    std::vector<std::unique_ptr<LockFile>> users;
    for (int i = 1; i <= 255; ++i) {
        users.push_back(std::make_unique<LockFile>());
        ASSERT_EQ(users.back()->Enter(file_), LockFile::Entry::Entered);
        ASSERT_EQ(users.back()->User(), i);
    }
    EXPECT_EQ(fs::file_size(LockPath()), 255U * 64U);
    EXPECT_EQ(OpenError(), basic::error::kFileInUse);
    users.erase(users.begin() + 100);
    EXPECT_EQ(OpenError(), 0);
    users.clear();
    EXPECT_FALSE(fs::exists(LockPath()));
}

TEST_F(LockFileTest, AnExclusiveOpenerHasNoneAndHeedsTheUsersInIt) {
    {
        const auto exclusive = Database::Open(file_, OpenMode::Exclusive);
        EXPECT_FALSE(fs::exists(LockPath()));
    }
    // A program that knows of the lock file only.
    LockFile other;
    ASSERT_EQ(other.Enter(file_), LockFile::Entry::Entered);
    EXPECT_EQ(OpenError(OpenMode::Exclusive), basic::error::kFileInUse);
    other.Leave();
    EXPECT_EQ(OpenError(OpenMode::Exclusive), 0);
}

TEST_F(LockFileTest, AReaderMakesNone) {
    const auto database = Database::Open(file_, OpenMode::ReadOnly);
    EXPECT_FALSE(fs::exists(LockPath()));
}

TEST_F(LockFileTest, WhereNoneCanBeMadeTheFileIsReadOnly) {
    fs::create_directory(LockPath());
    EXPECT_TRUE(Database::Open(file_)->IsReadOnly());
}

// The last one deletes the file while others come in: nobody may sit in a file that has lost its name.
TEST_F(LockFileTest, ComingAndGoingAtTheSameTimeLeavesEverybodyInTheSameFile) {
    LockPatience() = usual_;
    constexpr int kProcesses = 4;
    constexpr int kRounds = 300;
    std::vector<pid_t> children;
    for (int i = 0; i < kProcesses; ++i) {
        children.push_back(StartChild([&] {
            for (int round = 0; round < kRounds; ++round) {
                LockFile user;
                if (user.Enter(file_) != LockFile::Entry::Entered || !LockFile::HasUsers(file_)) {
                    throw basic::RuntimeError(basic::error::kFileInUse);
                }
            }
        }));
    }
    for (const pid_t child : children) {
        EXPECT_EQ(EndOf(child), 0);
    }
    EXPECT_FALSE(fs::exists(LockPath()));
}

}  // namespace
}  // namespace quardele::jet::test
