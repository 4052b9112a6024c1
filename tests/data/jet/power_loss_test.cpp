// The power fails at any moment of a change or of a recovery, and any of the sectors that were not synced are
// lost: the file is then as before the change or as after it.

#include <jet/check.h>

#include "child_action.h"
#include "dying.h"
#include "forgetful_disk.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;

constexpr int kVehicles = 60;
constexpr unsigned kSeeds = 6;

/// Makes one of the mixed changes and dies before a page: file, number of the change, number of the page.
const ChildAction kDieAtPage("die at a page of a change", [](const ChildAction::Arguments& arguments) {
    const fs::path file = PathOf(arguments[0]);
    const auto database = Database::Open(file);
    CurrentWriteHook() = DieAtPage(file, std::stoi(arguments[2]));
    MixedChanges()[static_cast<std::size_t>(std::stoi(arguments[1]))].apply(*database);
});

/// The disk before each step that an action makes, and after the last one.
template <class Action>
std::vector<ForgetfulDisk> MomentsOf(ForgetfulDisk disk, const Action& action) {
    std::vector<ForgetfulDisk> moments;
    CurrentWriteHook() = [&](const WriteEvent& event) {
        moments.push_back(disk);
        disk.Take(event);
    };
    action();
    CurrentWriteHook() = nullptr;
    moments.push_back(disk);
    return moments;
}

/// Makes a change whose sync of the data file fails, as does everything from then on: the change can neither
/// be ended nor taken back, though programs see all of it. Gives the disk.
ForgetfulDisk DiskOfAFailedSync(const fs::path& file, const Change& change) {
    ForgetfulDisk disk(file);
    const auto database = Database::Open(file);
    bool failed = false;
    CurrentWriteHook() = [&](const WriteEvent& event) {
        if (!failed && event.step == WritePoint::Sync && event.path == file) {
            disk.FailSync();
            failed = true;
        }
        if (failed) {
            throw basic::RuntimeError(basic::error::kDeviceIo);
        }
        disk.Take(event);
    };
    EXPECT_EQ(ErrorNumber([&] { change.apply(*database); }), basic::error::kDeviceIo);
    CurrentWriteHook() = nullptr;
    return disk;
}

class PowerLoss : public testing::Test {
 protected:
    /// Tries every moment with several losses; how often the file was then as before, and as after.
    struct Ends {
        int before = 0;
        int after = 0;
    };
    [[nodiscard]] Ends Try(const std::vector<ForgetfulDisk>& moments, const std::string& before,
                           const std::string& after) const {
        Ends ends;
        for (std::size_t moment = 0; moment < moments.size(); ++moment) {
            for (unsigned seed = 0; seed < kSeeds; ++seed) {
                SCOPED_TRACE("moment " + std::to_string(moment) + ", seed " + std::to_string(seed));
                moments[moment].LeaveAfterPowerLoss(seed, file_);
                const std::string contents = ContentsOf(file_);
                EXPECT_TRUE(contents == before || contents == after);
                EXPECT_TRUE(CheckFile(file_).empty());
                ++(contents == before ? ends.before : ends.after);
            }
        }
        return ends;
    }

    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), kVehicles);
};

TEST_F(PowerLoss, InAChangeLeavesTheFileAsBeforeOrAsAfterIt) {
    for (const Change& change : MixedChanges()) {
        SCOPED_TRACE(change.name);
        const std::string before = ContentsOf(file_);
        const auto moments = MomentsOf(ForgetfulDisk(file_), [&] { change.apply(*Database::Open(file_)); });
        const std::string after = ContentsOf(file_);
        const auto bytes = ReadBytes(file_);
        const Ends ends = Try(moments, before, after);
        EXPECT_GT(ends.before, 0);
        EXPECT_GT(ends.after, 0);
        ASSERT_FALSE(HasFailure());
        WriteBytes(file_, bytes);
    }
}

TEST_F(PowerLoss, InARecoveryLeavesTheFileAsBeforeTheChange) {
    constexpr int kAtPage = 3;
    constexpr const char* kChange = "1";
    const std::string before = ContentsOf(file_);
    ASSERT_EQ(kDieAtPage.Run({Argument(file_), kChange, std::to_string(kAtPage)}), kKilled);
    const auto moments = MomentsOf(ForgetfulDisk(file_), [&] { static_cast<void>(Database::Open(file_)); });
    EXPECT_GT(moments.size(), 5U);
    static_cast<void>(Try(moments, before, before));
}

// What the writer was told was not on the disk when the sync had failed. Whoever takes the change for made
// has put it there.
TEST_F(PowerLoss, AChangeWhoseSyncFailedIsOnTheDiskWhenSomebodyElseHasAcceptedIt) {
    for (const Change& change : MixedChanges()) {
        SCOPED_TRACE(change.name);
        const std::string before = ContentsOf(file_);
        const ForgetfulDisk disk = DiskOfAFailedSync(file_, change);
        const auto moments = MomentsOf(disk, [&] { static_cast<void>(Database::Open(file_)); });
        const std::string after = ContentsOf(file_);
        EXPECT_NE(before, after);
        const auto bytes = ReadBytes(file_);
        const Ends ends = Try(moments, before, after);
        EXPECT_GT(ends.before, 0);
        EXPECT_EQ(Try({moments.back()}, before, after).before, 0);
        ASSERT_FALSE(HasFailure());
        WriteBytes(file_, bytes);
    }
}

}  // namespace
}  // namespace quardele::jet::test
