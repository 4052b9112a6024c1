#include <basic/date_literal.h>

#include <string>

#include <gtest/gtest.h>

#include <basic/date.h>

namespace quardele::basic {
namespace {

std::string Read(TextView text) {
    const auto date = ReadDateLiteral(text);
    return date ? ToUtf8(WriteDateLiteral(*date)) : "none";
}

TEST(DateLiteralTest, TheMonthComesFirst) {
    EXPECT_EQ(Read(u"12/31/2026"), "#12/31/2026#");
    EXPECT_EQ(Read(u"1/2/2026"), "#01/02/2026#");
    EXPECT_EQ(Read(u"01-02-2026"), "#01/02/2026#");
    EXPECT_EQ(Read(u" 1/2/2026 "), "#01/02/2026#");
}

TEST(DateLiteralTest, DayAndMonthChangePlacesWhenTheFirstCanBeNoMonth) {
    EXPECT_EQ(Read(u"31/12/2026"), "#12/31/2026#");
    EXPECT_EQ(Read(u"13/12/2026"), "#12/13/2026#");
    EXPECT_EQ(Read(u"31/31/2026"), "none");
}

TEST(DateLiteralTest, TwoDigitYearsBelongToTheYearsAround2000) {
    EXPECT_EQ(Read(u"12/31/20"), "#12/31/2020#");
    EXPECT_EQ(Read(u"12/31/29"), "#12/31/2029#");
    EXPECT_EQ(Read(u"12/31/30"), "#12/31/1930#");
    EXPECT_EQ(Read(u"12/31/99"), "#12/31/1999#");
}

TEST(DateLiteralTest, TheYearMayComeFirstAndTheMonthByName) {
    EXPECT_EQ(Read(u"2026-12-31"), "#12/31/2026#");
    EXPECT_EQ(Read(u"31-dec-2026"), "#12/31/2026#");
    EXPECT_EQ(Read(u"December 31, 2026"), "#12/31/2026#");
}

TEST(DateLiteralTest, AMissingYearIsTheCurrentOne) {
    const auto date = ReadDateLiteral(u"12/31");
    ASSERT_TRUE(date);
    EXPECT_EQ(CivilOf(*date).year, CivilOf(Today()).year);
}

TEST(DateLiteralTest, ATimeMayFollowOrStandAlone) {
    EXPECT_EQ(Read(u"12/31/2026 10:30"), "#12/31/2026 10:30:00#");
    EXPECT_EQ(Read(u"12/31/2026 10:30:15 PM"), "#12/31/2026 22:30:15#");
    EXPECT_EQ(Read(u"12/31/2026 12:00 am"), "#12/31/2026#");
    EXPECT_EQ(Read(u"18:00"), "#12/30/1899 18:00:00#");
    EXPECT_EQ(Read(u"12/29/1899 06:00"), "#12/29/1899 06:00:00#");
}

TEST(DateLiteralTest, OtherTextsAreNoDates) {
    for (const TextView text :
         {u"", u"12", u"2/30/2026", u"12/31/2026 25:00", u"12/31/2026 10", u"a/b/c", u"1/2/3/4", u"12345/1/1",
          u"10:30 xm", u"13:00 pm", u"12/31/2026 10:30 PM x"}) {
        EXPECT_EQ(Read(text), "none") << ToUtf8(text);
    }
}

}  // namespace
}  // namespace quardele::basic
