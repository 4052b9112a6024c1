// What holds for somebody who may not do everything, whoever runs the tests. For systems with users like
// Unix's.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <exception>

namespace quardele::test {

/// Whether a check holds, and throws nothing, in a process of its own that has no more rights than anybody.
template <class Check>
[[nodiscard]] bool HoldsForAnOrdinaryUser(const Check& check) {
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t kNobody = 65534;
        bool held = geteuid() != 0 || (setgid(kNobody) == 0 && setuid(kNobody) == 0);
        try {
            held = held && check();
        } catch (const std::exception&) {
            held = false;
        }
        _exit(held ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace quardele::test
