// A process that is killed at any write, sync, renaming or deletion of any kind of change: the file is then
// as before the change or as after it, sound, and the same to two other programs.

#include <jet/check.h>

#include <set>

#include "../../interop/comparison.h"
#include "../../interop/other_readers.h"
#include "child_action.h"
#include "commit/journal.h"
#include "dying.h"
#include "setting.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;

constexpr int kVehicles = 200;
/// From one point to the next one that is tried; a stage starts at one of the first ones.
const int kStride = static_cast<int>(quardele::test::Setting("QUARDELE_KILL_STRIDE", 1));

[[nodiscard]] int FirstPoint(std::size_t stage) {
    return 1 + static_cast<int>(stage) % kStride;
}

/// Makes one of the mixed changes and dies in it: file, number of the change, point, 1 for torn writes.
const ChildAction kChange("change", [](const ChildAction::Arguments& arguments) {
    auto database = Database::Open(PathOf(arguments[0]));
    const auto change = static_cast<std::size_t>(std::stoi(arguments[1]));
    CurrentWriteHook() = DieAt(std::stoi(arguments[2]), arguments[3] == "1");
    MixedChanges()[change].apply(*database);
    database.reset();
});

/// Opens a file, and dies in that: file, point, 1 for torn writes.
const ChildAction kOpen("open", [](const ChildAction::Arguments& arguments) {
    CurrentWriteHook() = DieAt(std::stoi(arguments[1]), arguments[2] == "1");
    static_cast<void>(Database::Open(PathOf(arguments[0])));
});

/// The file before the first change and after each one.
struct Stages {
    std::vector<fs::path> files;
    std::vector<std::string> contents;
    std::vector<Contents> values;
};

std::string FaultsOfFile(const fs::path& file) {
    std::string faults;
    for (const Fault& fault : CheckFile(file)) {
        faults += basic::ToUtf8(Describe(fault, FaultLanguage::English)) + '\n';
    }
    return faults;
}

/// Shows files to the other programs, each content once: a file that was brought back to where it was is the
/// same byte for byte but for the commit slots, and need not be read again at every point.
class OtherPrograms {
 public:
    void Show(const fs::path& file, const Contents& expected) {
        if (shown_.insert(ReadBytes(file)).second) {
            ExpectAllReadersAgree(file, expected);
        }
    }
    [[nodiscard]] std::size_t Shown() const { return shown_.size(); }

 private:
    std::set<std::vector<std::uint8_t>> shown_;
};

class KillTest : public testing::TestWithParam<bool> {
 protected:
    static void SetUpTestSuite() {
        folder_ = new TempFolder;
        stages_ = new Stages;
        fs::path file = MakeWorkshop(folder_->Path(), kVehicles);
        Keep(file);
        for (const Change& change : MixedChanges()) {
            change.apply(*Database::Open(file));
            Keep(file);
        }
    }
    static void TearDownTestSuite() {
        delete stages_;
        delete folder_;
    }

    static void Keep(const fs::path& file) {
        const fs::path stage = folder_->Path() / ("stage" + std::to_string(stages_->files.size()) + ".mdb");
        fs::copy_file(file, stage);
        stages_->files.push_back(stage);
        stages_->contents.push_back(ContentsOf(stage));
        stages_->values.push_back(ReadContents(stage));
        EXPECT_EQ(FaultsOfFile(stage), "");
    }

    /// A copy of a stage, and a process that has died at a point of the change that follows it. 0 when the
    /// change was made before that point.
    [[nodiscard]] static int Die(const fs::path& file, std::size_t stage, int point, bool torn) {
        CopyOver(stages_->files[stage], file);
        return kChange.Run({Argument(file), std::to_string(stage), std::to_string(point), torn ? "1" : "0"});
    }

    static void ExpectBeforeOrAfter(const fs::path& file, std::size_t stage) {
        const std::string contents = ContentsOf(file);
        EXPECT_TRUE(contents == stages_->contents[stage] || contents == stages_->contents[stage + 1]);
        EXPECT_EQ(FaultsOfFile(file), "");
        EXPECT_FALSE(HasJournal(file));
    }

    static TempFolder* folder_;
    static Stages* stages_;
};

TempFolder* KillTest::folder_ = nullptr;
Stages* KillTest::stages_ = nullptr;

TEST_F(KillTest, EveryChangeOfTheWorkloadChangesSomething) {
    for (std::size_t stage = 0; stage + 1 < stages_->contents.size(); ++stage) {
        EXPECT_NE(stages_->contents[stage], stages_->contents[stage + 1]) << MixedChanges()[stage].name;
    }
}

TEST_P(KillTest, AFileIsNeverBetweenBeforeAndAfter) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "workshop.mdb";
    OtherPrograms others;
    int points = 0;
    for (std::size_t stage = 0; stage + 1 < stages_->files.size(); ++stage) {
        int code = kKilled;
        for (int point = FirstPoint(stage); code == kKilled; point += kStride, ++points) {
            SCOPED_TRACE(MixedChanges()[stage].name + ", killed at " + std::to_string(point));
            code = Die(file, stage, point, GetParam());
            ExpectBeforeOrAfter(file, stage);
            const bool isAfter = ContentsOf(file) == stages_->contents[stage + 1];
            EXPECT_TRUE(isAfter || code != 0);
            others.Show(file, stages_->values[stage + (isAfter ? 1 : 0)]);
            ASSERT_FALSE(HasFailure());
        }
        ASSERT_EQ(code, 0);
    }
    RecordProperty("points", points);
    RecordProperty("files shown to others", static_cast<int>(others.Shown()));
    EXPECT_GT(points, 300 / kStride);
    EXPECT_GE(others.Shown(), stages_->files.size());
    SKIP_WITHOUT_OTHER_READERS();
}

TEST_P(KillTest, ARecoveryThatIsKilledIsTakenUpAgain) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "workshop.mdb";
    const TempFolder other;
    const fs::path half = other.Path() / "workshop.mdb";
    for (std::size_t stage = 0; stage + 1 < stages_->files.size(); stage += 3) {
        fs::remove(JournalPath(half));
        ASSERT_EQ(Die(half, stage, 9, GetParam()), kKilled);
        ASSERT_TRUE(HasJournal(half));
        for (int code = kKilled, point = FirstPoint(stage); code == kKilled; point += kStride) {
            SCOPED_TRACE(MixedChanges()[stage].name + ", recovery killed at " + std::to_string(point));
            CopyOver(half, file);
            CopyOver(JournalPath(half), JournalPath(file));
            code = kOpen.Run({Argument(file), std::to_string(point), GetParam() ? "1" : "0"});
            ExpectBeforeOrAfter(file, stage);
            ASSERT_FALSE(HasFailure());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(WholeAndTornWrites, KillTest, testing::Bool());

// A disk that fails at any point of any change: the change gets the error, and the file is as it was.
TEST_F(KillTest, ADiskThatFailsAtAnyPointLeavesTheFileAsItWas) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "workshop.mdb";
    int failures = 0;
    for (std::size_t stage = 0; stage + 1 < stages_->files.size(); ++stage) {
        bool failed = true;
        for (int point = 1; failed; ++point) {
            SCOPED_TRACE(MixedChanges()[stage].name + ", failure at " + std::to_string(point));
            CopyOver(stages_->files[stage], file);
            {
                const auto database = Database::Open(file);
                CurrentWriteHook() = [point, count = 0](const WriteEvent&) mutable {
                    if (++count == point) {
                        throw basic::RuntimeError(basic::error::kDiskFullDatabase);
                    }
                };
                const int error = ErrorNumber([&] { MixedChanges()[stage].apply(*database); });
                CurrentWriteHook() = nullptr;
                failed = error != 0;
                if (failed) {
                    EXPECT_EQ(error, basic::error::kDiskFullDatabase);
                }
            }
            if (failed) {
                ASSERT_EQ(ContentsOf(file), stages_->contents[stage]);
                ++failures;
            }
            ASSERT_EQ(FaultsOfFile(file), "");
            ASSERT_FALSE(HasJournal(file));
        }
    }
    EXPECT_GT(failures, 250);
}

}  // namespace
}  // namespace quardele::jet::test
