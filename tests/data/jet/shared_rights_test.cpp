// Files beside a data file that its other users must be able to use; in the ways of Unix.

#include <sys/stat.h>
#include <unistd.h>

#include "child_action.h"
#include "commit/journal.h"
#include "dying.h"
#include "locks/lock_file.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;

constexpr auto kSharedByGroup =
    fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read | fs::perms::group_write;

/// A user who keeps new files for himself, and dies in the middle of a change.
const ChildAction kSecretiveWriter("secretive writer", [](const ChildAction::Arguments& arguments) {
    ::umask(077);
    const auto database = Database::Open(PathOf(arguments[0]));
    const auto table = database->OpenTable(u"VEHICLES");
    CurrentWriteHook() = DieAtPage(database->File(), 1);
    table->Delete(RowAt(*table, 3));
});

/// The same user, who goes on after somebody has deleted the lock file.
const ChildAction kSecretiveRemainer("secretive remainer", [](const ChildAction::Arguments& arguments) {
    ::umask(077);
    const auto table = Database::Open(PathOf(arguments[0]))->OpenTable(u"VEHICLES");
    fs::remove(LockFile::PathFor(PathOf(arguments[0])));
    table->Delete(RowAt(*table, 3));
    quardele::test::Stay();
});

/// The same user, alone in the file until the test says to go on.
const ChildAction kSecretiveOwner("secretive owner", [](const ChildAction::Arguments& arguments) {
    ::umask(077);
    const auto database = Database::Open(PathOf(arguments[0]), OpenMode::Exclusive);
    quardele::test::Stay();
});

class SharedRights : public testing::Test {
 protected:
    void SetUp() override { fs::permissions(file_, kSharedByGroup); }

    [[nodiscard]] static fs::perms RightsOf(const fs::path& file) { return fs::status(file).permissions(); }
    [[nodiscard]] static gid_t GroupOf(const fs::path& file) {
        struct stat status = {};
        EXPECT_EQ(::stat(file.c_str(), &status), 0);
        return status.st_gid;
    }

    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), 20);
};

TEST_F(SharedRights, JournalAndLockFileAreForThoseWhoMayUseTheDataFile) {
    EXPECT_EQ(kSecretiveWriter.Run({Argument(file_)}), kKilled);
    EXPECT_EQ(RightsOf(JournalPath(file_)), kSharedByGroup);
    EXPECT_EQ(RightsOf(LockFile::PathFor(file_)), kSharedByGroup);
    // So that somebody else can undo it.
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(file_)); }), 0);
    EXPECT_FALSE(fs::exists(JournalPath(file_)));
}

TEST_F(SharedRights, ALockFileThatIsMadeAnewIsForThemAsWell) {
    auto remainer = kSecretiveRemainer.Keep({Argument(file_)});
    ASSERT_TRUE(fs::exists(LockFile::PathFor(file_)));
    EXPECT_EQ(RightsOf(LockFile::PathFor(file_)), kSharedByGroup);
    EXPECT_EQ(remainer.Wait(), 0);
}

TEST_F(SharedRights, TheLockFileOfAnExclusiveOpenerIsForThemAsWell) {
    auto owner = kSecretiveOwner.Keep({Argument(file_)});
    EXPECT_EQ(RightsOf(LockFile::PathFor(file_)), kSharedByGroup);
    EXPECT_EQ(owner.Wait(), 0);
}

TEST_F(SharedRights, ADataFileOfOneUserKeepsItsCompanionsForHim) {
    constexpr auto kOwn = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(file_, kOwn);
    const auto database = Database::Open(file_);
    EXPECT_EQ(RightsOf(LockFile::PathFor(file_)), kOwn);
}

TEST_F(SharedRights, TheGroupIsThatOfTheDataFile) {
    constexpr gid_t kOtherGroup = 12345;
    if (::chown(file_.c_str(), static_cast<uid_t>(-1), kOtherGroup) != 0) {
        GTEST_SKIP() << "only root may give a file any group";
    }
    EXPECT_EQ(kSecretiveWriter.Run({Argument(file_)}), kKilled);
    EXPECT_EQ(GroupOf(JournalPath(file_)), kOtherGroup);
    EXPECT_EQ(GroupOf(LockFile::PathFor(file_)), kOtherGroup);
}

}  // namespace
}  // namespace quardele::jet::test
