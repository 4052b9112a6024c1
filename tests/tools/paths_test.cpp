// Files whose paths are long, or have letters beyond ASCII in them.

#include "child_action.h"
#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

namespace fs = std::filesystem;

/// Makes a file in a folder and lets each command that writes beside it do so.
void ExpectAllCommandsWork(const fs::path& folder) {
    const std::string file = quardele::test::Argument(folder / u"données.mdb");
    const std::string copy = quardele::test::Argument(folder / u"copie.mdb");
    const auto expectDone = [](const Outcome& outcome, const std::string& out) {
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        EXPECT_EQ(outcome.out, out);
    };
    expectDone(Mdb({"create", file}), "");
    expectDone(Mdb({"exec", file, "CREATE TABLE T (t TEXT(20)); INSERT INTO T (t) VALUES ('été')"}),
               "1 row\n");
    expectDone(Mdb({"import", file, "T", "-"}, "t\nhiver\n"), "1 row\n");
    expectDone(Mdb({"dump", file, "T"}), "t\nété\nhiver\n");
    expectDone(Mdb({"check", file}), "");
    expectDone(Mdb({"compact", file, copy}), "");
    expectDone(Mdb({"dump", copy, "T"}), "t\nété\nhiver\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 2);
}

TEST(PathsTest, LettersBeyondAsciiArePartsOfNames) {
    const jet::test::TempFolder temporary;
    const fs::path folder = temporary.Path() / u"Véhicules de l’été";
    fs::create_directory(folder);
    ExpectAllCommandsWork(folder);
}

TEST(PathsTest, APathMayBeLongerThan260Characters) {
    const jet::test::TempFolder temporary;
    fs::path folder = temporary.Path();
    while (folder.native().size() < 300) {
        folder /= std::string(60, 'x');
        fs::create_directory(folder);
    }
    ExpectAllCommandsWork(folder);
}

}  // namespace
}  // namespace quardele::mdb::test
