// The markup of the text above a printed grid.
#include <gtest/gtest.h>

#include <print/header_text.h>

namespace quardele::print {

namespace {

std::vector<HeaderPiece> OnlyLine(const char16_t* markup) {
    const std::vector<HeaderLine> lines = HeaderLines(QString::fromUtf16(markup), 1);
    EXPECT_EQ(lines.size(), 1U);
    return lines.empty() ? std::vector<HeaderPiece>() : lines.front().pieces;
}

TEST(HeaderText, ATextWithoutMarksStandsOnTheLeft) {
    const auto pieces = OnlyLine(u"Parc de véhicules");
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_EQ(pieces[0].text, QStringLiteral("Parc de véhicules"));
    EXPECT_EQ(pieces[0].place, Place::Left);
    EXPECT_FALSE(pieces[0].bold);
}

TEST(HeaderText, TheHeaderOfAVehiclesHistoryIsOneBoldLineAndABlankOne) {
    const auto lines = HeaderLines(
        QStringLiteral("/c/fb1/fz\"14\"Immatriculation : AB-123-CD          Marque : RENAULT /n/n"), 1);
    ASSERT_EQ(lines.size(), 2U);
    ASSERT_EQ(lines[0].pieces.size(), 1U);
    const HeaderPiece& piece = lines[0].pieces[0];
    EXPECT_EQ(piece.text, QStringLiteral("Immatriculation : AB-123-CD          Marque : RENAULT "));
    EXPECT_EQ(piece.place, Place::Centre);
    EXPECT_TRUE(piece.bold);
    EXPECT_EQ(piece.points, 14);
    EXPECT_TRUE(lines[1].pieces.empty());
    EXPECT_EQ(lines[1].points, 14);
}

TEST(HeaderText, MarksHoldOnOverTheEndOfALine) {
    const auto lines = HeaderLines(QStringLiteral("/fb1/ra/nb/fb0c"), 1);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[1].pieces[0].bold);
    EXPECT_EQ(lines[1].pieces[0].place, Place::Right);
    EXPECT_FALSE(lines[1].pieces[1].bold);
    EXPECT_EQ(lines[1].pieces[1].text, QStringLiteral("c"));
}

TEST(HeaderText, ALineHoldsPiecesOnTheLeftInTheMiddleAndOnTheRight) {
    const auto pieces = OnlyLine(u"/lgauche/cmilieu/rdroite");
    ASSERT_EQ(pieces.size(), 3U);
    EXPECT_EQ(pieces[0].place, Place::Left);
    EXPECT_EQ(pieces[1].place, Place::Centre);
    EXPECT_EQ(pieces[2].place, Place::Right);
}

TEST(HeaderText, ThePageNumberIsThatOfThePage) {
    EXPECT_EQ(HeaderLines(QStringLiteral("Page /p."), 12)[0].pieces[0].text, QStringLiteral("Page 12."));
    EXPECT_TRUE(ShowsPageNumber(QStringLiteral("/rPage /p")));
    EXPECT_FALSE(ShowsPageNumber(QStringLiteral("/rPage")));
}

TEST(HeaderText, ASlashThatIsNoMarkIsATextsOwn) {
    EXPECT_EQ(OnlyLine(u"01/02/2026 A/B /fz14 /fz\"x\" /fb2 /")[0].text,
              QStringLiteral("01/02/2026 A/B /fz14 /fz\"x\" /fb2 /"));
}

TEST(HeaderText, SizesStayBetweenOneAndNinetySixPoints) {
    EXPECT_EQ(OnlyLine(u"/fz\"0\"a")[0].points, 1);
    EXPECT_EQ(OnlyLine(u"/fz\"999\"a")[0].points, 96);
}

TEST(HeaderText, NoMarkupIsNoLine) {
    EXPECT_TRUE(HeaderLines(QString(), 1).empty());
    EXPECT_TRUE(HeaderLines(QStringLiteral("/c/fb1"), 1).empty());
}

}  // namespace

}  // namespace quardele::print
