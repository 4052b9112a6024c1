#include "refused_calls.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <span>

namespace quardele::jet::test {

namespace {

constexpr std::uint16_t kLoad = BPF_LD | BPF_W | BPF_ABS;
constexpr std::uint16_t kIfEqual = BPF_JMP | BPF_JEQ | BPF_K;
constexpr std::uint16_t kIfGreater = BPF_JMP | BPF_JGT | BPF_K;
constexpr std::uint16_t kReturn = BPF_RET | BPF_K;
constexpr std::uint32_t kCall = offsetof(seccomp_data, nr);

/// Where the lower half of an argument of the call lies; the upper one lies behind it.
constexpr std::uint32_t ArgumentAt(std::size_t number) {
    return static_cast<std::uint32_t>(offsetof(seccomp_data, args) + number * sizeof(__u64));
}
constexpr std::uint32_t UpperHalf(std::uint32_t at) {
    return at + sizeof(__u32);
}

[[nodiscard]] bool Install(std::span<sock_filter> program) {
    const sock_fprog filter = {.len = static_cast<unsigned short>(program.size()), .filter = program.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

}  // namespace

bool RefuseLocks() {
    std::array<sock_filter, 6> program = {{
        {kLoad, 0, 0, kCall},
        {kIfEqual, 0, 3, __NR_fcntl},
        {kLoad, 0, 0, ArgumentAt(1)},
        {kIfEqual, 0, 1, F_OFD_SETLK},
        {kReturn, 0, 0, SECCOMP_RET_ERRNO | ENOLCK},
        {kReturn, 0, 0, SECCOMP_RET_ALLOW},
    }};
    return Install(program);
}

// pread(file, memory, size, offset) where offset <= byte < offset + size.
bool RefuseToRead(std::uint32_t byte) {
    constexpr std::uint32_t kSize = ArgumentAt(2);
    constexpr std::uint32_t kOffset = ArgumentAt(3);
    std::array<sock_filter, 12> program = {{
        {kLoad, 0, 0, kCall},
        {kIfEqual, 0, 9, __NR_pread64},
        {kLoad, 0, 0, UpperHalf(kOffset)},
        {kIfEqual, 0, 7, 0},
        {kLoad, 0, 0, kSize},
        {BPF_MISC | BPF_TAX, 0, 0, 0},
        {kLoad, 0, 0, kOffset},
        {kIfGreater, 3, 0, byte},
        {BPF_ALU | BPF_ADD | BPF_X, 0, 0, 0},
        {kIfGreater, 0, 1, byte},
        {kReturn, 0, 0, SECCOMP_RET_ERRNO | EIO},
        {kReturn, 0, 0, SECCOMP_RET_ALLOW},
    }};
    return Install(program);
}

}  // namespace quardele::jet::test
