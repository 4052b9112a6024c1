// A process that dies, or a disk that fails, at any moment of a change: the file is then as before the change
// or as after it, never between.

#include <unistd.h>

#include <fstream>
#include <functional>

#include <basic/date.h>

#include "child.h"
#include "index_check.h"
#include "journal.h"
#include "support.h"
#include "write_hook.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using basic::Null;

constexpr int kKilled = 9;
constexpr std::size_t kSectorSize = 512;

struct Step {
    const char16_t* table;
    std::size_t row;
    const char16_t* column;
    Variant value;
};

/// Changes that touch every kind of page: rows in place, rows that move, index splits, long values, new
/// pages.
std::vector<Step> Workload() {
    return {
        {u"TVEH_DETAIL", 12, u"TVEH_DETAIL_DATVIS", basic::DateOf(2100, 1, 1)},
        {u"TCLI", 3, u"TCLI_REMARQUES", Text(9000, u'é')},
        {u"TVEH_DETAIL", 800, u"TVEH_DETAIL_Immat", u"AA-000-AA"},
        {u"TCLI", 3, u"TCLI_REMARQUES", u"court"},
        {u"TCLI", 40, u"TCLI_ADRFACT1", Text(35, u'Ω')},
    };
}

void Apply(Database& database, const Step& step) {
    const auto table = database.OpenTable(step.table);
    RowScan scan = table->Scan();
    std::optional<RowId> row;
    for (std::size_t i = 0; i <= step.row; ++i) {
        row = scan.NextId();
    }
    const ColumnChange change{table->FindColumn(step.column), step.value};
    table->Update(row.value(), {&change, 1});
}

/// All that the tables of the workload hold, and whether their indexes agree.
std::string StateOf(const fs::path& file) {
    std::string state;
    const auto database = Database::Open(file);
    for (const char16_t* name : {u"TVEH_DETAIL", u"TCLI"}) {
        const auto table = database->OpenTable(name);
        const std::string faults = FaultsOf(*table);
        EXPECT_EQ(faults, "");
        RowScan scan = table->Scan();
        while (const auto row = scan.Next()) {
            for (std::size_t i = 0; i < table->Columns().size(); ++i) {
                const Variant value = row->Value(static_cast<int>(i));
                state += value.IsText()   ? basic::ToUtf8(value.As<Text>())
                         : value.IsNull() ? std::string("Null")
                                          : std::to_string(row->NumberAt(static_cast<int>(i)));
                state += '|';
            }
        }
    }
    return state;
}

/// States of the file after each step of the workload, the first one before all of them.
std::vector<std::string> StatesOfWorkload(const fs::path& original) {
    TempFolder folder;
    const fs::path file = folder.Copy(original);
    std::vector<std::string> states = {StateOf(file)};
    const auto database = Database::Open(file);
    for (const Step& step : Workload()) {
        Apply(*database, step);
        states.push_back(StateOf(file));
    }
    return states;
}

/// The file's bytes but for its commit slots, which count attempts as well.
std::vector<std::uint8_t> PagesOf(const fs::path& file) {
    constexpr std::ptrdiff_t kSlotsAt = 0xE00;
    constexpr std::ptrdiff_t kSlotsEnd = 0x1000;
    auto bytes = ReadBytes(file);
    std::fill(bytes.begin() + kSlotsAt, bytes.begin() + kSlotsEnd, std::uint8_t{0});
    return bytes;
}

/// Ends the process at the n-th step that changes a file; a write is torn in its middle when asked for.
WriteHook DieAt(int number, bool torn) {
    return [number, torn, count = 0](const WriteEvent& event) mutable {
        if (++count < number) {
            return;
        }
        if (torn && event.step == WritePoint::Write) {
            std::fstream stream(event.path, std::ios::binary | std::ios::in | std::ios::out);
            stream.seekp(static_cast<std::streamoff>(event.offset));
            const std::size_t half = event.bytes.size() / 2 / kSectorSize * kSectorSize;
            stream.write(reinterpret_cast<const char*>(event.bytes.data()),
                         static_cast<std::streamsize>(half));
            stream.close();
        }
        ::_exit(kKilled);
    };
}

int RunWorkloadDyingAt(const fs::path& file, int number, bool torn) {
    return InChild([&] {
        CurrentWriteHook() = DieAt(number, torn);
        const auto database = Database::Open(file);
        for (const Step& step : Workload()) {
            Apply(*database, step);
        }
    });
}

bool Contains(const std::vector<std::string>& states, const std::string& state) {
    return std::find(states.begin(), states.end(), state) != states.end();
}

class CrashTest : public testing::TestWithParam<bool> {};

TEST_P(CrashTest, AFileIsNeverBetweenBeforeAndAfter) {
    const fs::path original = SampleFile("DATA/talmeon.mdb");
    const std::vector<std::string> states = StatesOfWorkload(original);
    int points = 0;
    for (int code = kKilled; code == kKilled; ++points) {
        TempFolder folder;
        const fs::path file = folder.Copy(original);
        code = RunWorkloadDyingAt(file, points + 1, GetParam());
        SCOPED_TRACE("killed at " + std::to_string(points + 1));
        const std::string state = StateOf(file);
        ASSERT_TRUE(Contains(states, state));
        EXPECT_FALSE(HasJournal(file));
        if (code == 0) {
            EXPECT_EQ(state, states.back());
        }
        if (HasMdbExport()) {
            EXPECT_FALSE(MdbExport(file, "TCLI").empty());
        }
    }
    EXPECT_GT(points, 50);
}

TEST_P(CrashTest, ARecoveryThatDiesIsTakenUpAgain) {
    const fs::path original = SampleFile("DATA/talmeon.mdb");
    const std::vector<std::string> states = StatesOfWorkload(original);
    for (int first = 8; first < 47; first += 9) {
        for (int code = kKilled, second = 1; code == kKilled; ++second) {
            TempFolder folder;
            const fs::path file = folder.Copy(original);
            ASSERT_EQ(RunWorkloadDyingAt(file, first, GetParam()), kKilled);
            code = InChild([&] {
                CurrentWriteHook() = DieAt(second, GetParam());
                static_cast<void>(Database::Open(file));
            });
            ASSERT_TRUE(Contains(states, StateOf(file))) << first << ", " << second;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(WholeAndTornWrites, CrashTest, testing::Bool());

TEST(DiskFailure, AFailureAtAnyStepLeavesTheFileAsItWas) {
    const fs::path original = SampleFile("DATA/talmeon.mdb");
    TempFolder folder;
    const fs::path file = folder.Copy(original);
    const auto before = PagesOf(file);
    int failures = 0;
    for (int number = 1;; ++number) {
        SCOPED_TRACE(number);
        const auto database = Database::Open(file);
        int count = 0;
        CurrentWriteHook() = [&](const WriteEvent&) {
            if (++count == number) {
                throw basic::RuntimeError(basic::error::kDiskFullDatabase);
            }
        };
        const int error = ErrorNumber([&] { Apply(*database, Workload()[1]); });
        CurrentWriteHook() = nullptr;
        EXPECT_FALSE(HasJournal(file));
        if (error == 0) {
            break;
        }
        EXPECT_EQ(error, basic::error::kDiskFullDatabase);
        ASSERT_EQ(PagesOf(file), before);
        ++failures;
    }
    EXPECT_GT(failures, 8);
    EXPECT_NE(PagesOf(file), before);
}

TEST(Journal, PagesThatSomebodyElseChangedAreNotRolledBackOver) {
    TempFolder folder;
    const fs::path file = folder.Copy(SampleFile("DATA/talmeon.mdb"));
    // Dies with some pages of the first change written, at the sync of the data file.
    ASSERT_EQ(RunWorkloadDyingAt(file, 8, false), kKilled);
    ASSERT_TRUE(HasJournal(file));
    auto bytes = ReadBytes(file);
    const auto original = ReadBytes(SampleFile("DATA/talmeon.mdb"));
    const auto changed = std::mismatch(bytes.begin(), bytes.end(), original.begin());
    ASSERT_NE(changed.first, bytes.end());
    *changed.first = static_cast<std::uint8_t>(~*changed.first);
    WriteBytes(file, bytes);

    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(file)); }), basic::error::kNotADatabase);
    EXPECT_EQ(ReadBytes(file), bytes);
    EXPECT_TRUE(HasJournal(file));
}

TEST(Journal, OneOfAnotherFileIsPutAside) {
    TempFolder folder;
    const fs::path file = folder.Copy(SampleFile("DATA/talmeon.mdb"));
    ASSERT_EQ(RunWorkloadDyingAt(file, 8, false), kKilled);
    const fs::path other = folder.Copy(SampleFile("SIGNETS.MDB"));
    fs::rename(JournalPath(file), JournalPath(other));
    const auto before = ReadBytes(other);
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(other)); }), 0);
    EXPECT_EQ(ReadBytes(other), before);
    EXPECT_FALSE(HasJournal(other));
    EXPECT_TRUE(fs::exists(other.string() + ".qjournal.autre"));
}

TEST(Journal, AReaderOfAHalfWrittenFileIsToldSo) {
    TempFolder folder;
    const fs::path file = folder.Copy(SampleFile("DATA/talmeon.mdb"));
    const std::vector<Step> workload = Workload();
    // In the middle of the pages of the second change.
    ASSERT_EQ(InChild([&] {
                  const auto database = Database::Open(file);
                  CurrentWriteHook() = DieAt(7, false);
                  Apply(*database, workload[1]);
              }),
              kKilled);
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(file, OpenMode::ReadOnly)); }),
              basic::error::kReadOnly);
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(file)); }), 0);
    EXPECT_EQ(ErrorNumber([&] { static_cast<void>(Database::Open(file, OpenMode::ReadOnly)); }), 0);
}

}  // namespace
}  // namespace quardele::jet::test
