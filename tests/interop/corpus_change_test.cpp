// Files made by the original programs, changed by us: all readers agree about them before and after.

#include <gtest/gtest.h>

#include "../data/jet/support.h"
#include "comparison.h"
#include "other_readers.h"
#include "workload.h"

namespace quardele::jet::test {
namespace {

struct File {
    const char* name;
    bool relationships = false;  ///< between its tables, enforced
    const char16_t* fixedText = u"";
};

class CorpusChange : public testing::TestWithParam<File> {};

TEST_P(CorpusChange, ReadsTheSameEverywhere) {
    SKIP_WITHOUT_CORPUS();
    const std::string name = GetParam().name;
    const TempFolder folder;
    const auto file = folder.Copy(name.find('/') == std::string::npos ? CorpusFile(name) : SampleFile(name));
    ExpectAllReadersAgree(file, ReadContents(file));
    ExpectSound(file, false);
    for (std::uint64_t seed = 1; seed <= 3; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        Workload workload(Database::Open(file), random);
        if (GetParam().relationships) {
            workload.FollowRelationships();
        }
        workload.SetFixedText(GetParam().fixedText);
        workload.ChangeRows(200);
        const Contents expected = workload.Expected();
        workload.Close();
        ExpectAllReadersAgree(file, expected);
        ExpectSound(file, false);
    }
    SKIP_WITHOUT_OTHER_READERS();
}

INSTANTIATE_TEST_SUITE_P(Files, CorpusChange,
                         testing::Values(File{"DATA/talmeon.mdb"}, File{"common1V2000.mdb"},
                                         File{"common2V2000.mdb"}, File{"compIndexV2000.mdb"},
                                         File{"delColV2000.mdb"}, File{"delV2000.mdb"},
                                         File{"fixedNumericV2000.mdb"},
                                         File{.name = "fixedTextV2000.mdb", .fixedText = u"c_flag_"},
                                         File{"indexCodesV2000-r2009.mdb"}, File{"indexPropertiesV2000.mdb"},
                                         File{.name = "indexV2000.mdb", .relationships = true},
                                         File{"overflowV2000.mdb"}, File{"unicodeCompV2003.mdb"},
                                         File{"linkee2.mdb"}, File{"DateTestDatabase.mdb"}));

}  // namespace
}  // namespace quardele::jet::test
