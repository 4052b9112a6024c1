#include <basic/shell.h>

#include <chrono>
#include <fstream>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include <basic/paths.h>

#include "support.h"

namespace quardele::basic {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

/// A current folder of its own, in which the small program writes what it sees.
class ShellTest : public testing::Test {
 protected:
    ShellTest() : before_(fs::current_path()) { fs::current_path(folder_.Path()); }
    ~ShellTest() override {
        // The program must be gone before its folder can go.
        std::ofstream("tool.go").put('\n');
        if (started_) {
            Await("tool.done");
        }
        fs::current_path(before_);
    }
    ShellTest(const ShellTest&) = delete;
    ShellTest& operator=(const ShellTest&) = delete;

    /// Puts the small program into the folder under a name of its own; gives its Windows path.
    [[nodiscard]] Text Place(const std::string& name) const {
        const fs::path file = folder_.Path() / name;
        fs::create_directories(file.parent_path());
        fs::copy_file(QUARDELE_SMALL_TOOL, file);
        return WindowsPath(file);
    }

    void Start(const Text& commandLine) {
        Shell(commandLine);
        started_ = true;
    }

    static bool Await(const char* file) {
        constexpr auto kPause = std::chrono::milliseconds(10);
        constexpr int kPauses = 2000;
        for (int pause = 0; pause < kPauses && !fs::exists(file); ++pause) {
            std::this_thread::sleep_for(kPause);
        }
        return fs::exists(file);
    }

    /// The arguments that the program got.
    static std::vector<std::string> Seen() {
        EXPECT_TRUE(Await("tool.seen"));
        std::vector<std::string> lines;
        std::ifstream file("tool.seen");
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    TemporaryFolder folder_;

 private:
    fs::path before_;
    bool started_ = false;
};

TEST_F(ShellTest, TheProgramGetsWhatStandsBehindIt) {
    Start(Place("Tool.exe") + u" C:\\STOCK\\,MODULE,AB-123-CD");
    EXPECT_THAT(Seen(), ElementsAre("C:\\STOCK\\,MODULE,AB-123-CD"));
}

TEST_F(ShellTest, BlanksSeparateArgumentsAndQuotesKeepThemTogether) {
    Start(Place("Tool.exe") + u" ,MODULE,2107 RC 59  \"a b\" \"\"");
    EXPECT_THAT(Seen(), ElementsAre(",MODULE,2107", "RC", "59", "a b", ""));
}

TEST_F(ShellTest, AProgramNeedsNoArguments) {
    Start(Place("Tool.exe"));
    EXPECT_THAT(Seen(), IsEmpty());
}

TEST_F(ShellTest, NobodyWaitsForTheProgram) {
    Start(Place("Tool.exe") + u" x");
    EXPECT_TRUE(Await("tool.seen"));
    EXPECT_FALSE(fs::exists("tool.done"));
    std::ofstream("tool.go").put('\n');
    EXPECT_TRUE(Await("tool.done"));
}

TEST_F(ShellTest, BlanksInThePathDoNoHarm) {
    Start(Place("Mes programmes/QUARDELE/Tool.exe") + u" x");
    EXPECT_EQ(Seen().back(), "x");
}

TEST_F(ShellTest, AQuotedPathIsTheProgram) {
    Start(u"\"" + Place("Mes programmes/Tool.exe") + u"\" x y");
    EXPECT_THAT(Seen(), ElementsAre("x", "y"));
}

TEST_F(ShellTest, AMissingProgramIsAnError) {
    const Text missing = WindowsPath(folder_.Path() / "Absent.exe");
    EXPECT_EQ(ErrorOf([&] { Shell(missing); }), error::kFileNotFound);
    EXPECT_EQ(ErrorOf([&] { Shell(missing + u" x y"); }), error::kFileNotFound);
    EXPECT_EQ(ErrorOf([&] { Shell(u"\"" + missing + u"\" x"); }), error::kFileNotFound);
}

TEST_F(ShellTest, AFileThatIsNoProgramIsAnError) {
    const fs::path file = folder_.Write("Text.exe", "Bonjour");
    EXPECT_EQ(ErrorOf([&] { Shell(WindowsPath(file) + u" x"); }), error::kInvalidCall);
}

}  // namespace
}  // namespace quardele::basic
