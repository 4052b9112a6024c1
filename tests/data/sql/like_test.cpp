#include "expressions/like.h"

#include "sql_fixture.h"

namespace quardele::sql {
namespace {

bool Like(TextView text, TextView pattern) {
    return LikePattern(pattern).Matches(text);
}

TEST(LikeTest, CaseIsIgnoredAndAccentsAreNot) {
    EXPECT_TRUE(Like(u"Pneumatiques", u"pneuMATIQUES"));
    EXPECT_TRUE(Like(u"ÉLÉVATEUR", u"élévateur"));
    EXPECT_FALSE(Like(u"élévateur", u"elevateur"));
}

TEST(LikeTest, StarStandsForAnyText) {
    EXPECT_TRUE(Like(u"", u"*"));
    EXPECT_TRUE(Like(u"abc", u"a*"));
    EXPECT_TRUE(Like(u"abc", u"*c"));
    EXPECT_TRUE(Like(u"abc", u"a*b*c"));
    EXPECT_TRUE(Like(u"a--b--b-c", u"a*b-c"));
    EXPECT_FALSE(Like(u"abc", u"a*d"));
    EXPECT_FALSE(Like(u"abc", u""));
}

TEST(LikeTest, QuestionMarkStandsForOneCharacterAndHashForADigit) {
    EXPECT_TRUE(Like(u"abc", u"a?c"));
    EXPECT_FALSE(Like(u"ac", u"a?c"));
    EXPECT_TRUE(Like(u"4841 XR 24", u"#### ?? ##"));
    EXPECT_FALSE(Like(u"484A XR 24", u"#### ?? ##"));
}

TEST(LikeTest, BracketsHoldCharactersAndRanges) {
    EXPECT_TRUE(Like(u"b", u"[a-c]"));
    EXPECT_TRUE(Like(u"B", u"[a-c]"));
    EXPECT_FALSE(Like(u"d", u"[a-c]"));
    EXPECT_TRUE(Like(u"d", u"[!a-c]"));
    EXPECT_FALSE(Like(u"b", u"[!a-c]"));
    EXPECT_TRUE(Like(u"x", u"[axz]"));
    EXPECT_TRUE(Like(u"-", u"[a-]"));
    EXPECT_TRUE(Like(u"*", u"[*]"));
    EXPECT_FALSE(Like(u"a", u"[*]"));
    EXPECT_TRUE(Like(u"ab", u"a[]b"));
    EXPECT_TRUE(Like(u"!", u"[!]"));
    EXPECT_TRUE(Like(u"7", u"[a-c0-9]"));
}

TEST(LikeTest, RangesFollowTheCollation) {
    EXPECT_TRUE(Like(u"é", u"[d-f]"));
}

TEST(LikeTest, PatternsThatMakeNoSenseAreErrors) {
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Like(u"a", u"[a")); }), 93);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Like(u"a", u"[z-a]")); }), 93);
}

TEST(LikeTest, ManyStarsTakeNoLongTime) {
    const Text text(20000, u'a');
    Text pattern;
    for (int i = 0; i < 500; ++i) {
        pattern += u"*a";
    }
    EXPECT_FALSE(Like(text, pattern + u"*b"));
}

TEST(LikeTest, RowsAreChosenByPattern) {
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE WHERE TSITE_LIBELLE LIKE 'p*' ORDER BY 1"),
              (Lines{"'PA'", "'PAR'"}));
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE WHERE TSITE_CODE NOT LIKE '[a-z]??*' ORDER BY 1"),
              (Lines{"'PA'"}));
    EXPECT_EQ(Eval("#12/31/2026# Like '*2026'"), "True");
    EXPECT_EQ(Eval("12 Like '1?'"), "True");
}

}  // namespace
}  // namespace quardele::sql
