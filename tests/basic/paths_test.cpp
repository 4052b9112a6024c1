#include <basic/paths.h>

#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include "support.h"

namespace quardele::basic {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// A drive C: of its own, and the current folder put back afterwards.
class PathsTest : public testing::Test {
 protected:
    PathsTest() : savedTable_(DriveTable::Session()), savedFolder_(fs::current_path()) {
        DriveTable::Session() = DriveTable();
        DriveTable::Session().Set(u'C', drive_.Path());
        DriveTable::Session().Set(u'Z', "/");
    }
    ~PathsTest() override {
        fs::current_path(savedFolder_);
        DriveTable::Session() = savedTable_;
    }
    PathsTest(const PathsTest&) = delete;
    PathsTest& operator=(const PathsTest&) = delete;

    TemporaryFolder drive_;

 private:
    DriveTable savedTable_;
    fs::path savedFolder_;
};

TEST_F(PathsTest, ComponentsAreFoundWithoutRegardToCase) {
    const fs::path file = drive_.Write("Quardele/Données/DbPath.mdb");
    EXPECT_EQ(NativePath(u"C:\\QUARDELE\\DONNÉES\\DBPATH.MDB"), file);
    EXPECT_EQ(NativePath(u"c:\\quardele\\données\\dbpath.mdb"), file);
}

TEST_F(PathsTest, TheExactNameComesFirst) {
    const fs::path large = drive_.Write("FILE.TXT");
    const fs::path small = drive_.Write("file.txt");
    EXPECT_EQ(NativePath(u"C:\\file.txt"), small);
    EXPECT_EQ(NativePath(u"C:\\FILE.TXT"), large);
}

TEST_F(PathsTest, WhatDoesNotExistKeepsItsSpelling) {
    drive_.Write("Quardele/x");
    EXPECT_EQ(NativePath(u"C:\\QUARDELE\\Neuf\\Lettre.RVE"), drive_.Path() / "Quardele/Neuf/Lettre.RVE");
}

TEST_F(PathsTest, DoubledBackslashesCountAsOne) {
    const fs::path file = drive_.Write("QUARDELE/quardele.ini");
    EXPECT_EQ(NativePath(u"C:\\QUARDELE\\\\quardele.ini"), file);
    EXPECT_EQ(NativePath(u"C:\\\\QUARDELE\\\\\\quardele.ini"), file);
}

TEST_F(PathsTest, ASlashInANameLeadsIntoAFolder) {
    EXPECT_EQ(NativePath(u"C:\\A/B201231.RVE"), drive_.Path() / "A" / "B201231.RVE");
    EXPECT_FALSE(fs::exists(NativePath(u"C:\\A/B201231.RVE").parent_path()));
}

TEST_F(PathsTest, DotsAreFolded) {
    const fs::path file = drive_.Write("QUARDELE/a.txt");
    EXPECT_EQ(NativePath(u"C:\\QUARDELE\\VEH\\..\\.\\a.txt"), file);
    EXPECT_EQ(NativePath(u"C:\\..\\..\\QUARDELE\\a.txt"), file);
}

TEST_F(PathsTest, ADriveStandsForItsFolder) {
    EXPECT_EQ(NativePath(u"C:\\"), drive_.Path());
    EXPECT_EQ(NativePath(u"Z:\\"), fs::path("/"));
}

TEST_F(PathsTest, AMissingDriveIsAMissingPath) {
    EXPECT_EQ(ErrorOf([] { (void)NativePath(u"Q:\\x"); }), 76);
    EXPECT_EQ(ErrorOf([] { (void)NativePath(u"1:\\x"); }), 76);
}

TEST_F(PathsTest, RelativePathsStartAtTheCurrentFolder) {
    const fs::path file = drive_.Write("QUARDELE/VEH/a.txt");
    drive_.Write("QUARDELE/b.txt");
    ChDir(u"C:\\quardele\\veh");
    EXPECT_EQ(NativePath(u"A.TXT"), file);
    EXPECT_EQ(NativePath(u"..\\B.txt"), drive_.Path() / "QUARDELE/b.txt");
    EXPECT_EQ(NativePath(u"\\QUARDELE\\b.txt"), drive_.Path() / "QUARDELE/b.txt");
}

TEST_F(PathsTest, TheCurrentFolderIsAWindowsPath) {
    drive_.Write("QUARDELE/VEH/a.txt");
    ChDir(u"c:\\quardele\\VEH\\");
    EXPECT_EQ(CurDir(), u"C:\\QUARDELE\\VEH");
    ChDir(u"C:\\");
    EXPECT_EQ(CurDir(), u"C:\\");
    ChDir(u"Z:\\");
    EXPECT_EQ(CurDir(), u"Z:\\");
}

TEST_F(PathsTest, ChangingToWhatIsNoFolderFails) {
    drive_.Write("file");
    const Text before = CurDir();
    EXPECT_EQ(ErrorOf([] { ChDir(u"C:\\missing"); }), 76);
    EXPECT_EQ(ErrorOf([] { ChDir(u"C:\\file"); }), 76);
    EXPECT_EQ(CurDir(), before);
}

TEST_F(PathsTest, TheLongestDriveNamesAFile) {
    drive_.Write("QUARDELE/DATA/a.mdb");
    EXPECT_EQ(WindowsPath(drive_.Path() / "QUARDELE/DATA/a.mdb"), u"C:\\QUARDELE\\DATA\\a.mdb");
    DriveTable::Session().Set(u'X', drive_.Path() / "QUARDELE");
    EXPECT_EQ(WindowsPath(drive_.Path() / "QUARDELE/DATA/a.mdb"), u"X:\\DATA\\a.mdb");
    EXPECT_EQ(WindowsPath(drive_.Path() / "QUARDELES/a"), u"C:\\QUARDELES\\a");
    EXPECT_EQ(WindowsPath("/usr/share"), u"Z:\\usr\\share");
}

TEST_F(PathsTest, WithoutAMatchingDriveZNamesAFile) {
    DriveTable::Session().Set(u'Z', "/nowhere");
    EXPECT_EQ(WindowsPath("/usr/share"), u"Z:\\usr\\share");
}

TEST_F(PathsTest, ADriveMayBeALink) {
    drive_.Write("real/VEH/a");
    fs::create_directory_symlink(drive_.Path() / "real", drive_.Path() / "link");
    DriveTable::Session().Set(u'X', drive_.Path() / "link/");
    ChDir(u"X:\\VEH");
    EXPECT_EQ(CurDir(), u"X:\\VEH");
}

TEST_F(PathsTest, PathsComeBackFromTheirWindowsNames) {
    for (const fs::path& file : {drive_.Write("QUARDELE/été/Ÿ.mdb"), fs::path("/usr"), drive_.Path()}) {
        EXPECT_EQ(NativePath(WindowsPath(file)), file);
    }
}

TEST_F(PathsTest, DirGivesTheNameAsTheFolderHasIt) {
    drive_.Write("QUARDELE/DbPath.mdb");
    EXPECT_EQ(Dir(u"C:\\QUARDELE\\DBPATH.MDB"), u"DbPath.mdb");
    EXPECT_EQ(Dir(u"C:\\QUARDELE\\\\dbpath.mdb"), u"DbPath.mdb");
}

TEST_F(PathsTest, DirFindsNothingWhereNothingIs) {
    drive_.Write("QUARDELE/a.txt");
    EXPECT_EQ(Dir(u"C:\\QUARDELE\\b.txt"), u"");
    EXPECT_EQ(Dir(u"C:\\MISSING\\b.txt"), u"");
    EXPECT_EQ(Dir(u"Q:\\b.txt"), u"");
    EXPECT_EQ(Dir(u""), u"");
    EXPECT_EQ(Dir(u"C:\\QUARDELE"), u"");
}

TEST_F(PathsTest, DirLooksInTheCurrentFolder) {
    drive_.Write("QUARDELE/a.txt");
    ChDir(u"C:\\QUARDELE");
    EXPECT_EQ(Dir(u"A.TXT"), u"a.txt");
    EXPECT_EQ(Dir(u"*.txt"), u"a.txt");
}

TEST_F(PathsTest, DirAllGivesFilesOnly) {
    drive_.Write("M/RELVEH.DOT");
    drive_.Write("M/relveh2.dot");
    drive_.Write("M/RELVEH3.dotx");
    drive_.Write("M/.~lock.RELVEH.DOT#");
    drive_.Write("M/RELVEH4.dot/inside");
    EXPECT_THAT(DirAll(u"C:\\m\\RELVEH*.dot"), UnorderedElementsAre(u"RELVEH.DOT", u"relveh2.dot"));
    EXPECT_THAT(DirAll(u"C:\\m\\RELVEH*.dot*"),
                UnorderedElementsAre(u"RELVEH.DOT", u"relveh2.dot", u"RELVEH3.dotx"));
    EXPECT_THAT(DirAll(u"C:\\m\\*.doc"), IsEmpty());
    EXPECT_THAT(DirAll(u"C:\\m\\"),
                UnorderedElementsAre(u"RELVEH.DOT", u"relveh2.dot", u"RELVEH3.dotx", u".~lock.RELVEH.DOT#"));
}

TEST_F(PathsTest, DirAllKeepsTheOrderOfTheFolder) {
    for (int i = 0; i < 40; ++i) {
        drive_.Write("M/f" + std::to_string(i * 7919 % 40) + ".txt");
    }
    std::vector<Text> expected;
    for (const auto& entry : fs::directory_iterator(drive_.Path() / "M")) {
        expected.push_back(FromUtf8(entry.path().filename().string()));
    }
    EXPECT_EQ(DirAll(u"C:\\M\\*.txt"), expected);
    EXPECT_EQ(Dir(u"C:\\M\\*.txt"), expected.front());
}

TEST_F(PathsTest, NamesThatAreNoUtf8DoNotDisturb) {
    drive_.Write("M/caf\xE9.txt");
    drive_.Write("M/ok.txt");
    EXPECT_THAT(DirAll(u"C:\\M\\*.txt"), UnorderedElementsAre(u"caf\uFFFD.txt", u"ok.txt"));
    EXPECT_EQ(NativePath(u"C:\\M\\OK.TXT"), drive_.Path() / "M/ok.txt");
}

TEST_F(PathsTest, KillDeletesAFileInAnyCase) {
    const fs::path file = drive_.Write("Lettre.RVE");
    Kill(u"C:\\LETTRE.rve");
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(PathsTest, KillFindsNoFile) {
    drive_.Write("folder/a");
    EXPECT_EQ(ErrorOf([] { Kill(u"C:\\missing"); }), 53);
    EXPECT_EQ(ErrorOf([] { Kill(u"C:\\missing\\too"); }), 53);
    EXPECT_EQ(ErrorOf([] { Kill(u"C:\\folder"); }), 53);
    EXPECT_EQ(ErrorOf([] { Kill(u"Q:\\x"); }), 76);
    EXPECT_TRUE(fs::exists(drive_.Path() / "folder/a"));
}

TEST_F(PathsTest, KillLeavesAFileThatAWordProcessorHasOpen) {
    const fs::path file = drive_.Write("Lettre.RVE");
    const fs::path mark = drive_.Write(".~lock.Lettre.RVE#");
    EXPECT_EQ(ErrorOf([] { Kill(u"C:\\lettre.rve"); }), 70);
    EXPECT_TRUE(fs::exists(file));
    fs::remove(mark);
    Kill(u"C:\\lettre.rve");
    EXPECT_FALSE(fs::exists(file));
}

/// Ends the process with the number of the error that deleting gives to somebody without special rights.
[[noreturn]] void ExitWithErrorOfKill(TextView file) {
    constexpr uid_t kNobody = 65534;
    const bool plainUser = geteuid() != 0 || setuid(kNobody) == 0;
    _exit(plainUser ? ErrorOf([file] { Kill(file); }) : 1);
}

TEST_F(PathsTest, KillNeedsAFolderThatMayBeChanged) {
    const fs::path file = drive_.Write("locked/a.txt");
    ASSERT_EQ(chmod((drive_.Path() / "locked").c_str(), 0555), 0);
    EXPECT_EXIT(ExitWithErrorOfKill(u"C:\\locked\\a.txt"), testing::ExitedWithCode(75), "");
    EXPECT_TRUE(fs::exists(file));
    chmod((drive_.Path() / "locked").c_str(), 0755);
}

TEST_F(PathsTest, KillLeavesAFileOfSomebodyElseInASharedFolder) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can make a file of somebody else";
    }
    const fs::path file = drive_.Write("shared/a.txt");
    ASSERT_EQ(chmod((drive_.Path() / "shared").c_str(), 01777), 0);
    EXPECT_EXIT(ExitWithErrorOfKill(u"C:\\shared\\a.txt"), testing::ExitedWithCode(70), "");
    EXPECT_TRUE(fs::exists(file));
}

}  // namespace
}  // namespace quardele::basic
