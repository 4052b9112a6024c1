#include <basic/text.h>

#include "support.h"

namespace quardele::basic {
namespace {

TEST(TrimTest, TakesBlanksAwayAtBothEndsOnly) {
    EXPECT_EQ(Trim(u"  a b  "), u"a b");
    EXPECT_EQ(LTrim(u"  a b  "), u"a b  ");
    EXPECT_EQ(RTrim(u"  a b  "), u"  a b");
}

TEST(TrimTest, TextOfBlanksBecomesEmpty) {
    EXPECT_EQ(Trim(u"   "), u"");
    EXPECT_EQ(LTrim(u"   "), u"");
    EXPECT_EQ(RTrim(u"   "), u"");
    EXPECT_EQ(Trim(u""), u"");
}

TEST(TrimTest, OtherWhiteSpaceStays) {
    EXPECT_EQ(Trim(u"\t a\r\n"), u"\t a\r\n");
    EXPECT_EQ(Trim(u"\u00A0a\u00A0"), u"\u00A0a\u00A0");
}

TEST(LeftRightTest, TakeSoManyUnits) {
    EXPECT_EQ(Left(u"véhicule", 3), u"véh");
    EXPECT_EQ(Right(u"véhicule", 3), u"ule");
    EXPECT_EQ(Left(u"abc", 0), u"");
    EXPECT_EQ(Right(u"abc", 0), u"");
}

TEST(LeftRightTest, ShorterTextComesWhole) {
    EXPECT_EQ(Left(u"ab", 5), u"ab");
    EXPECT_EQ(Right(u"ab", 5), u"ab");
    EXPECT_EQ(Left(u"", 1), u"");
}

TEST(LeftRightTest, CountUnitsNotCharacters) {
    EXPECT_EQ(Left(u"\U0001F697x", 1), Text(1, char16_t{0xD83D}));
    EXPECT_EQ(Right(u"\U0001F697x", 2), (Text{char16_t{0xDE97}, u'x'}));
}

TEST(LeftRightTest, NegativeCountFails) {
    EXPECT_EQ(ErrorOf([] { (void)Left(u"abc", -1); }), 5);
    EXPECT_EQ(ErrorOf([] { (void)Right(u"abc", -1); }), 5);
}

TEST(MidTest, PositionsStartAtOne) {
    EXPECT_EQ(Mid(u"abcde", 1, 2), u"ab");
    EXPECT_EQ(Mid(u"abcde", 2, 3), u"bcd");
    EXPECT_EQ(Mid(u"abcde", 4), u"de");
    EXPECT_EQ(Mid(u"abcde", 4, 99), u"de");
    EXPECT_EQ(Mid(u"abcde", 2, 0), u"");
}

TEST(MidTest, StartBehindTheEndGivesEmptyText) {
    EXPECT_EQ(Mid(u"abc", 4), u"");
    EXPECT_EQ(Mid(u"abc", 400, 2), u"");
    EXPECT_EQ(Mid(u"", 1), u"");
}

TEST(MidTest, StartBelowOneOrNegativeCountFails) {
    EXPECT_EQ(ErrorOf([] { (void)Mid(u"abc", 0); }), 5);
    EXPECT_EQ(ErrorOf([] { (void)Mid(u"abc", -1, 2); }), 5);
    EXPECT_EQ(ErrorOf([] { (void)Mid(u"abc", 1, -1); }), 5);
}

TEST(InStrTest, GivesThePositionOfTheFirstOccurrence) {
    EXPECT_EQ(InStr(u"a where b where", u"where"), 3);
    EXPECT_EQ(InStr(4, u"a where b where", u"where"), 11);
    EXPECT_EQ(InStr(11, u"a where b where", u"where"), 11);
    EXPECT_EQ(InStr(u"abc", u"x"), 0);
}

TEST(InStrTest, CaseCounts) {
    EXPECT_EQ(InStr(u"SELECT", u"select"), 0);
}

TEST(InStrTest, EmptyTextIsFoundAtTheStart) {
    EXPECT_EQ(InStr(u"abc", u""), 1);
    EXPECT_EQ(InStr(3, u"abc", u""), 3);
}

TEST(InStrTest, NothingIsFoundInAnEmptyTextOrBehindTheEnd) {
    EXPECT_EQ(InStr(u"", u"a"), 0);
    EXPECT_EQ(InStr(u"", u""), 0);
    EXPECT_EQ(InStr(4, u"abc", u"c"), 0);
    EXPECT_EQ(InStr(4, u"abc", u""), 0);
}

TEST(InStrTest, StartBelowOneFails) {
    EXPECT_EQ(ErrorOf([] { (void)InStr(0, u"abc", u"c"); }), 5);
}

TEST(ReplaceTest, ReplacesEachOccurrenceFromLeftToRight) {
    EXPECT_EQ(Replace(u"a,b,c", u",", u"; "), u"a; b; c");
    EXPECT_EQ(Replace(u"aaa", u"aa", u"b"), u"ba");
    EXPECT_EQ(Replace(u"abc", u"b", u""), u"ac");
    EXPECT_EQ(Replace(u"abc", u"x", u"y"), u"abc");
}

TEST(ReplaceTest, WhatItPutsInIsNotLookedAtAgain) {
    EXPECT_EQ(Replace(u"''", u"'", u"''"), u"''''");
}

TEST(ReplaceTest, NothingToLookForChangesNothing) {
    EXPECT_EQ(Replace(u"abc", u"", u"x"), u"abc");
}

TEST(SpaceTest, GivesBlanks) {
    EXPECT_EQ(Space(3), u"   ");
    EXPECT_EQ(Space(0), u"");
    EXPECT_EQ(ErrorOf([] { (void)Space(-1); }), 5);
}

}  // namespace
}  // namespace quardele::basic
