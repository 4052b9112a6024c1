// Writes that the system itself refuses in the middle of a change: a file system of its own without a free
// block, and a file that may not become larger, whose last write is a short one.

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>
#include <csignal>
#include <fstream>

#include <jet/check.h>

#include <basic/runtime_error.h>

#include "child_action.h"
#include "commit/journal.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;

constexpr int kVehicles = 200;
constexpr std::uintmax_t kBlock = 4096;
/// What a process ends with that was not allowed to make a file system.
constexpr int kNotAllowed = 77;

void Demand(bool condition, const std::string& what) {
    if (!condition) {
        throw basic::RuntimeError(basic::error::kInvalidOperation, basic::FromUtf8(what));
    }
}

void WriteText(const char* path, const std::string& text) {
    std::ofstream(path) << text;
}

/// Gives this process file systems of its own; without the rights of an administrator as one in a world of
/// its own, where the system allows that.
bool TakeOwnFileSystems() {
    const std::string user = "0 " + std::to_string(::getuid()) + " 1";
    const std::string group = "0 " + std::to_string(::getgid()) + " 1";
    if (::unshare(CLONE_NEWNS) == 0) {
        return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    }
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
        return false;
    }
    WriteText("/proc/self/setgroups", "deny");
    WriteText("/proc/self/uid_map", user);
    WriteText("/proc/self/gid_map", group);
    return true;
}

bool MountSmallDisk(const fs::path& folder, std::uintmax_t size) {
    const std::string options = "size=" + std::to_string(size);
    return ::mount("none", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

/// Leaves so many blocks of a disk free.
void FillBut(const fs::path& filler, std::uintmax_t blocks) {
    const std::uintmax_t free = fs::space(filler.parent_path()).available / kBlock;
    std::ofstream stream(filler, std::ios::binary | std::ios::app);
    const std::vector<char> block(kBlock, 'x');
    for (std::uintmax_t i = blocks; i < free; ++i) {
        stream.write(block.data(), static_cast<std::streamsize>(kBlock));
    }
}

/// A change of a file meets a limit: it is refused with the error of a full disk and nothing has happened, or
/// it is made. Gives whether it was refused.
template <class Limit, class EndLimit>
bool MeetsLimit(const fs::path& file, const Change& change, const std::string& before,
                const std::string& after, const Limit& limit, const EndLimit& endLimit) {
    const auto database = Database::Open(file);
    limit();
    const int error = ErrorNumber([&] { change.apply(*database); });
    endLimit();
    Demand(error == 0 || error == basic::error::kDiskFullDatabase, "error " + std::to_string(error));
    Demand(ContentsOf(file) == (error == 0 ? after : before),
           "contents after error " + std::to_string(error));
    Demand(CheckFile(file).empty(), "check");
    Demand(!HasJournal(file), "journal");
    if (error != 0) {
        change.apply(*database);
        Demand(ContentsOf(file) == after, "contents after a second try");
        Demand(CheckFile(file).empty(), "check after a second try");
    }
    return error != 0;
}

/// Makes each change of the workload on a disk with no block free, with one, and so on until it can be made:
/// folder of the files, empty folder. Prints how often a change was refused.
const ChildAction kFullDisk("full disk", [](const ChildAction::Arguments& arguments) {
    const fs::path disk = PathOf(arguments[1]);
    constexpr std::uintmax_t kDiskSize = 3 << 20;
    if (!TakeOwnFileSystems() || !MountSmallDisk(disk, kDiskSize)) {
        std::_Exit(kNotAllowed);
    }
    const fs::path file = disk / "workshop.mdb";
    const fs::path filler = disk / "filler";
    fs::path stage = MakeWorkshop(PathOf(arguments[0]), kVehicles);
    int refusals = 0;
    for (const Change& change : MixedChanges()) {
        const std::string before = ContentsOf(stage);
        CopyOver(stage, file);
        change.apply(*Database::Open(stage));
        const std::string after = ContentsOf(stage);
        const fs::path start = PathOf(arguments[0]) / "start.mdb";
        fs::copy_file(file, start, fs::copy_options::overwrite_existing);
        bool refused = true;
        for (std::uintmax_t blocks = 0; refused; ++blocks) {
            CopyOver(start, file);
            try {
                refused = MeetsLimit(
                    file, change, before, after, [&] { FillBut(filler, blocks); },
                    [&] { fs::remove(filler); });
            } catch (const basic::RuntimeError& error) {
                Demand(false, change.name + ", " + std::to_string(blocks) + " blocks free: " + error.what());
            }
            refusals += refused ? 1 : 0;
        }
    }
    Demand(refusals > 100, "only " + std::to_string(refusals) + " refusals");
});

/// The same with a limit of the size of files, in steps that end in the middle of pages: folder.
const ChildAction kSmallFiles("small files", [](const ChildAction::Arguments& arguments) {
    constexpr rlim_t kStep = 1500;
    std::signal(SIGXFSZ, SIG_IGN);
    const fs::path file = MakeWorkshop(PathOf(arguments[0]), kVehicles);
    const fs::path start = PathOf(arguments[0]) / "start.mdb";
    const std::string before = ContentsOf(file);
    CopyOver(file, start);
    const Change change = MixedChanges()[1];
    change.apply(*Database::Open(file));
    const std::string after = ContentsOf(file);
    struct rlimit usual = {};
    Demand(::getrlimit(RLIMIT_FSIZE, &usual) == 0, "getrlimit");
    bool refused = true;
    int refusals = 0;
    for (rlim_t size = fs::file_size(start); refused; size += kStep) {
        CopyOver(start, file);
        const struct rlimit small = {size, usual.rlim_max};
        try {
            refused = MeetsLimit(
                file, change, before, after, [&] { ::setrlimit(RLIMIT_FSIZE, &small); },
                [&] { ::setrlimit(RLIMIT_FSIZE, &usual); });
        } catch (const basic::RuntimeError& error) {
            Demand(false, "files of " + std::to_string(size) + ": " + error.what());
        }
        refusals += refused ? 1 : 0;
    }
    Demand(refusals > 3, "only " + std::to_string(refusals) + " refusals");
});

TEST(FullDisk, RefusesAChangeAndKeepsTheFileAsItWas) {
    const TempFolder files;
    const TempFolder disk;
    const int code = kFullDisk.Run({Argument(files.Path()), Argument(disk.Path())});
    if (code == kNotAllowed) {
        GTEST_SKIP() << "this process may not make a file system of its own";
    }
    EXPECT_EQ(code, 0);
}

TEST(FullDisk, AFileThatMayNotGrowKeepsWhatItHad) {
    const TempFolder files;
    EXPECT_EQ(kSmallFiles.Run({Argument(files.Path())}), 0);
}

}  // namespace
}  // namespace quardele::jet::test
