// How far a command is, on a terminal that the test reads.

#include "progress.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

#include "child_process.h"
#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

/// While it lives, the error stream of this process is a terminal of the test's.
class Terminal {
 public:
    Terminal() : own_(posix_openpt(O_RDWR | O_NOCTTY)), before_(dup(STDERR_FILENO)) {
        EXPECT_EQ(grantpt(own_), 0);
        EXPECT_EQ(unlockpt(own_), 0);
        other_ = open(ptsname(own_), O_RDWR | O_NOCTTY);
        dup2(other_, STDERR_FILENO);
    }
    ~Terminal() {
        dup2(before_, STDERR_FILENO);
        close(before_);
        close(other_);
        close(own_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// What was shown since the last call.
    [[nodiscard]] std::string Shown() const {
        std::string text(256, '\0');
        pollfd wait{.fd = own_, .events = POLLIN, .revents = 0};
        if (poll(&wait, 1, 0) <= 0) {
            return {};
        }
        const ssize_t count = read(own_, text.data(), text.size());
        text.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
        return text;
    }

 private:
    int own_;
    int other_ = -1;
    int before_;
};

class ProgressOfCommand : public MdbTest {};

TEST(ProgressTest, AfterHalfASecondTheTerminalShowsPercentsAndGetsItsLineBack) {
    using namespace std::chrono_literals;
    const Terminal terminal;
    {
        Progress progress(Progress::Beside::Nothing);
        progress.Show(1, 4);
        EXPECT_EQ(terminal.Shown(), "");
        std::this_thread::sleep_for(600ms);
        progress.Show(2, 4);
        EXPECT_EQ(terminal.Shown(), "\r\033[K50 %");
        std::this_thread::sleep_for(200ms);
        progress.Show(7, 0);
        EXPECT_EQ(terminal.Shown(), "\r\033[K7");
    }
    EXPECT_EQ(terminal.Shown(), "\r\033[K");
}

TEST(ProgressTest, WithoutATerminalNothingIsShown) {
    const Terminal terminal;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const int before = dup(STDERR_FILENO);
    dup2(ends[1], STDERR_FILENO);
    {
        Progress progress(Progress::Beside::Nothing);
        std::this_thread::sleep_for(std::chrono::milliseconds(600));
        progress.Show(2, 4);
    }
    dup2(before, STDERR_FILENO);
    close(before);
    close(ends[1]);
    char unit = 0;
    EXPECT_EQ(read(ends[0], &unit, 1), 0);
    close(ends[0]);
    EXPECT_EQ(terminal.Shown(), "");
}

// Rows come slowly, so that the command is not done before half a second is over.
TEST_F(ProgressOfCommand, AnImportCountsItsRowsOnTheTerminal) {
    using namespace std::chrono_literals;
    Exec("CREATE TABLE T (n LONG)");
    const std::string rows = PathOf("rows");
    ASSERT_EQ(mkfifo(rows.c_str(), 0600), 0);
    const Terminal terminal;
    quardele::test::Process import(QUARDELE_MDB, {"import", file_, "T", rows});
    std::string shown;
    {
        std::ofstream feed(rows, std::ios::binary);
        feed << "n\n";
        for (int batch = 0; batch < 200 && shown.empty(); ++batch) {
            for (int row = 0; row < 2000; ++row) {
                feed << row << '\n';
            }
            feed.flush();
            std::this_thread::sleep_for(50ms);
            shown = terminal.Shown();
        }
    }
    EXPECT_THAT(shown, testing::MatchesRegex("\r\033\\[K[0-9]+"));
    EXPECT_THAT(import.ReadOutput(), testing::EndsWith("00 rows\n"));
    EXPECT_EQ(import.Wait(), 0);
    EXPECT_THAT(terminal.Shown(), testing::EndsWith("\r\033[K"));
}

}  // namespace
}  // namespace quardele::mdb::test
