// What stands on which page, and where.
#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QPainter>

#include "report_folder.h"

namespace quardele::engine {

namespace {

using test::ErrorOf;

/// Paper with room for 2000 by 3000 twips.
const QString kSmallPage = QStringLiteral(
    "<page width=\"2200\" height=\"3200\" left=\"100\" top=\"100\" right=\"100\" bottom=\"100\"/>");

QString Section(const QString& content, int height = 300, const QString& attributes = {}) {
    return QStringLiteral("<section height=\"%1\" %2>%3</section>").arg(height).arg(attributes, content);
}
QString Text(const QString& text, int y = 0, const QString& attributes = {}) {
    return QStringLiteral("<text x=\"0\" y=\"%2\" width=\"2000\" height=\"300\" %3>%1</text>")
        .arg(text)
        .arg(y)
        .arg(attributes);
}
QString Field(const QString& value, int y = 0, const QString& attributes = {}) {
    return QStringLiteral("<field x=\"0\" y=\"%2\" width=\"2000\" height=\"300\" value=\"%1\" %3/>")
        .arg(value)
        .arg(y)
        .arg(attributes);
}
QString Area(const QString& name, const QString& sections) {
    return QStringLiteral("<%1>%2</%1>").arg(name, sections);
}
const QString kSorted = QStringLiteral("<sort><by field=\"{TVEH.IMMAT}\"/></sort>");

class PagesTest : public testing::Test {
 protected:
    void SetUp() override { folder_.MakeVehicles(); }

    [[nodiscard]] QStringList Pages(const QString& elements) const {
        QStringList pages = folder_.Pages(elements);
        return pages.replaceInStrings(QStringLiteral("\n"), QStringLiteral(" "));
    }
    /// Where a text stands on the first page, inside the margins of kSmallPage.
    [[nodiscard]] static QRectF PlaceOf(const Document& document, const QString& text) {
        const std::vector<Occurrence> found = document.Find(text);
        return found.empty() ? QRectF() : found.front().area.translated(-100, -100);
    }

    test::ReportFolder folder_;
};

TEST_F(PagesTest, DetailsFillThePagesFromTheTop) {
    EXPECT_EQ(Pages(kSmallPage + kSorted +
                    Area(QStringLiteral("details"), Section(Field(QStringLiteral("{TVEH.IMMAT}")), 1400))),
              QStringList({QStringLiteral("AA-111-AA BB-222-BB"), QStringLiteral("CC-333-CC DD-444-DD"),
                           QStringLiteral("EE-555-EE")}));
}

TEST_F(PagesTest, HeadersAndFootersStandOnEveryPageWithItsNumber) {
    EXPECT_EQ(
        Pages(kSmallPage + kSorted +
              Area(QStringLiteral("pageHeader"), Section(Text(QStringLiteral("Parc")))) +
              Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)")), 1100)) +
              Area(QStringLiteral("pageFooter"),
                   Section(Field(QStringLiteral(
                       "PageNumber &amp; '/' &amp; TotalPageCount &amp; ' ' &amp; {TVEH.IMMAT}"))))),
        QStringList({QStringLiteral("Parc A B 1/3 BB-222-BB"), QStringLiteral("Parc C D 2/3 DD-444-DD"),
                     QStringLiteral("Parc E 3/3 EE-555-EE")}));
}

TEST_F(PagesTest, ThePageFooterStandsAtTheFootOfThePage) {
    const auto document =
        folder_.Open(kSmallPage + Area(QStringLiteral("pageFooter"), Section(Text(QStringLiteral("Pied")))))
            ->Compose();
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("Pied")).top(), 2700);
}

TEST_F(PagesTest, TheReportHeaderAndFooterStandOnce) {
    const QStringList pages = Pages(
        kSmallPage + kSorted + Area(QStringLiteral("reportHeader"), Section(Text(QStringLiteral("Début")))) +
        Area(QStringLiteral("pageHeader"), Section(Text(QStringLiteral("Haut")))) +
        Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)")), 1000)) +
        Area(QStringLiteral("reportFooter"), Section(Field(QStringLiteral("'Fin ' &amp; {TVEH.IMMAT}")))));
    EXPECT_EQ(pages, QStringList({QStringLiteral("Haut Début A B"), QStringLiteral("Haut C D"),
                                  QStringLiteral("Haut E Fin EE-555-EE")}));
}

TEST_F(PagesTest, GroupsHaveHeadersAndFootersAroundTheirRecords) {
    EXPECT_EQ(Pages(QStringLiteral("<group by=\"{TVEH.MARQUE}\" direction=\"descending\">") +
                    Area(QStringLiteral("header"), Section(Field(QStringLiteral("{TVEH.MARQUE}")))) +
                    Area(QStringLiteral("footer"), Section(Text(QStringLiteral("-")))) +
                    QStringLiteral("</group>") + kSorted +
                    Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)"))))),
              QStringList(QStringLiteral("Renault A E - Peugeot C D - Citroën B -")));
}

TEST_F(PagesTest, AnInnerGroupBeginsAnewWithTheOuterOne) {
    EXPECT_EQ(
        Pages(QStringLiteral("<group by=\"{TVEH.CLI}\">") +
              Area(QStringLiteral("header"), Section(Field(QStringLiteral("{TVEH.CLI}")))) +
              Area(QStringLiteral("footer"), Section(Text(QStringLiteral("fin")))) +
              QStringLiteral("</group><group by=\"{TVEH.MARQUE}\">") +
              Area(QStringLiteral("header"), Section(Field(QStringLiteral("{TVEH.MARQUE}")))) +
              QStringLiteral("</group>") + kSorted +
              Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)"))))),
        QStringList(QStringLiteral("DUP Renault A E fin MAR Citroën B Peugeot C fin ZZZ Peugeot D fin")));
}

TEST_F(PagesTest, AGroupsHeaderNeverStandsAloneAtTheEndOfAPage) {
    const QStringList pages =
        Pages(kSmallPage + QStringLiteral("<group by=\"{TVEH.MARQUE}\">") +
              Area(QStringLiteral("header"), Section(Field(QStringLiteral("{TVEH.MARQUE}")), 400)) +
              QStringLiteral("</group>") + kSorted +
              Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)")), 700)));
    // 400 + 700, 400 + 700 + 700: 2900. The next header would fit into nothing.
    EXPECT_EQ(pages, QStringList({QStringLiteral("Citroën B Peugeot C D"), QStringLiteral("Renault A E")}));
    const QStringList tight =
        Pages(kSmallPage + QStringLiteral("<group by=\"{TVEH.MARQUE}\">") +
              Area(QStringLiteral("header"), Section(Field(QStringLiteral("{TVEH.MARQUE}")), 400)) +
              QStringLiteral("</group>") + kSorted +
              Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)")), 2000)));
    EXPECT_EQ(tight[0], QStringLiteral("Citroën B")) << "the header of the next would still have fitted";
    EXPECT_EQ(tight[1], QStringLiteral("Peugeot C"));
}

TEST_F(PagesTest, AHeaderStandsAboveTheBeginningOfWhatIsTooHighForItsPage) {
    for (const int height : {2800, 4000}) {
        const QString group =
            QStringLiteral("<selection>{TVEH.IMMAT}='AA-111-AA'</selection><group by=\"{TVEH.MARQUE}\">") +
            Area(QStringLiteral("header"), Section(Field(QStringLiteral("{TVEH.MARQUE}")), 400)) +
            QStringLiteral("</group>") +
            Area(QStringLiteral("details"),
                 Section(Field(QStringLiteral("{TVEH.IMMAT}")) + Text(QStringLiteral("fin"), height - 300),
                         height));
        EXPECT_EQ(Pages(kSmallPage + group),
                  QStringList({QStringLiteral("Renault AA-111-AA"), QStringLiteral("fin")}))
            << height;
        EXPECT_EQ(
            Pages(kSmallPage +
                  Area(QStringLiteral("reportHeader"), Section(Text(QStringLiteral("tête")), 500)) + group),
            QStringList({QStringLiteral("tête"), QStringLiteral("Renault AA-111-AA"), QStringLiteral("fin")}))
            << height;
    }
}

TEST_F(PagesTest, AHeaderGoesToTheNewPageThatItsDetailAsksFor) {
    EXPECT_EQ(Pages(kSmallPage + QStringLiteral("<group by=\"{TVEH.MARQUE}\">") +
                    Area(QStringLiteral("header"), Section(Field(QStringLiteral("{TVEH.MARQUE}")), 400)) +
                    QStringLiteral("</group>") + kSorted +
                    Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)")),
                                                            300, QStringLiteral("newPageBefore=\"true\"")))),
              QStringList({QStringLiteral("Citroën B"), QStringLiteral("Peugeot C"), QStringLiteral("D"),
                           QStringLiteral("Renault A"), QStringLiteral("E")}));
}

TEST_F(PagesTest, AGroupIsNotMovedForARoomThatRepeatedHeadersTake) {
    EXPECT_EQ(
        Pages(kSmallPage + QStringLiteral("<selection>{TVEH.CLI}='DUP'</selection>") + kSorted +
              Area(QStringLiteral("reportHeader"), Section(Text(QStringLiteral("tête")), 500)) +
              QStringLiteral("<group by=\"{TVEH.CLI}\" repeatHeader=\"true\">") +
              Area(QStringLiteral("header"), Section(Field(QStringLiteral("{TVEH.CLI}")), 1000)) +
              QStringLiteral("</group><group by=\"{TVEH.MARQUE}\" keepTogether=\"true\"/>") +
              Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)")), 1250))),
        QStringList({QStringLiteral("tête DUP A"), QStringLiteral("DUP E")}));
}

TEST_F(PagesTest, AFooterThatItsRecordLeavesOutKeepsItsRoom) {
    const auto document =
        folder_
            .Open(kSmallPage + kSorted +
                  Area(QStringLiteral("details"), Section(Field(QStringLiteral("{TVEH.IMMAT}")), 1000)) +
                  Area(QStringLiteral("pageFooter"),
                       Section(Text(QStringLiteral("Pied")), 300,
                               QStringLiteral("suppress=\"{TVEH.IMMAT} = 'AA-111-AA'\""))))
            ->Compose();
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("Pied")).top(), 2700);
    EXPECT_EQ(document->TextOf(1), QStringLiteral("AA-111-AA\nBB-222-BB\nPied"));
}

TEST_F(PagesTest, AFooterThatItsPageLeavesOutGivesItsRoom) {
    EXPECT_EQ(
        Pages(kSmallPage + kSorted +
              Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)")), 1000)) +
              Area(QStringLiteral("pageFooter"), Section(Text(QStringLiteral("Pied")), 300,
                                                         QStringLiteral("suppress=\"PageNumber = 1\"")))),
        QStringList({QStringLiteral("A B C"), QStringLiteral("D E Pied")}));
}

TEST_F(PagesTest, ASectionIsAtLeastAsHighAsItsObjects) {
    for (const char* height : {"", "height=\"0\"", "height=\"200\""}) {
        const auto document =
            folder_
                .Open(kSmallPage +
                      QStringLiteral("<reportHeader><section %1><text y=\"100\" width=\"900\" "
                                     "height=\"300\">un</text></section>")
                          .arg(QLatin1StringView(height)) +
                      Section(Text(QStringLiteral("deux"))) + QStringLiteral("</reportHeader>"))
                ->Compose();
        EXPECT_EQ(document->TextOf(1), QStringLiteral("un\ndeux")) << height;
        EXPECT_EQ(PlaceOf(*document, QStringLiteral("deux")).top(), 400) << height;
    }
}

TEST_F(PagesTest, ATextWithoutAHeightTakesALine) {
    const auto document =
        folder_
            .Open(kSmallPage +
                  QStringLiteral("<reportHeader><section><text width=\"900\">un</text><field "
                                 "x=\"1000\" width=\"900\" value=\"'deux'\"/></section>") +
                  Section(Text(QStringLiteral("trois"))) + QStringLiteral("</reportHeader>"))
            ->Compose();
    EXPECT_EQ(document->TextOf(1), QStringLiteral("un\tdeux\ntrois"));
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("trois")).top(),
              PlaceOf(*document, QStringLiteral("un")).height());
}

TEST_F(PagesTest, WhatIsHigherThanAPageLeavesNoBlankOne) {
    QImage logo(10, 50, QImage::Format_RGB32);
    logo.fill(Qt::blue);
    ASSERT_TRUE(logo.save(folder_.NativePath(QStringLiteral("logo.png"))));
    const QString picture =
        QStringLiteral("<picture y=\"%1\" width=\"2000\" height=\"5000\" file=\"logo.png\"/>");
    EXPECT_EQ(Pages(kSmallPage + Area(QStringLiteral("reportHeader"), Section(picture.arg(0), 5000))).size(),
              1);
    EXPECT_EQ(Pages(kSmallPage +
                    Area(QStringLiteral("reportHeader"),
                         Section(Text(QStringLiteral("haut")) + picture.arg(400), 5400)) +
                    Area(QStringLiteral("reportFooter"), Section(Text(QStringLiteral("bas"))))),
              QStringList({QStringLiteral("haut"), QString(), QStringLiteral("bas")}));
}

TEST_F(PagesTest, ASlantingLineKeepsItsSlopeWhenItIsParted) {
    const auto document =
        folder_
            .Open(kSmallPage +
                  Area(QStringLiteral("reportHeader"),
                       Section(QStringLiteral("<line width=\"2000\" height=\"4000\" thickness=\"40\"/>"),
                               4000)))
            ->Compose();
    const auto inkAt = [&](int page, int x, int y) {
        QImage image(200, 300, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.scale(0.1, 0.1);
        document->Paint(painter, page);
        painter.end();
        return image.pixelColor(x, y).lightness() < 128;
    };
    ASSERT_EQ(document->Pages(), 2);
    EXPECT_TRUE(inkAt(1, 75, 150));
    EXPECT_TRUE(inkAt(2, 175, 50));
}

TEST_F(PagesTest, AGroupThatIsKeptTogetherGoesToTheNextPageAsAWhole) {
    const auto pages = [&](const QString& attributes) {
        return Pages(
            kSmallPage + QStringLiteral("<group by=\"{TVEH.MARQUE}\" %1/>").arg(attributes) + kSorted +
            Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)")), 1400)));
    };
    EXPECT_EQ(pages({}), QStringList({QStringLiteral("B C"), QStringLiteral("D A"), QStringLiteral("E")}));
    EXPECT_EQ(pages(QStringLiteral("keepTogether=\"true\"")),
              QStringList({QStringLiteral("B"), QStringLiteral("C D"), QStringLiteral("A E")}));
}

TEST_F(PagesTest, AGroupsHeaderIsRepeatedOnThePagesItGoesOnOn) {
    const QStringList pages =
        Pages(kSmallPage + QStringLiteral("<group by=\"{TVEH.CLI}\" repeatHeader=\"true\">") +
              Area(QStringLiteral("header"), Section(Field(QStringLiteral("{TVEH.CLI}")), 400)) +
              Area(QStringLiteral("footer"), Section(Text(QStringLiteral("fin")), 400)) +
              QStringLiteral("</group>") + kSorted +
              Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)")), 1400)));
    EXPECT_EQ(pages,
              QStringList({QStringLiteral("DUP A"), QStringLiteral("DUP E fin"), QStringLiteral("MAR B"),
                           QStringLiteral("MAR C fin"), QStringLiteral("ZZZ D fin")}));
}

TEST_F(PagesTest, SectionsMayAskForANewPage) {
    EXPECT_EQ(Pages(kSorted +
                    Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)")),
                                                            300, QStringLiteral("newPageBefore=\"true\""))))
                  .size(),
              5);
    EXPECT_EQ(Pages(kSorted +
                    Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)")),
                                                            300, QStringLiteral("newPageAfter=\"true\""))) +
                    Area(QStringLiteral("reportFooter"), Section(Text(QStringLiteral("Fin"))))),
              QStringList({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D"),
                           QStringLiteral("E"), QStringLiteral("Fin")}));
}

TEST_F(PagesTest, SectionsAndObjectsAreLeftOutByFormula) {
    EXPECT_EQ(
        Pages(kSorted + Area(QStringLiteral("details"),
                             Section(Field(QStringLiteral("{TVEH.IMMAT}")), 300,
                                     QStringLiteral("suppress=\"{TVEH.KM} &lt; 30000\"")) +
                                 Section(Text(QStringLiteral("sans note"), 0,
                                              QStringLiteral("suppress=\"not IsNull({TVEH.NOTE})\""))))),
        QStringList(QStringLiteral("CC-333-CC sans note DD-444-DD EE-555-EE")));
}

TEST_F(PagesTest, ASectionWithoutTextsIsLeftOutWhenItIsBlank) {
    EXPECT_EQ(folder_
                  .Open(kSmallPage + kSorted +
                        Area(QStringLiteral("details"),
                             Section(Text(QStringLiteral("Note")) + Field(QStringLiteral("{TVEH.NOTE}"), 300),
                                     700, QStringLiteral("suppressBlank=\"true\""))))
                  ->Compose()
                  ->Find(QStringLiteral("Note"))
                  .size(),
              4U);
}

TEST_F(PagesTest, TheFirstPageOnlyMayBeLeftOutByItsNumber) {
    EXPECT_EQ(
        Pages(kSmallPage + kSorted +
              Area(QStringLiteral("pageHeader"), Section(Text(QStringLiteral("suite")), 300,
                                                         QStringLiteral("suppress=\"PageNumber = 1\""))) +
              Area(QStringLiteral("details"), Section(Field(QStringLiteral("Left({TVEH.IMMAT}, 1)")), 1000))),
        QStringList({QStringLiteral("A B C"), QStringLiteral("suite D E")}));
    EXPECT_EQ(
        ErrorOf([&] {
            static_cast<void>(Pages(Area(QStringLiteral("details"),
                                         Section({}, 300, QStringLiteral("suppress=\"PageNumber = 1\"")))));
        }).substr(0, 5),
        "3001 ");
    EXPECT_EQ(ErrorOf([&] {
                  static_cast<void>(
                      Pages(Area(QStringLiteral("pageHeader"),
                                 Section({}, 300, QStringLiteral("suppress=\"TotalPageCount = 1\"")))));
              }).substr(0, 5),
              "3001 ");
}

const QString kLong =
    QStringLiteral("Remplacement de la courroie de distribution et de la pompe à eau avec vidange");

TEST_F(PagesTest, ATextThatGrowsPushesDownWhatStandsBelow) {
    const auto document =
        folder_
            .Open(kSmallPage + Area(QStringLiteral("reportHeader"),
                                    Section(Text(kLong, 0, QStringLiteral("grow=\"true\"")) +
                                                Text(QStringLiteral("dessous"), 300),
                                            700) +
                                        Section(Text(QStringLiteral("suivant")))))
            ->Compose();
    const qreal line = PlaceOf(*document, QStringLiteral("Remplacement")).height();
    const qreal lines = PlaceOf(*document, QStringLiteral("vidange")).top() / line + 1;
    EXPECT_GT(lines, 3);
    const qreal growth = lines * line - 300;
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("dessous")).top(), 300 + growth);
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("suivant")).top(), 700 + growth);
    EXPECT_TRUE(document->TextOf(1).remove(u'\n').remove(u' ').startsWith(QString(kLong).remove(u' ')));
}

TEST_F(PagesTest, ATextThatDoesNotGrowSaysThatItIsCut) {
    const QString text =
        folder_.Pages(kSmallPage + Area(QStringLiteral("reportHeader"), Section(Text(kLong)))).value(0);
    EXPECT_TRUE(text.endsWith(u'…')) << text.toStdString();
    EXPECT_FALSE(text.contains(QStringLiteral("vidange")));
}

TEST_F(PagesTest, AWordThatIsTooLongIsBrokenWhenItsTextGrows) {
    const QString word = QStringLiteral("VF1MA000056123456789012345678901234567890");
    const QString text =
        folder_
            .Pages(kSmallPage + Area(QStringLiteral("reportHeader"),
                                     Section(Text(word, 0, QStringLiteral("grow=\"true\"")))))
            .value(0);
    EXPECT_TRUE(text.contains(u'\n'));
    EXPECT_EQ(QString(text).remove(u'\n'), word);
}

TEST_F(PagesTest, LinesOfAMemoStayLines) {
    EXPECT_EQ(
        folder_.Pages(Area(
            QStringLiteral("reportHeader"),
            Section(Field(
                QStringLiteral("'un' &amp; Chr(13) &amp; Chr(10) &amp; 'deux' &amp; Chr(13) &amp; 'trois'"),
                0, QStringLiteral("grow=\"true\""))))),
        QStringList(QStringLiteral("un\ndeux\ntrois")));
}

TEST_F(PagesTest, ALineBreakOfAnyKindIsOneWhereATextDoesNotGrow) {
    for (const char* lineBreak : {"Chr(13)", "Chr(10)", "Chr(13) &amp; Chr(10)"}) {
        EXPECT_EQ(folder_.Pages(Area(QStringLiteral("reportHeader"),
                                     QStringLiteral("<section height=\"900\"><field width=\"2000\" "
                                                    "height=\"900\" value=\"'un' &amp; %1 &amp; 'deux'\"/>"
                                                    "</section>")
                                         .arg(QLatin1StringView(lineBreak)))),
                  QStringList(QStringLiteral("un\ndeux")))
            << lineBreak;
    }
}

TEST_F(PagesTest, ASectionHigherThanAPageGoesOnOnTheNextWithoutLosingALine) {
    QStringList words;
    for (int i = 0; i < 60; ++i) {
        words.push_back(QStringLiteral("mot%1").arg(i));
    }
    const QStringList pages = folder_.Pages(
        kSmallPage + Area(QStringLiteral("pageHeader"), Section(Text(QStringLiteral("Haut")))) +
        Area(QStringLiteral("reportHeader"),
             Section(Text(words.join(QStringLiteral("&#10;")), 0, QStringLiteral("grow=\"true\"")))));
    EXPECT_GT(pages.size(), 4);
    QStringList seen;
    for (const QString& page : pages) {
        QStringList lines = page.split(u'\n');
        EXPECT_EQ(lines.takeFirst(), QStringLiteral("Haut"));
        seen += lines;
    }
    EXPECT_EQ(seen, words);
}

TEST_F(PagesTest, ASectionThatMayBePartedFillsThePage) {
    const auto pages = [&](const QString& attributes) {
        return folder_.Pages(kSmallPage +
                             Area(QStringLiteral("reportHeader"),
                                  Section(Text(QStringLiteral("tête")), 2000) +
                                      Section(Text(QStringLiteral("un")) + Text(QStringLiteral("deux"), 800),
                                              1600, attributes)));
    };
    EXPECT_EQ(pages({}), QStringList({QStringLiteral("tête"), QStringLiteral("un\ndeux")}));
    EXPECT_EQ(pages(QStringLiteral("keepTogether=\"false\"")),
              QStringList({QStringLiteral("tête\nun"), QStringLiteral("deux")}));
}

TEST_F(PagesTest, ObjectsStandAtTheirPlacesAndSides) {
    const auto document =
        folder_
            .Open(kSmallPage +
                  Area(QStringLiteral("reportHeader"),
                       Section(Text(QStringLiteral("gauche")) +
                                   Text(QStringLiteral("milieu"), 300, QStringLiteral("align=\"center\"")) +
                                   Text(QStringLiteral("droite"), 600, QStringLiteral("align=\"right\"")),
                               900)))
            ->Compose();
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("gauche")).left(), 0);
    EXPECT_NEAR(PlaceOf(*document, QStringLiteral("milieu")).center().x(), 1000, 1);
    EXPECT_NEAR(PlaceOf(*document, QStringLiteral("droite")).right(), 2000, 1);
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("droite")).top(), 600);
}

TEST_F(PagesTest, ValuesAreWrittenAfterTheirFormats) {
    EXPECT_EQ(
        Pages(QStringLiteral("<selection>{TVEH.IMMAT}='AA-111-AA'</selection>") +
              Area(QStringLiteral("details"),
                   Section(Field(QStringLiteral("{TVEH.KM}"), 0, QStringLiteral("format=\"#,##0 km\"")) +
                               Field(QStringLiteral("{TVEH.ACHAT}"), 300,
                                     QStringLiteral("format=\"dd/mm/yyyy\"")) +
                               Field(QStringLiteral("{TVEH.ACHAT}"), 600) +
                               Field(QStringLiteral("{TVEH.KM} / 3"), 900, QStringLiteral("format=\"0.00\"")),
                           1200))),
        QStringList(QStringLiteral("10\u00A0000 km 31/01/2019 31/01/2019 3333,33")));
}

QString Cells(const QStringList& suppressed) {
    QString cells;
    for (int i = 1; i <= 7; ++i) {
        cells +=
            QStringLiteral(
                "<cell height=\"300\" suppress=\"%2\"><text width=\"900\" height=\"300\">c%1</text></cell>")
                .arg(i)
                .arg(suppressed.contains(QString::number(i)) ? QStringLiteral("true") : QString());
    }
    return QStringLiteral("<flow x=\"0\" y=\"300\" width=\"2000\" columns=\"2\" gap=\"100\">%1</flow>")
        .arg(cells);
}

TEST_F(PagesTest, AFlowFillsItsColumnsDownwards) {
    const auto document =
        folder_
            .Open(kSmallPage + Area(QStringLiteral("reportHeader"),
                                    Section(Cells({}), 400) + Section(Text(QStringLiteral("suite")))))
            ->Compose();
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("c1")).topLeft(), QPointF(0, 300));
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("c4")).topLeft(), QPointF(0, 1200));
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("c5")).topLeft(), QPointF(1050, 300));
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("c7")).topLeft(), QPointF(1050, 900));
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("suite")).top(), 400 + 1200);
}

TEST_F(PagesTest, ACellThatIsLeftOutLeavesNoHole) {
    const auto document =
        folder_
            .Open(kSmallPage +
                  Area(QStringLiteral("reportHeader"),
                       Section(Cells({QStringLiteral("1"), QStringLiteral("4"), QStringLiteral("5")}), 400)))
            ->Compose();
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("c2")).topLeft(), QPointF(0, 300));
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("c3")).topLeft(), QPointF(0, 600));
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("c6")).topLeft(), QPointF(1050, 300));
    EXPECT_TRUE(document->Find(QStringLiteral("c4")).empty());
}

TEST_F(PagesTest, CellsThatGrowKeepTheirRowTogether) {
    const QString flow = QStringLiteral(
        "<flow width=\"2000\" columns=\"2\">"
        "<cell height=\"300\"><text width=\"950\" height=\"300\" grow=\"true\">a&#10;b&#10;c</text></cell>"
        "<cell height=\"300\"><text width=\"950\" height=\"300\">d</text></cell>"
        "<cell height=\"300\"><text width=\"950\" height=\"300\">e</text></cell></flow>");
    const auto document =
        folder_.Open(kSmallPage + Area(QStringLiteral("reportHeader"), Section(flow, 0)))->Compose();
    const qreal line = PlaceOf(*document, QStringLiteral("a")).height();
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("d")).top(), 3 * line);
    EXPECT_EQ(PlaceOf(*document, QStringLiteral("e")).top(), 0);
}

TEST_F(PagesTest, AnEmptyReportIsOnePage) {
    EXPECT_EQ(Pages({}), QStringList(QString()));
}

TEST_F(PagesTest, HeadersThatLeaveNoRoomAreRefused) {
    EXPECT_EQ(
        ErrorOf([&] {
            static_cast<void>(Pages(kSmallPage + Area(QStringLiteral("pageHeader"), Section({}, 2900))));
        }).substr(0, 5),
        "3001 ");
}

TEST_F(PagesTest, PicturesMayLieBelowTheReportsFolder) {
    QImage logo(10, 10, QImage::Format_RGB32);
    logo.fill(Qt::blue);
    ASSERT_TRUE(QDir(folder_.NativePath({})).mkpath(QStringLiteral("images")));
    ASSERT_TRUE(logo.save(folder_.NativePath(QStringLiteral("images/logo.png"))));
    for (const char* file : {"images/logo.png", "images\\logo.png"}) {
        EXPECT_EQ(ErrorOf([&] {
                      static_cast<void>(Pages(
                          Area(QStringLiteral("pageHeader"),
                               Section(QStringLiteral("<picture width=\"300\" height=\"300\" file=\"%1\"/>")
                                           .arg(QLatin1StringView(file))))));
                  }),
                  "");
    }
}

TEST_F(PagesTest, PicturesThatAreMissingOrNoneAreTold) {
    folder_.WriteFile(QStringLiteral("logo.png"), "not a picture");
    const auto complaint = [&](const QString& file) {
        return ErrorOf([&] {
            static_cast<void>(Pages(Area(
                QStringLiteral("pageHeader"),
                Section(QStringLiteral("<picture width=\"300\" height=\"300\" file=\"%1\"/>").arg(file)))));
        });
    };
    EXPECT_EQ(complaint(QStringLiteral("logo.png")), "481 Image incorrecte : « logo.png »");
    EXPECT_EQ(complaint(QStringLiteral("absent.png")), "53 Fichier introuvable : « absent.png »");
}

}  // namespace

}  // namespace quardele::engine
