#include "office_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <thread>

#include <basic/runtime_error.h>

#include "uno_support.h"

namespace quardele::word::writer {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kStartMeAgain = 81;
constexpr int kMostStarts = 4;
/// How long a running office may take to open the pipe; one that was about to end never does.
constexpr auto kHandOver = std::chrono::seconds(3);

/// How long the end of a former office is waited for.
constexpr auto kEnding = std::chrono::seconds(10);
constexpr auto kPollInterval = std::chrono::milliseconds(15);

/// An office that ends; -1 for none.
pid_t& Ending() {
    static pid_t pid = -1;
    return pid;
}

void AwaitEnding() {
    const auto end = Clock::now() + kEnding;
    while (Ending() > 0 && waitpid(Ending(), nullptr, WNOHANG) == 0 && Clock::now() < end) {
        std::this_thread::sleep_for(kPollInterval);
    }
    Ending() = -1;
}

[[noreturn]] void ThrowNotStarted(const std::string& reason) {
    throw basic::RuntimeError(basic::error::kCannotCreateObject,
                              basic::DescriptionOf(basic::error::kCannotCreateObject) +
                                  u" : LibreOffice ne démarre pas (" + basic::FromUtf8(reason) + u")");
}

/// The actions and attributes of a start, freed at the end of the scope.
struct SpawnSettings {
    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};

    SpawnSettings() {
        posix_spawn_file_actions_init(&actions);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            posix_spawn_file_actions_addopen(&actions, standard, "/dev/null", O_RDWR, 0);
        }
        posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
};

}  // namespace

OfficeProcess::OfficeProcess(const std::filesystem::path& installation, const std::filesystem::path& profile,
                             const std::string& pipe, bool showsWindows)
    : command_{installation / "program" / "soffice.bin",
               "--norestore",
               "--nologo",
               "--nodefault",
               "--nolockcheck",
               "--nofirststartwizard",
               "-env:UserInstallation=" + basic::ToUtf8(ToText(FileUrl(profile))),
               "--accept=pipe,name=" + pipe + ";urp;StarOffice.ComponentContext"} {
    if (!showsWindows) {
        command_.emplace_back("--headless");
    }
    AwaitEnding();
    Start();
}

void OfficeProcess::Start() {
    std::vector<char*> arguments;
    std::transform(command_.begin(), command_.end(), std::back_inserter(arguments),
                   [](std::string& argument) { return argument.data(); });
    arguments.push_back(nullptr);
    const SpawnSettings settings;
    const int failure =
        posix_spawn(&pid_, arguments[0], &settings.actions, &settings.attributes, arguments.data(), environ);
    if (failure != 0) {
        pid_ = -1;
        ThrowNotStarted(std::generic_category().message(failure));
    }
    ++starts_;
}

void OfficeProcess::Restart() {
    if (starts_ >= kMostStarts) {
        ThrowNotStarted("il s'arrête aussitôt");
    }
    Start();
}

void OfficeProcess::Watch() {
    if (pid_ < 0) {
        if (Clock::now() - handedOver_ > kHandOver) {
            Restart();
        }
        return;
    }
    int status = 0;
    if (waitpid(pid_, &status, WNOHANG) != pid_) {
        return;
    }
    pid_ = -1;
    if (!WIFEXITED(status)) {
        ThrowNotStarted("signal " + std::to_string(WTERMSIG(status)));
    }
    switch (WEXITSTATUS(status)) {
        case kStartMeAgain:
            Restart();
            break;
        case 0:
            handedOver_ = Clock::now();
            break;
        default:
            ThrowNotStarted("code " + std::to_string(WEXITSTATUS(status)));
    }
}

void OfficeProcess::Kill() {
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
        pid_ = -1;
    }
}

void OfficeProcess::NoteEnding() {
    Ending() = pid_;
}

}  // namespace quardele::word::writer
