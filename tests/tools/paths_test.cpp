// Files whose paths are long, or have letters beyond ASCII in them.

#include "child_action.h"
#include "file/file_names.h"
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
    EXPECT_EQ(jet::NamesIn(folder).size(), 2U);
}

TEST(PathsTest, LettersBeyondAsciiArePartsOfNames) {
    const jet::test::TempFolder temporary;
    const fs::path folder = temporary.Path() / u"Véhicules de l’été";
    fs::create_directory(folder);
    ExpectAllCommandsWork(folder);
}

/// A folder with a long name, below a folder for temporary files. The library's own way to remove a folder
/// with all that is in it does not know such names everywhere.
class LongFolder {
 public:
    explicit LongFolder(const fs::path& base) : base_(base), path_(base) {
        while (path_.native().size() < 300) {
            path_ /= std::string(60, 'x');
            fs::create_directory(path_);
        }
    }
    ~LongFolder() {
        for (const fs::path& name : jet::NamesIn(path_)) {
            jet::TryRemoveFile(path_ / name);
        }
        std::error_code ignored;
        for (fs::path folder = path_; folder != base_; folder = folder.parent_path()) {
            fs::remove(folder, ignored);
        }
    }
    LongFolder(const LongFolder&) = delete;
    LongFolder& operator=(const LongFolder&) = delete;
    [[nodiscard]] const fs::path& Path() const { return path_; }

 private:
    fs::path base_;
    fs::path path_;
};

TEST(PathsTest, APathMayBeLongerThan260Characters) {
    const jet::test::TempFolder temporary;
    const LongFolder folder(temporary.Path());
    ExpectAllCommandsWork(folder.Path());
}

}  // namespace
}  // namespace quardele::mdb::test
