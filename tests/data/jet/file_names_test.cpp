// What has a name in a folder, as far as the engine asks.
#include "file/file_names.h"

#include <gmock/gmock.h>

#include "support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

TEST(FileNamesTest, FilesFoldersAndNothingAreToldApart) {
    const TempFolder folder;
    WriteBytes(folder.Path() / "a", {});
    EXPECT_EQ(WhatHasName(folder.Path()), Named::Folder);
    EXPECT_EQ(WhatHasName(folder.Path() / "a"), Named::File);
    EXPECT_EQ(WhatHasName(folder.Path() / "b"), Named::Nothing);
    EXPECT_EQ(WhatHasName(folder.Path() / "b" / "c"), Named::Nothing);
    EXPECT_TRUE(IsTaken(folder.Path() / "a"));
    EXPECT_FALSE(IsTaken(folder.Path() / "b"));
}

TEST(FileNamesTest, NamesInAFolderAreThoseOfAllThatIsInIt) {
    const TempFolder folder;
    EXPECT_THAT(NamesIn(folder.Path()), IsEmpty());
    EXPECT_THAT(NamesIn(folder.Path() / "none"), IsEmpty());
    WriteBytes(folder.Path() / u"été Ω.mdb", {});
    fs::create_directory(folder.Path() / "b");
    EXPECT_THAT(NamesIn(folder.Path()), UnorderedElementsAre(fs::path(u"été Ω.mdb"), fs::path("b")));
}

TEST(FileNamesTest, ASecondNameReplacesNothing) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "a";
    const fs::path second = folder.Path() / "b";
    WriteBytes(file, {1});
    EXPECT_TRUE(GiveSecondName(file, second));
    EXPECT_EQ(ReadBytes(second), std::vector<std::uint8_t>{1});
    WriteBytes(folder.Path() / "c", {2});
    EXPECT_FALSE(GiveSecondName(file, folder.Path() / "c"));
    EXPECT_EQ(ReadBytes(folder.Path() / "c"), std::vector<std::uint8_t>{2});
    TryRemoveFile(file);
    TryRemoveFile(file);
    EXPECT_FALSE(IsTaken(file));
    EXPECT_TRUE(IsTaken(second));
}

}  // namespace
}  // namespace quardele::jet::test
