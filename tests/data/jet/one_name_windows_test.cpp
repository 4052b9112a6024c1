// The ways that Windows knows to name one file: all must lead to one journal and one lock file.
#include <windows.h>

#include <array>

#include "file/one_name.h"
#include "support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

class OneNameTest : public testing::Test {
 protected:
    OneNameTest() : file_(folder_.Path() / "suivi des vehicules.mdb") { WriteBytes(file_, {}); }

    TempFolder folder_;
    fs::path file_;
};

TEST_F(OneNameTest, IsTheOrdinaryOne) {
    EXPECT_EQ(OneName(file_), file_);
    EXPECT_EQ(OneName(fs::path(L"\\\\?\\" + fs::path(file_).make_preferred().native())), file_);
}

TEST_F(OneNameTest, IsTheSameForAnotherCase) {
    EXPECT_EQ(OneName(folder_.Path() / "SUIVI DES Vehicules.MDB"), file_);
}

TEST_F(OneNameTest, IsTheLongOneForTheShortForm) {
    std::array<wchar_t, MAX_PATH> shortForm{};
    const DWORD length =
        ::GetShortPathNameW(fs::path(file_).make_preferred().c_str(), shortForm.data(), MAX_PATH);
    const fs::path shortName = fs::path(shortForm.data()).filename();
    if (length == 0 || shortName == file_.filename()) {
        GTEST_SKIP() << "this disk gives no short names";
    }
    EXPECT_EQ(OneName(folder_.Path() / shortName), file_);
}

TEST_F(OneNameTest, OfWhatIsNotThereIsWhatWasAskedFor) {
    EXPECT_EQ(OneName("rien.mdb"), fs::path("rien.mdb"));
}

}  // namespace
}  // namespace quardele::jet::test
