// Letters in real windows, on a display of the test's own.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <future>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <automation/object.h>

#include "office_session.h"

namespace quardele::tests {

namespace {

using automation::ObjectPtr;
using automation::Value;
using basic::RuntimeError;
using Clock = std::chrono::steady_clock;

/// What a command prints until it and all that inherited its output have ended.
std::string OutputOf(const std::string& command) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> buffer{};
    while (pipe != nullptr && std::fgets(buffer.data(), buffer.size(), pipe) != nullptr) {
        output += buffer.data();
    }
    pclose(pipe);
    return output;
}

bool IsInstalled(const std::string& program) {
    return !OutputOf("command -v " + program).empty();
}

std::string Quoted(const basic::Text& text) {
    return '\'' + basic::ToUtf8(text) + '\'';
}

template <class Condition>
bool ComesTrue(const Condition& condition) {
    const auto end = Clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (Clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return true;
}

/// What `look` finds while the program calls Word again and again, and so leaves no pause for windows to be
/// shown in, however long the look takes.
template <class Look>
auto WithoutAPause(automation::Object& word, const Look& look) {
    auto outcome = std::async(std::launch::async, look);
    while (outcome.wait_for(std::chrono::milliseconds(5)) != std::future_status::ready) {
        (void)word.Get(u"Visible");
    }
    return outcome.get();
}

/// A display without a monitor; DISPLAY points at it while it lives.
class Display {
 public:
    Display() {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0) {
            return;
        }
        const std::string descriptor = std::to_string(ends[1]);
        // Without -noreset the display starts over when its last window closes, and drops who comes then.
        std::array<const char*, 8> arguments = {"Xvfb", "-displayfd",   descriptor.c_str(), "-screen",
                                                "0",    "1280x1024x24", "-noreset",         nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawnp(&pid_, "Xvfb", &actions, nullptr, const_cast<char**>(arguments.data()), environ);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        std::array<char, 16> number{};
        const auto length = read(ends[0], number.data(), number.size() - 1);
        close(ends[0]);
        std::string name(number.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
        setenv("DISPLAY", (':' + name.substr(0, name.find('\n'))).c_str(), 1);
    }
    ~Display() {
        if (pid_ > 0) {
            kill(pid_, SIGTERM);
            waitpid(pid_, nullptr, 0);
        }
        unsetenv("DISPLAY");
    }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    /// Titles of the visible windows that a letter stands in.
    static std::vector<std::string> LetterWindows() {
        std::istringstream lines(
            OutputOf("xdotool search --onlyvisible --name 'RVE' getwindowname %@ 2>/dev/null"));
        std::vector<std::string> titles;
        for (std::string title; std::getline(lines, title);) {
            titles.push_back(title);
        }
        std::sort(titles.begin(), titles.end());
        return titles;
    }
    /// Presses a key in the letter's window.
    static void Press(const std::string& key) {
        OutputOf(
            "window=$(xdotool search --onlyvisible --name RVE | head -1); xdotool windowfocus --sync $window "
            "key " +
            key + " 2>&1");
    }

 private:
    pid_t pid_ = -1;
};

class LetterWindows : public testing::Test {
 protected:
    void SetUp() override {
        if (!OfficeSession::IsAvailable() || !IsInstalled("Xvfb") || !IsInstalled("xdotool")) {
            GTEST_SKIP() << "LibreOffice, the bridge to it, Xvfb or xdotool is missing";
        }
        if (OutputOf("ls $(dirname $(readlink -f $(command -v soffice)))/libvclplug_* 2>/dev/null").empty()) {
            GTEST_SKIP() << "this LibreOffice shows no windows";
        }
        display_.emplace();
    }

    /// Runs the letter writer, and waits until nobody holds its output any more. The letters go to a new
    /// folder.
    [[nodiscard]] std::vector<int> WriteLetters(const std::string& folder, int letters, int visits) const {
        std::filesystem::create_directory(session_.File(folder));
        std::istringstream lines(OutputOf(std::string(LETTER_WRITER) + ' ' + Quoted(DemoTemplate("RELVEH")) +
                                          ' ' + Quoted(session_.WindowsFile(folder)) + ' ' +
                                          std::to_string(letters) + ' ' + std::to_string(visits)));
        std::vector<int> milliseconds;
        for (int time = 0; lines >> time;) {
            milliseconds.push_back(time);
        }
        return milliseconds;
    }

    /// The time that the office has kept a processor busy, in milliseconds.
    [[nodiscard]] long OfficeWork() const {
        std::ifstream in("/proc/" + std::to_string(session_.Processes().at(0)) + "/stat");
        std::string field;
        long ticks = 0;
        for (int number = 1; number <= 15 && in >> field; ++number) {
            ticks += number >= 14 ? std::stol(field) : 0;
        }
        return ticks * 1000 / sysconf(_SC_CLK_TCK);
    }

    /// A saved letter in a visible application of this process.
    [[nodiscard]] ObjectPtr SavedLetter(const std::string& file) const {
        ObjectPtr word = automation::SessionFactory().CreateObject(u"Word.Application");
        word->Set(u"Visible", true);
        word->Child(u"Documents")->CallNamed(u"Add", {{u"Template", DemoTemplate("RELVEH.dot")}});
        word->Child(u"ActiveDocument")->CallNamed(u"SaveAs", {{u"FileName", session_.WindowsFile(file)}});
        return word;
    }

    OfficeSession session_{OfficeSession::Windows::Shown};
    std::optional<Display> display_;
};

TEST_F(LetterWindows, StayOpenWhenTheProgramEnds) {
    EXPECT_EQ(WriteLetters("letters", 3, 2).size(), 3U);
    EXPECT_EQ(session_.Processes().size(), 1U);
    EXPECT_TRUE(ComesTrue([] { return Display::LetterWindows().size() == 3; }));
    EXPECT_THAT(Display::LetterWindows(),
                testing::ElementsAre(testing::StartsWith("L1.RVE"), testing::StartsWith("L2.RVE"),
                                     testing::StartsWith("L3.RVE")));
}

// The program and the office take turns, so that the office's work is nearly all of what a letter costs;
// unlike the clock it says the same on a machine that has other things to do.
TEST_F(LetterWindows, OfFiveVisitsCostTheOfficeNoMoreThanASecond) {
    constexpr int kLetters = 10;
    constexpr long kMostMilliseconds = 1000;
    ASSERT_EQ(WriteLetters("start", 1, 5).size(), 1U);
    const long before = OfficeWork();
    ASSERT_EQ(WriteLetters("letters", kLetters, 5).size(), std::size_t{kLetters});
    EXPECT_LT((OfficeWork() - before) / kLetters, kMostMilliseconds);
}

TEST_F(LetterWindows, AppearWhenTheProgramPauses) {
    const ObjectPtr word = SavedLetter("PAUSE.RVE");
    EXPECT_THAT(WithoutAPause(*word, &Display::LetterWindows), testing::IsEmpty());
    EXPECT_TRUE(ComesTrue([] { return Display::LetterWindows().size() == 1; }));
}

TEST_F(LetterWindows, AppearWhenTheNextLetterBegins) {
    const ObjectPtr first = SavedLetter("PREMIER.RVE");
    const ObjectPtr second = automation::SessionFactory().CreateObject(u"Word.Application");
    EXPECT_TRUE(WithoutAPause(*second,
                              [] { return ComesTrue([] { return Display::LetterWindows().size() == 1; }); }));
}

TEST_F(LetterWindows, DisappearAndComeBackWithTheApplication) {
    const ObjectPtr word = SavedLetter("CACHE.RVE");
    ASSERT_TRUE(ComesTrue([] { return Display::LetterWindows().size() == 1; }));
    word->Set(u"Visible", false);
    EXPECT_TRUE(ComesTrue([] { return Display::LetterWindows().empty(); }));
    word->Set(u"Visible", true);
    EXPECT_TRUE(ComesTrue([] { return Display::LetterWindows().size() == 1; }));
}

TEST_F(LetterWindows, DoNotAppearWhenTheApplicationIsHiddenBeforeTheProgramPauses) {
    const ObjectPtr word = SavedLetter("JAMAIS.RVE");
    word->Set(u"Visible", false);
    std::this_thread::sleep_for(std::chrono::seconds(1));
    EXPECT_THAT(Display::LetterWindows(), testing::IsEmpty());
}

TEST_F(LetterWindows, ThatTheOperatorClosedAreNoDocumentAnyMore) {
    const ObjectPtr word = SavedLetter("FERME.RVE");
    const ObjectPtr document = word->Child(u"ActiveDocument");
    ASSERT_TRUE(ComesTrue([] { return Display::LetterWindows().size() == 1; }));
    Display::Press("ctrl+w");
    ASSERT_TRUE(ComesTrue([] { return Display::LetterWindows().empty(); }));
    EXPECT_THROW(document->Call(u"Save"), RuntimeError);
    EXPECT_THROW((void)word->Child(u"Selection")->Call(u"TypeText", {u"x"}), RuntimeError);
    EXPECT_EQ(word->Child(u"Documents")->Get(u"Count"), Value(0));
}

}  // namespace

}  // namespace quardele::tests
