// The order and equality of texts as statements show them: the file's collation.
#include "sql_fixture.h"

namespace quardele::sql {
namespace {

TEST(CollationOrderTest, HyphensAndApostrophesWeighLeast) {
    EXPECT_EQ(Eval("'coop' < 'co-op'"), "True");
    EXPECT_EQ(Eval("'co-op' < 'coor'"), "True");
    EXPECT_EQ(Eval("'da' < 'd''a'"), "True");
    EXPECT_EQ(Eval("'d''a' < 'db'"), "True");
    EXPECT_EQ(Eval("'co-op' = 'coop'"), "False");
}

TEST(CollationOrderTest, AccentsDecideBehindLetters) {
    EXPECT_EQ(Eval("'cote' < 'côte'"), "True");
    EXPECT_EQ(Eval("'côte' < 'cotez'"), "True");
    EXPECT_EQ(Eval("'E' < 'é'"), "True");
    EXPECT_EQ(Eval("'œuf' = 'oeuf'"), "True");
}

TEST(CollationOrderTest, CaseAndTrailingBlanksCountForNothing) {
    EXPECT_EQ(Eval("'ABC' = 'abc'"), "True");
    EXPECT_EQ(Eval("'abc' = 'abc  '"), "True");
    EXPECT_EQ(Eval("' abc' = 'abc'"), "False");
    EXPECT_EQ(Eval("'É' = 'é'"), "True");
}

TEST(CollationOrderTest, DigitsStandAheadOfLettersAndBlanksAheadOfAll) {
    EXPECT_EQ(Eval("'9' < 'a'"), "True");
    EXPECT_EQ(Eval("'a b' < 'a9'"), "True");
    EXPECT_EQ(Eval("'' < ' a'"), "True");
}

TEST(CollationOrderTest, OrderByFollowsIt) {
    const auto query = Query::Prepare(Workshop(), u"SELECT TCLI_RS FROM TCLI ORDER BY TCLI_RS");
    const RowSet rows = query->Run();
    ASSERT_EQ(rows.Size(), 420U);
    for (std::size_t i = 1; i < rows.Size(); ++i) {
        const std::string left = Shown(rows.Value(i - 1, 0));
        const std::string right = Shown(rows.Value(i, 0));
        if (left != "Null") {
            EXPECT_EQ(Eval(left + " <= " + right), "True") << left << " " << right;
        }
    }
}

}  // namespace
}  // namespace quardele::sql
