#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "child_process.h"

extern char** environ;  // NOLINT(readability-redundant-declaration)

namespace quardele::test {

namespace {

struct Pipe {
    std::array<int, 2> ends{};
    Pipe() {
        // Only the ends that the program gets as its standard streams may live on in it.
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
    }
};

void CloseHandle(std::intptr_t& handle) {
    if (handle >= 0) {
        ::close(static_cast<int>(handle));
        handle = -1;
    }
}

}  // namespace

Process::Process(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                 const std::filesystem::path& errors) {
    const Pipe in;
    const Pipe out;
    std::vector<std::string> words = {program.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t streams{};
    ::posix_spawn_file_actions_init(&streams);
    ::posix_spawn_file_actions_adddup2(&streams, in.ends[0], STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&streams, out.ends[1], STDOUT_FILENO);
    if (!errors.empty()) {
        ::posix_spawn_file_actions_addopen(&streams, STDERR_FILENO, errors.c_str(),
                                           O_WRONLY | O_CREAT | O_TRUNC, 0600);
    }
    pid_t process = -1;
    const int failure =
        ::posix_spawnp(&process, program.c_str(), &streams, nullptr, pointers.data(), environ);
    ::posix_spawn_file_actions_destroy(&streams);
    ::close(in.ends[0]);
    ::close(out.ends[1]);
    input_ = in.ends[1];
    output_ = out.ends[0];
    if (failure != 0) {
        CloseHandle(input_);
        CloseHandle(output_);
        throw std::runtime_error("cannot start " + program.string());
    }
    process_ = process;
}

Process::Process(Process&& other) noexcept
    : process_(std::exchange(other.process_, kNone)),
      input_(std::exchange(other.input_, kNone)),
      output_(std::exchange(other.output_, kNone)) {}

Process::~Process() {
    if (process_ != kNone) {
        Kill();
    }
}

bool Process::WaitForSign() {
    char sign = 0;
    return ::read(static_cast<int>(output_), &sign, 1) == 1;
}

std::string Process::ReadOutput() {
    std::string text;
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = ::read(static_cast<int>(output_), buffer.data(), buffer.size())) > 0;) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text;
}

void Process::Write(const std::string& input) {
    // A program that ends before it has read all is none of our failure.
    std::signal(SIGPIPE, SIG_IGN);
    for (std::size_t done = 0; done < input.size();) {
        const ssize_t count = ::write(static_cast<int>(input_), input.data() + done, input.size() - done);
        if (count <= 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    CloseInput();
}

void Process::CloseInput() {
    CloseHandle(input_);
}

int Process::Join() {
    CloseHandle(input_);
    int status = 0;
    ::waitpid(static_cast<pid_t>(process_), &status, 0);
    process_ = kNone;
    CloseHandle(output_);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int Process::Wait() {
    return Join();
}

void Process::Kill() {
    ::kill(static_cast<pid_t>(process_), SIGKILL);
    static_cast<void>(Join());
}

void SetEnvironment(const std::string& name, const std::string& value) {
    ::setenv(name.c_str(), value.c_str(), 1);
}

std::filesystem::path ThisProgram() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

}  // namespace quardele::test
