// Starting programs on machines whose programs get their arguments one by one.
#include <basic/shell.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <basic/paths.h>
#include <basic/runtime_error.h>

namespace quardele::basic {
namespace {

namespace fs = std::filesystem;

constexpr char16_t kQuote = u'"';

std::optional<fs::path> FileNamed(TextView windowsPath) {
    fs::path path = NativePath(windowsPath);
    std::error_code ignored;
    return fs::is_regular_file(path, ignored) ? std::optional(std::move(path)) : std::nullopt;
}

/// Takes the program's path from the start of the command line.
fs::path TakeProgram(TextView& line) {
    const bool quoted = line.starts_with(kQuote);
    if (quoted) {
        line.remove_prefix(1);
    }
    const char16_t end = quoted ? kQuote : u' ';
    for (std::size_t length = line.find(end); !line.empty(); length = line.find(end, length + 1)) {
        const TextView name = line.substr(0, length);
        if (const auto file = FileNamed(name)) {
            line.remove_prefix(std::min(name.size() + 1, line.size()));
            return *file;
        }
        if (quoted || length == TextView::npos) {
            break;
        }
    }
    throw RuntimeError(error::kFileNotFound);
}

std::vector<std::string> ArgumentsOf(TextView line) {
    std::vector<std::string> arguments;
    Text argument;
    bool inQuotes = false;
    bool started = false;
    const auto finish = [&] {
        if (started) {
            arguments.push_back(ToUtf8(argument));
        }
        argument.clear();
        started = false;
    };
    for (const char16_t unit : line) {
        if (unit == kQuote) {
            inQuotes = !inQuotes;
            started = true;
        } else if (unit == u' ' && !inQuotes) {
            finish();
        } else {
            argument.push_back(unit);
            started = true;
        }
    }
    finish();
    return arguments;
}

/// Both ends of a pipe that started programs do not get.
class Pipe {
 public:
    Pipe() {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0) {
            throw RuntimeError(error::kInvalidCall);
        }
    }
    ~Pipe() {
        close(ends_[0]);
        CloseWriting();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    [[nodiscard]] int Writing() const { return ends_[1]; }
    void CloseWriting() {
        if (ends_[1] >= 0) {
            close(ends_[1]);
            ends_[1] = -1;
        }
    }
    /// The number that the other side has written; 0 when it closed the pipe without one.
    [[nodiscard]] int Read() const {
        int number = 0;
        while (read(ends_[0], &number, sizeof number) < 0 && errno == EINTR) {
        }
        return number;
    }

 private:
    std::array<int, 2> ends_{-1, -1};
};

/// Becomes the program, in a process of its own that nobody has to wait for: its parent ends at once. Tells
/// the reason through the pipe when that fails. Between fork and exec only what a signal handler may do.
[[noreturn]] void BecomeProgram(char* const* arguments, int report) {
    const pid_t grandchild = fork();
    if (grandchild > 0) {
        _exit(0);
    }
    if (grandchild == 0) {
        setsid();
        // What is ignored here, for the sake of pipes, would stay ignored there.
        std::signal(SIGPIPE, SIG_DFL);
        execv(arguments[0], arguments);
    }
    const int reason = errno;
    const ssize_t ignored = write(report, &reason, sizeof reason);
    static_cast<void>(ignored);
    _exit(1);
}

/// 0, or the system's reason for a failure.
int Start(std::vector<std::string>& command) {
    std::vector<char*> arguments;
    std::transform(command.begin(), command.end(), std::back_inserter(arguments),
                   [](std::string& argument) { return argument.data(); });
    arguments.push_back(nullptr);
    Pipe report;
    const pid_t child = fork();
    if (child == 0) {
        BecomeProgram(arguments.data(), report.Writing());
    }
    if (child < 0) {
        return errno;
    }
    report.CloseWriting();
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return report.Read();
}

}  // namespace

void Shell(TextView commandLine) {
    TextView rest = commandLine;
    std::vector<std::string> command = {TakeProgram(rest).string()};
    std::vector<std::string> arguments = ArgumentsOf(rest);
    std::move(arguments.begin(), arguments.end(), std::back_inserter(command));
    if (Start(command) != 0) {
        throw RuntimeError(error::kInvalidCall);
    }
}

}  // namespace quardele::basic
