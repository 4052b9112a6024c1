// What may be written to a data file follows the rights of its user, in the ways of Unix.
#include <filesystem>

#include "dao_test.h"
#include "ordinary_user.h"

namespace quardele::dao {
namespace {

namespace fs = std::filesystem;
using quardele::test::HoldsForAnOrdinaryUser;

class DatabaseRightsTest : public DaoTest {
 protected:
    /// Lets everybody look into the installation, and write where `writable` says so.
    void OpenUp(fs::perms data, fs::perms folder) const {
        for (const fs::path& path : {Installed().Drive(), Installed().File(""), Installed().File("DATA")}) {
            fs::permissions(path, kReadableFolder, fs::perm_options::add);
        }
        fs::permissions(Installed().File("DATA"), folder);
        fs::permissions(Installed().File(kData), data);
    }

    static constexpr fs::perms kReadableFile =
        fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
    static constexpr fs::perms kWritableFile =
        kReadableFile | fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    static constexpr fs::perms kEnter =
        fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    static constexpr fs::perms kReadableFolder = kReadableFile | kEnter;
    static constexpr fs::perms kWritableFolder = kWritableFile | kEnter;
};

TEST_F(DatabaseRightsTest, FileThatMayNotBeWrittenOpensReadOnly) {
    OpenUp(kReadableFile, kWritableFolder);
    EXPECT_TRUE(HoldsForAnOrdinaryUser([&] {
        const auto rows = Data().OpenRecordset(u"TVEH");
        return !Data().Updatable() && !rows->Eof() && ErrorOf([&] { rows->Edit(); }) == error::kReadOnly;
    }));
}

TEST_F(DatabaseRightsTest, FolderThatMayNotBeWrittenOpensReadOnly) {
    OpenUp(kWritableFile, kReadableFolder);
    EXPECT_TRUE(HoldsForAnOrdinaryUser([&] { return !Data().Updatable(); }));
}

TEST_F(DatabaseRightsTest, FileAndFolderThatMayBeWrittenOpenForChanges) {
    OpenUp(kWritableFile, kWritableFolder);
    EXPECT_TRUE(HoldsForAnOrdinaryUser([&] { return Data().Updatable(); }));
}

}  // namespace
}  // namespace quardele::dao
