// A file system that has no byte locks. The system of the test refuses them, with the error of such a file
// system, to a process that asked for that.

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>

#include "locks/lock_file.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

constexpr int kCannotRefuse = 2;

/// From here on each byte lock of this process fails with ENOLCK; false when the system cannot do that.
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

int ReadAndTryToWrite(const fs::path& file) {
    if (!RefuseLocks()) {
        return kCannotRefuse;
    }
    const auto database = Database::Open(file);
    const auto table = database->OpenTable(u"VEHICLES");
    const RowId row = RowAt(*table, 3);
    const bool refused =
        database->IsReadOnly() && table->Fetch(row).has_value() &&
        ErrorNumber([&] { table->Delete(row); }) == basic::error::kReadOnly &&
        ErrorNumber([&] { static_cast<void>(table->Lock(row)); }) == basic::error::kReadOnly &&
        ErrorNumber([&] { static_cast<void>(database->Begin()); }) == basic::error::kReadOnly;
    return refused && !fs::exists(LockFile::PathFor(file)) ? 0 : 1;
}

TEST(NoLocks, AFileWithoutThemIsReadAndNotWritten) {
    const TempFolder folder;
    const fs::path file = MakeWorkshop(folder.Path(), 20);
    const auto before = ReadBytes(file);
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(ReadAndTryToWrite(file));
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == kCannotRefuse) {
        GTEST_SKIP() << "this system cannot refuse locks to a process";
    }
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(ReadBytes(file), before);
}

}  // namespace
}  // namespace quardele::jet::test
