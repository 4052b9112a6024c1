#include "child.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>

#include <gtest/gtest.h>

#include <basic/runtime_error.h>

namespace quardele::jet::test {

namespace {

using Pipe = std::array<int, 2>;

void ReadOne(int handle) {
    char letter = 0;
    static_cast<void>(::read(handle, &letter, 1) == 1);
}

void WriteOne(int handle) {
    static_cast<void>(::write(handle, "x", 1) == 1);
}

}  // namespace

pid_t StartChild(const std::function<void()>& action) {
    const pid_t child = ::fork();
    if (child == 0) {
        int code = 0;
        try {
            action();
        } catch (const basic::RuntimeError& error) {
            std::fprintf(stderr, "process %d: %s\n", static_cast<int>(::getpid()), error.what());
            code = 1;
        }
        ::_exit(code);
    }
    return child;
}

int EndOf(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int InChild(const std::function<void()>& action) {
    return EndOf(StartChild(action));
}

void Companion::Start(const std::function<void(const std::function<void()>& stay)>& run) {
    Pipe toChild{};
    Pipe fromChild{};
    ASSERT_EQ(::pipe(toChild.data()), 0);
    ASSERT_EQ(::pipe(fromChild.data()), 0);
    child_ = StartChild([&] {
        ::close(toChild[1]);
        run([&] {
            WriteOne(fromChild[1]);
            ReadOne(toChild[0]);
        });
    });
    ::close(toChild[0]);
    ::close(fromChild[1]);
    ReadOne(fromChild[0]);
    ::close(fromChild[0]);
    toChild_ = toChild[1];
}

Companion::~Companion() {
    if (child_ > 0) {
        Kill();
    }
}

void Companion::Finish() {
    ::close(toChild_);
    EXPECT_EQ(EndOf(child_), 0);
    child_ = -1;
}

void Companion::Kill() {
    ::kill(child_, SIGKILL);
    ::close(toChild_);
    static_cast<void>(EndOf(child_));
    child_ = -1;
}

}  // namespace quardele::jet::test
