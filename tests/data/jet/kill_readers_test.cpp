// What a process leaves that is killed at any point of any kind of change, in the eyes of two other programs:
// mdbtools and mdb-reader.

#include <set>

#include "../../interop/comparison.h"
#include "../../interop/other_readers.h"
#include "kill_workload.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

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

class KillReadersTest : public testing::TestWithParam<bool> {};

TEST_P(KillReadersTest, WhatEveryPointLeavesIsReadTheSameByAll) {
    const KillWorkload workload;
    std::vector<Contents> values;
    for (const KillWorkload::Stage& stage : workload.Stages()) {
        values.push_back(ReadContents(stage.file));
    }
    const TempFolder folder;
    const fs::path file = folder.Path() / "workshop.mdb";
    OtherPrograms others;
    workload.DieEverywhere(file, GetParam(), [&](std::size_t stage, int /*code*/) {
        // Ours puts right what was left before the others look.
        const bool isAfter = ContentsOf(file) == workload.Stages()[stage + 1].contents;
        others.Show(file, values[stage + (isAfter ? 1 : 0)]);
    });
    RecordProperty("files shown to others", static_cast<int>(others.Shown()));
    EXPECT_GE(others.Shown(), workload.Stages().size());
    SKIP_WITHOUT_OTHER_READERS();
}

INSTANTIATE_TEST_SUITE_P(WholeAndTornWrites, KillReadersTest, testing::Bool());

}  // namespace
}  // namespace quardele::jet::test
