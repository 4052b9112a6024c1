// A process that is killed at any write, sync, renaming or deletion of any kind of change: the file is then
// as before the change or as after it, and sound.

#include "child_action.h"
#include "commit/journal.h"
#include "dying.h"
#include "kill_workload.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;

/// Opens a file, and dies in that: file, point, 1 for torn writes.
const ChildAction kOpen("open", [](const ChildAction::Arguments& arguments) {
    CurrentWriteHook() = DieAt(std::stoi(arguments[1]), arguments[2] == "1");
    static_cast<void>(Database::Open(PathOf(arguments[0])));
});

class KillTest : public testing::TestWithParam<bool> {
 protected:
    static void SetUpTestSuite() { workload_ = new KillWorkload; }
    static void TearDownTestSuite() { delete workload_; }

    static void ExpectBeforeOrAfter(const fs::path& file, std::size_t stage) {
        const std::string contents = ContentsOf(file);
        EXPECT_TRUE(contents == Before(stage) || contents == After(stage));
        EXPECT_EQ(FaultsOfFile(file), "");
        EXPECT_FALSE(HasJournal(file));
    }
    [[nodiscard]] static const std::string& Before(std::size_t stage) {
        return workload_->Stages()[stage].contents;
    }
    [[nodiscard]] static const std::string& After(std::size_t stage) { return Before(stage + 1); }

    static KillWorkload* workload_;
};

KillWorkload* KillTest::workload_ = nullptr;

TEST_F(KillTest, EveryChangeOfTheWorkloadChangesSomethingInASoundFile) {
    for (std::size_t stage = 0; stage < workload_->Changes(); ++stage) {
        EXPECT_NE(Before(stage), After(stage)) << MixedChanges()[stage].name;
    }
    for (const KillWorkload::Stage& stage : workload_->Stages()) {
        EXPECT_EQ(FaultsOfFile(stage.file), "") << stage.file;
    }
}

TEST_P(KillTest, AFileIsNeverBetweenBeforeAndAfter) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "workshop.mdb";
    const int points = workload_->DieEverywhere(file, GetParam(), [&](std::size_t stage, int code) {
        ExpectBeforeOrAfter(file, stage);
        EXPECT_TRUE(code != 0 || ContentsOf(file) == After(stage));
    });
    RecordProperty("points", points);
    EXPECT_GT(points, 300 / KillStride());
}

TEST_P(KillTest, ARecoveryThatIsKilledIsTakenUpAgain) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "workshop.mdb";
    const TempFolder other;
    const fs::path half = other.Path() / "workshop.mdb";
    for (std::size_t stage = 0; stage < workload_->Changes(); stage += 3) {
        fs::remove(JournalPath(half));
        ASSERT_EQ(workload_->Die(half, stage, 9, GetParam()), kKilled);
        ASSERT_TRUE(HasJournal(half));
        for (int code = kKilled, point = FirstKillPoint(stage); code == kKilled; point += KillStride()) {
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
    for (std::size_t stage = 0; stage < workload_->Changes(); ++stage) {
        bool failed = true;
        for (int point = 1; failed; ++point) {
            SCOPED_TRACE(MixedChanges()[stage].name + ", failure at " + std::to_string(point));
            CopyOver(workload_->Stages()[stage].file, file);
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
                ASSERT_EQ(ContentsOf(file), Before(stage));
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
