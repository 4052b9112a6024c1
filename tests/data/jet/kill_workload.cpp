#include "kill_workload.h"

#include <jet/check.h>

#include "child_action.h"
#include "dying.h"
#include "setting.h"
#include "workshop.h"

namespace quardele::jet::test {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;

namespace {

constexpr int kVehicles = 200;

/// Makes one of the mixed changes and dies in it: file, number of the change, point, 1 for torn writes.
const ChildAction kChange("change", [](const ChildAction::Arguments& arguments) {
    auto database = Database::Open(PathOf(arguments[0]));
    const auto change = static_cast<std::size_t>(std::stoi(arguments[1]));
    CurrentWriteHook() = DieAt(std::stoi(arguments[2]), arguments[3] == "1");
    MixedChanges()[change].apply(*database);
    database.reset();
});

}  // namespace

int KillStride() {
    return static_cast<int>(quardele::test::Setting("QUARDELE_KILL_STRIDE", 1));
}

int FirstKillPoint(std::size_t stage) {
    return 1 + static_cast<int>(stage) % KillStride();
}

KillWorkload::KillWorkload() {
    const fs::path file = MakeWorkshop(folder_.Path(), kVehicles);
    const auto keep = [&] {
        const fs::path stage = folder_.Path() / ("stage" + std::to_string(stages_.size()) + ".mdb");
        fs::copy_file(file, stage);
        stages_.push_back({.file = stage, .contents = ContentsOf(stage)});
    };
    keep();
    for (const Change& change : MixedChanges()) {
        change.apply(*Database::Open(file));
        keep();
    }
}

int KillWorkload::Die(const fs::path& file, std::size_t stage, int point, bool torn) const {
    CopyOver(stages_[stage].file, file);
    return kChange.Run({Argument(file), std::to_string(stage), std::to_string(point), torn ? "1" : "0"});
}

int KillWorkload::DieEverywhere(const fs::path& file, bool torn, const Look& look) const {
    int points = 0;
    for (std::size_t stage = 0; stage < Changes(); ++stage) {
        int code = kKilled;
        for (int point = FirstKillPoint(stage); code == kKilled; point += KillStride(), ++points) {
            SCOPED_TRACE(MixedChanges()[stage].name + ", killed at " + std::to_string(point));
            code = Die(file, stage, point, torn);
            look(stage, code);
            if (testing::Test::HasFailure()) {
                return points;
            }
        }
        EXPECT_EQ(code, 0);
    }
    return points;
}

std::string FaultsOfFile(const fs::path& file) {
    std::string faults;
    for (const Fault& fault : CheckFile(file)) {
        faults += basic::ToUtf8(Describe(fault, FaultLanguage::English)) + '\n';
    }
    return faults;
}

}  // namespace quardele::jet::test
