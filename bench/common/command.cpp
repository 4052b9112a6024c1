#include "command.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <array>
#include <cerrno>

namespace quardele::bench {

namespace {

/// A pipe whose ends are closed when it goes.
class Pipe {
 public:
    Pipe() {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0) {
            ends_ = {-1, -1};
        }
    }
    ~Pipe() {
        CloseWriteEnd();
        close(ends_[0]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    [[nodiscard]] int WriteEnd() const { return ends_[1]; }
    void CloseWriteEnd() {
        if (ends_[1] >= 0) {
            close(ends_[1]);
            ends_[1] = -1;
        }
    }
    /// Reads until nobody holds the other end any more.
    void ReadAll(const std::function<void(std::string_view)>& take) const {
        std::array<char, 1 << 16> buffer{};
        ssize_t got = 0;
        do {
            got = read(ends_[0], buffer.data(), buffer.size());
            if (got > 0) {
                take({buffer.data(), static_cast<std::size_t>(got)});
            }
        } while (got > 0 || (got < 0 && errno == EINTR));
    }

 private:
    std::array<int, 2> ends_{};
};

std::optional<pid_t> Start(const Command& command, const Pipe& output) {
    std::vector<char*> arguments;
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output.WriteEnd(), STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int failure = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return failure == 0 ? std::optional(child) : std::nullopt;
}

bool WasContent(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// `take` gets the process and a piece of its output.
bool RunWith(const Command& command, const std::function<void(pid_t, std::string_view)>& take) {
    Pipe output;
    const std::optional<pid_t> child = Start(command, output);
    if (!child) {
        return false;
    }
    output.CloseWriteEnd();
    output.ReadAll([&](std::string_view piece) { take(*child, piece); });
    return WasContent(*child);
}

}  // namespace

bool Run(const Command& command, const std::function<void(std::string_view)>& take) {
    return RunWith(command, [&take](pid_t, std::string_view piece) {
        if (take) {
            take(piece);
        }
    });
}

std::optional<std::uint64_t> PeakMemoryOf(const Command& command) {
    std::optional<std::uint64_t> peak;
    const bool content = RunWith(command, [&peak](pid_t process, std::string_view) {
        if (const std::uint64_t now = PeakMemory(process); now != 0) {
            peak = now;
        }
    });
    return content ? peak : std::nullopt;
}

std::optional<Duration> TimeOfCommands(const std::vector<Command>& commands) {
    bool allContent = true;
    const Duration time = TimeOf([&] {
        for (const Command& command : commands) {
            allContent = allContent && Run(command);
        }
    });
    return allContent ? std::optional(time) : std::nullopt;
}

std::vector<Command> ExportTables(const std::filesystem::path& file, const std::vector<std::string>& tables) {
    std::vector<Command> commands;
    commands.reserve(tables.size());
    for (const std::string& table : tables) {
        commands.push_back(
            {"mdb-export", "-b", "hex", "-D", "%Y-%m-%d", "-T", "%Y-%m-%d %H:%M:%S", file.string(), table});
    }
    return commands;
}

}  // namespace quardele::bench
