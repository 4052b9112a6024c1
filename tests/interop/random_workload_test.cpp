// Databases made and changed by us alone: random tables, random rows, random changes of structure. After each
// stretch the model, our reading and those of the others are the same, and the check of the file has nothing
// to say. QUARDELE_INTEROP_SEEDS in the environment gives the number of databases.

#include <cstdlib>

#include <gtest/gtest.h>

#include "../data/jet/support.h"
#include "comparison.h"
#include "other_readers.h"
#include "workload.h"

namespace quardele::jet::test {
namespace {

constexpr int kSeeds = 6;
constexpr int kStretches = 5;

int SeedCount() {
    const char* count = std::getenv("QUARDELE_INTEROP_SEEDS");
    return count == nullptr ? kSeeds : std::atoi(count);
}

class RandomWorkload : public testing::TestWithParam<int> {};

TEST_P(RandomWorkload, ReadsTheSameEverywhere) {
    Random random(static_cast<std::uint64_t>(GetParam()));
    const TempFolder folder;
    const auto file = folder.Path() / "hasard.mdb";
    Workload workload(Database::Create(file), random);
    for (int i = random.Between(1, 3); i > 0; --i) {
        workload.CreateTable();
    }
    std::string last = "tables made";
    for (int stretch = 1; stretch <= kStretches && !HasFailure(); ++stretch) {
        SCOPED_TRACE("stretch " + std::to_string(stretch) + ", " + last);
        workload.ChangeRows(random.Between(50, 400));
        const Contents expected = workload.Expected();
        workload.Close();
        ExpectAllReadersAgree(file, expected);
        ExpectSound(file, true);
        workload.Reopen(Database::Open(file));
        last = workload.ChangeStructure();
    }
    SKIP_WITHOUT_OTHER_READERS();
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomWorkload, testing::Range(1, SeedCount() + 1));

}  // namespace
}  // namespace quardele::jet::test
