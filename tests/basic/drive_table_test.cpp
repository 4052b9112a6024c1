#include <cstdlib>
#include <optional>

#include <basic/paths.h>

#include "support.h"

namespace quardele::basic {
namespace {

namespace fs = std::filesystem;

/// Sets an environment variable for the time of a test.
class Environment {
 public:
    Environment(const char* name, const std::string& value) : name_(name) {
        if (const char* before = std::getenv(name)) {
            before_ = before;
        }
        setenv(name, value.c_str(), 1);
    }
    ~Environment() {
        if (before_) {
            setenv(name_, before_->c_str(), 1);
        } else {
            unsetenv(name_);
        }
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

 private:
    const char* name_;
    std::optional<std::string> before_;
};

class DriveTableTest : public testing::Test {
 protected:
    TemporaryFolder folder_;
    Environment user_{"XDG_CONFIG_HOME", (folder_.Path() / "user").string()};
    Environment system_{"XDG_CONFIG_DIRS",
                        (folder_.Path() / "site").string() + ":" + (folder_.Path() / "etc").string()};
};

TEST_F(DriveTableTest, ReadsLettersAndFolders) {
    const auto table =
        DriveTable::FromFile(folder_.Write("drives.ini", "C=/srv/quardele\nd = /mnt/atelier \r\n"));
    EXPECT_EQ(table.FolderOf(u'C'), fs::path("/srv/quardele"));
    EXPECT_EQ(table.FolderOf(u'D'), fs::path("/mnt/atelier"));
    EXPECT_EQ(table.FolderOf(u'd'), fs::path("/mnt/atelier"));
    EXPECT_FALSE(table.FolderOf(u'E'));
}

TEST_F(DriveTableTest, PassesOverOtherLines) {
    const auto table = DriveTable::FromFile(folder_.Write(
        "drives.ini", "# lecteurs\n[drives]\n\nCD=/a\n1=/b\n=/c\nE=\nF\n;G=/d\nH=/données/été\n"));
    EXPECT_EQ(table.Drives().size(), 2U);
    EXPECT_EQ(table.FolderOf(u'H'), fs::path("/données/été"));
}

TEST_F(DriveTableTest, RelativeFoldersStartAtTheFile) {
    const auto table = DriveTable::FromFile(folder_.Write("conf/drives.ini", "C=../disque\n"));
    EXPECT_EQ(table.FolderOf(u'C'), folder_.Path() / "disque");
}

TEST_F(DriveTableTest, ZIsTheRootUnlessTheFileSaysOtherwise) {
    EXPECT_EQ(DriveTable::FromFile(folder_.Write("a.ini", "C=/x\n")).FolderOf(u'Z'), fs::path("/"));
    EXPECT_EQ(DriveTable::FromFile(folder_.Write("b.ini", "Z=/z\n")).FolderOf(u'Z'), fs::path("/z"));
    EXPECT_EQ(DriveTable::FromFile(folder_.Path() / "missing.ini").FolderOf(u'Z'), fs::path("/"));
}

TEST_F(DriveTableTest, TheUsersFileComesBeforeTheSystems) {
    folder_.Write("etc/quardele/drives.ini", "C=/etc-says\n");
    EXPECT_EQ(DriveTable::Discover(folder_.Path()).FolderOf(u'C'), fs::path("/etc-says"));
    folder_.Write("site/quardele/drives.ini", "C=/site-says\n");
    EXPECT_EQ(DriveTable::Discover(folder_.Path()).FolderOf(u'C'), fs::path("/site-says"));
    folder_.Write("user/quardele/drives.ini", "C=/user-says\n");
    EXPECT_EQ(DriveTable::Discover(folder_.Path()).FolderOf(u'C'), fs::path("/user-says"));
}

TEST_F(DriveTableTest, WithoutAnyFileTheNearestDriveFolderAboveIsC) {
    const fs::path deep = folder_.Path() / "drive_c/outer/drive_c/QUARDELE/VEH";
    EXPECT_EQ(DriveTable::Discover(deep).FolderOf(u'C'), folder_.Path() / "drive_c/outer/drive_c");
    EXPECT_EQ(DriveTable::Discover(folder_.Path() / "drive_c").FolderOf(u'C'), folder_.Path() / "drive_c");
    EXPECT_EQ(DriveTable::Discover(deep).FolderOf(u'Z'), fs::path("/"));
}

TEST_F(DriveTableTest, WithNeitherThereIsNoC) {
    EXPECT_FALSE(DriveTable::Discover(folder_.Path()).FolderOf(u'C'));
}

TEST_F(DriveTableTest, AConfiguredTableIsNotMixedWithDriveFolders) {
    folder_.Write("user/quardele/drives.ini", "D=/d\n");
    EXPECT_FALSE(DriveTable::Discover(folder_.Path() / "drive_c/QUARDELE").FolderOf(u'C'));
}

}  // namespace
}  // namespace quardele::basic
