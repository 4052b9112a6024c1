// The memory of a process does not grow with the file that it reads.

#include <fstream>
#include <string>

#include <basic/runtime_error.h>

#include "child_action.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kMemoryIsOurs = false;
#else
constexpr bool kMemoryIsOurs = true;
#endif

constexpr std::size_t kMiB = 1 << 20;
/// The cache has 40 MiB of pages at most; the whole stays below 64 MiB.
constexpr std::size_t kMostMemory = 60 * kMiB;

/// The most memory that this process has used at a time.
std::size_t MostMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        std::size_t kilobytes = 0;
        if (word == "VmHWM:" && status >> kilobytes) {
            return kilobytes * 1024;
        }
    }
    throw basic::RuntimeError(basic::error::kDeviceIo);
}

/// Reads every value of a table, and fails when that takes more memory than the cache may: file.
const ChildAction kReadAll("read all", [](const ChildAction::Arguments& arguments) {
    const auto table = Database::Open(PathOf(arguments[0]), OpenMode::ReadOnly)->OpenTable(u"VEHICLES");
    const std::size_t before = MostMemory();
    std::size_t units = 0;
    for (RowScan scan = table->Scan(); const auto row = scan.Next();) {
        for (std::size_t i = 0; i < table->Columns().size(); ++i) {
            const Variant value = row->Value(static_cast<int>(i));
            units += value.IsText() ? value.As<Text>().size() : 1;
        }
    }
    const std::size_t used = MostMemory() - before;
    if (units * 2 < kMostMemory || used > kMostMemory) {
        throw basic::RuntimeError(basic::error::kInvalidOperation,
                                  basic::FromUtf8(std::to_string(used) + " bytes of memory for " +
                                                  std::to_string(units) + " units of text"));
    }
});

/// Fills memos of a page each.
void Fill(const fs::path& file, int rows) {
    const auto vehicles = Database::Open(file)->OpenTable(u"VEHICLES");
    const int notes = vehicles->FindColumn(u"NOTES");
    const ColumnChange change{notes, Variant(Text(1900, u'Ω'))};
    constexpr int kRowsOfStep = 1000;
    for (int done = 0; done < rows; done += kRowsOfStep) {
        Step step = vehicles->Home().Begin();
        for (int i = 0; i < kRowsOfStep; ++i) {
            vehicles->Insert({&change, 1});
        }
        step.Commit();
    }
}

TEST(FlatMemory, ReadingATableThatIsLargerThanTheCacheTakesTheCacheAndLittleMore) {
    if (!kMemoryIsOurs) {
        GTEST_SKIP() << "the sanitizer keeps memory of its own";
    }
    const TempFolder folder;
    const fs::path file = MakeWorkshop(folder.Path(), 0);
    Fill(file, 33'000);
    ASSERT_GT(fs::file_size(file), 2 * kMostMemory);
    EXPECT_EQ(kReadAll.Run({Argument(file)}), 0);
}

}  // namespace
}  // namespace quardele::jet::test
