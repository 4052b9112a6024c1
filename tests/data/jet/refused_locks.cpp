#include "refused_locks.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>

namespace quardele::jet::test {

bool RefuseLocks() {
    constexpr std::uint16_t kLoad = BPF_LD | BPF_W | BPF_ABS;
    constexpr std::uint16_t kIfEqual = BPF_JMP | BPF_JEQ | BPF_K;
    constexpr std::uint16_t kReturn = BPF_RET | BPF_K;
    std::array<sock_filter, 6> program = {{
        {kLoad, 0, 0, offsetof(seccomp_data, nr)},
        {kIfEqual, 0, 3, __NR_fcntl},
        {kLoad, 0, 0, offsetof(seccomp_data, args) + sizeof(__u64)},
        {kIfEqual, 0, 1, F_OFD_SETLK},
        {kReturn, 0, 0, SECCOMP_RET_ERRNO | ENOLCK},
        {kReturn, 0, 0, SECCOMP_RET_ALLOW},
    }};
    const sock_fprog filter = {.len = program.size(), .filter = program.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

}  // namespace quardele::jet::test
