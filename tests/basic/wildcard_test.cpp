#include "wildcard.h"

#include "support.h"

namespace quardele::basic {
namespace {

struct Case {
    const char16_t* name;
    const char16_t* pattern;
    bool matches;
};

class WildcardTest : public testing::TestWithParam<Case> {};

TEST_P(WildcardTest, MatchesTheWholeName) {
    const auto [name, pattern, matches] = GetParam();
    EXPECT_EQ(MatchesWildcard(name, pattern), matches) << ToUtf8(name) << " and " << ToUtf8(pattern);
}

INSTANTIATE_TEST_SUITE_P(Exact, WildcardTest,
                         testing::Values(Case{u"dbpath.mdb", u"DBPATH.MDB", true},
                                         Case{u"dbpath.mdb", u"dbpath", false},
                                         Case{u"dbpath", u"dbpath.mdb", false}, Case{u"", u"a", false},
                                         Case{u"É.RVE", u"é.rve", true}));

INSTANTIATE_TEST_SUITE_P(
    ThreeLetterExtension, WildcardTest,
    testing::Values(Case{u"RELVEH.DOT", u"RELVEH*.dot", true}, Case{u"relveh2.dot", u"RELVEH*.dot", true},
                    Case{u"RELVEH2.dotx", u"RELVEH*.dot", false}, Case{u"RELVEH2.dotx", u"*.dot*", true},
                    Case{u"RELVEH2.dot", u"*.dot*", true}, Case{u"RELVEH2.dot.bak", u"*.dot", false},
                    Case{u".~lock.RELVEH.dot#", u"RELVEH*.dot", false},
                    Case{u".~lock.RELVEH.dot#", u"*.dot*", true}));

INSTANTIATE_TEST_SUITE_P(Star, WildcardTest,
                         testing::Values(Case{u"", u"*", true}, Case{u"a", u"*", true},
                                         Case{u"README", u"*.*", true}, Case{u"a.b.c", u"*.c", true},
                                         Case{u"a.b.c", u"a*c", true}, Case{u"abcabd", u"*abd", true},
                                         Case{u"aXbXc", u"*X*X*", true}, Case{u"aXb", u"*X*X*", false},
                                         Case{u"ab", u"a**b", true}));

INSTANTIATE_TEST_SUITE_P(QuestionMark, WildcardTest,
                         testing::Values(Case{u"ab.dot", u"a?.dot", true}, Case{u"a.dot", u"a?.dot", true},
                                         Case{u"abc.dot", u"a?.dot", false}, Case{u"ab", u"???", true},
                                         Case{u"abcd", u"???", false}, Case{u"a.b", u"a?b", false},
                                         Case{u"xab.dot", u"*a?.dot", true}));

TEST(WildcardTest, ManyStarsTakeNoTimeToSpeakOf) {
    const Text name(2000, u'a');
    Text pattern;
    for (int i = 0; i < 500; ++i) {
        pattern += u"a*";
    }
    EXPECT_FALSE(MatchesWildcard(name, pattern + u"b"));
}

}  // namespace
}  // namespace quardele::basic
