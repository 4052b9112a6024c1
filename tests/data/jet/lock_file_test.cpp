// The lock file beside a data file: who is in it, and when it goes.

#include <memory>

#include "child_action.h"
#include "locks/live_user.h"
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

/// Has the file of its argument open.
const ChildAction kOpen("open", [](const ChildAction::Arguments& arguments) {
    const auto database = Database::Open(PathOf(arguments[0]));
    quardele::test::Stay();
});

/// Enters the lock file of its argument and leaves it again, many times.
const ChildAction kComeAndGo("come and go", [](const ChildAction::Arguments& arguments) {
    constexpr int kRounds = 300;
    const fs::path file = PathOf(arguments[0]);
    for (int round = 0; round < kRounds; ++round) {
        LockFile user;
        if (user.Enter(file) != LockFile::Entry::Entered || !IsUserThere(file, user.User())) {
            throw basic::RuntimeError(basic::error::kFileInUse);
        }
    }
});

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
    Process other = kOpen.Keep({Argument(file_)});
    {
        const auto database = Database::Open(file_);
        EXPECT_EQ(fs::file_size(LockPath()), 128U);
        EXPECT_TRUE(IsTaken(1));
        EXPECT_TRUE(IsTaken(2));
    }
    EXPECT_TRUE(fs::exists(LockPath()));
    EXPECT_FALSE(IsTaken(2));
    EXPECT_EQ(other.Wait(), 0);
    EXPECT_FALSE(fs::exists(LockPath()));
}

TEST_F(LockFileTest, AFreePlaceIsTakenAgain) {
    Process first = kOpen.Keep({Argument(file_)});
    const auto second = Database::Open(file_);
    EXPECT_EQ(first.Wait(), 0);
    EXPECT_FALSE(IsTaken(1));
    const auto third = Database::Open(file_);
    EXPECT_TRUE(IsTaken(1));
    EXPECT_EQ(fs::file_size(LockPath()), 128U);
}

TEST_F(LockFileTest, AKilledProcessLeavesNoPlaceTaken) {
    Process other = kOpen.Keep({Argument(file_)});
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

TEST_F(LockFileTest, AnExclusiveOpenerIsNoUserOfItAndHeedsThoseWhoAre) {
    {
        const auto exclusive = Database::Open(file_, OpenMode::Exclusive);
        EXPECT_EQ(fs::file_size(LockPath()), 0U);
        EXPECT_TRUE(IsTaken(1));
        EXPECT_TRUE(IsTaken(255));
    }
    EXPECT_FALSE(fs::exists(LockPath()));
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
    std::vector<Process> users;
    for (int i = 0; i < kProcesses; ++i) {
        users.push_back(kComeAndGo.Start({Argument(file_)}));
    }
    for (Process& user : users) {
        EXPECT_EQ(user.Wait(), 0);
    }
    EXPECT_FALSE(fs::exists(LockPath()));
}

}  // namespace
}  // namespace quardele::jet::test
