// Paths on a system that has drives itself.
#include <windows.h>

#include <basic/paths.h>
#include <basic/runtime_error.h>
#include <basic/system_path.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support.h"

namespace quardele::basic {
namespace {

namespace fs = std::filesystem;
using testing::UnorderedElementsAre;

class WindowsPathsTest : public testing::Test {
 protected:
    WindowsPathsTest() : currentBefore_(fs::current_path()) {}
    ~WindowsPathsTest() override { fs::current_path(currentBefore_); }

    /// The Windows path of something in the test's folder.
    [[nodiscard]] Text At(const char* name) const { return WindowsPath(folder_.Path() / name); }
    template <class Action>
    static int ErrorOf(const Action& action) {
        try {
            action();
        } catch (const RuntimeError& raised) {
            return raised.Number();
        }
        return 0;
    }

    TemporaryFolder folder_;
    fs::path currentBefore_;
};

TEST_F(WindowsPathsTest, PathsStandAsTheyAre) {
    EXPECT_EQ(NativePath(u"C:\\QUARDELE\\\\VEH"), fs::path(L"C:\\QUARDELE\\VEH"));
    EXPECT_EQ(WindowsPath(L"C:/QUARDELE/VEH"), u"C:\\QUARDELE\\VEH");
}

TEST_F(WindowsPathsTest, ARelativePathStartsAtTheCurrentFolder) {
    folder_.Write("VEH/a.txt", "");
    ChDir(At("VEH"));
    EXPECT_EQ(CurDir(), At("VEH"));
    EXPECT_TRUE(fs::equivalent(NativePath(u"a.txt"), folder_.Path() / "VEH" / "a.txt"));
    EXPECT_EQ(ErrorOf([&] { ChDir(At("RIEN")); }), error::kPathNotFound);
}

TEST_F(WindowsPathsTest, FilesAreFoundByWildcards) {
    folder_.Write("LETTRE1.DOC", "");
    folder_.Write("lettre2.doc", "");
    folder_.Write("liste.xls", "");
    EXPECT_THAT(DirAll(At("*.doc")), UnorderedElementsAre(Text(u"LETTRE1.DOC"), Text(u"lettre2.doc")));
    EXPECT_EQ(Dir(At("LISTE.XLS")), u"liste.xls");
}

TEST_F(WindowsPathsTest, AFileIsDeletedUnlessItIsMissingProtectedOrOpenElsewhere) {
    const fs::path file = folder_.Write("a.txt", "");
    const Text path = WindowsPath(file);
    EXPECT_EQ(ErrorOf([&] { Kill(At("b.txt")); }), error::kFileNotFound);
    fs::permissions(file, fs::perms::owner_write, fs::perm_options::remove);
    EXPECT_EQ(ErrorOf([&] { Kill(path); }), error::kPathFileAccess);
    fs::permissions(file, fs::perms::owner_write, fs::perm_options::add);
    const HANDLE other =
        ::CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(ErrorOf([&] { Kill(path); }), error::kPermissionDenied);
    ::CloseHandle(other);
    Kill(path);
    EXPECT_FALSE(fs::exists(file));
}

TEST(SystemPathTest, LongNamesGetThePrefixThatTheSystemWants) {
    const std::wstring longName(300, L'x');
    EXPECT_EQ(SystemPath(L"C:\\data\\a.mdb"), fs::path(L"C:\\data\\a.mdb"));
    EXPECT_EQ(SystemPath(L"a.mdb"), fs::path(L"a.mdb"));
    EXPECT_EQ(SystemPath(L"C:/data/b/../" + longName).native(), L"\\\\?\\C:\\data\\" + longName);
    EXPECT_EQ(SystemPath(L"\\\\server\\share\\" + longName).native(),
              L"\\\\?\\UNC\\server\\share\\" + longName);
    const std::wstring ready = L"\\\\?\\C:\\" + longName;
    EXPECT_EQ(SystemPath(ready).native(), ready);
}

TEST(SystemPathTest, ARelativeNameIsAsLongAsItIsFromTheRoot) {
    const std::wstring longName(300, L'x');
    EXPECT_EQ(SystemPath(longName).native(),
              L"\\\\?\\" + (fs::current_path() / longName).make_preferred().native());
}

}  // namespace
}  // namespace quardele::basic
