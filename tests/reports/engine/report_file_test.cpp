// Report files and what their object model says of them.
#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include "report_folder.h"

namespace quardele::engine {

namespace {

using test::ErrorOf;

class ReportFileTest : public testing::Test {
 protected:
    void SetUp() override { folder_.MakeVehicles(); }

    [[nodiscard]] std::string Complaint(const QString& elements) const {
        return ErrorOf([&] { static_cast<void>(folder_.Open(elements)); });
    }

    test::ReportFolder folder_;
};

constexpr auto kEverything = R"(
<page size="A4" orientation="landscape" left="1020" top="1020" right="1020" bottom="1020"/>
<tables>
 <table name="TVEH" location="C:\X.MDB"/>
 <table name="CLIENT" source="TCLI"/>
 <link from="{TVEH.CLI}" to="{CLIENT.CODE}" join="inner"/>
</tables>
<selection>{TVEH.IMMAT} = 'AA-111-AA'</selection>
<sort><by field="{TVEH.KM}" direction="descending"/></sort>
<formulas><formula name="LIBUSER3">''</formula><formula name="VALUSER3">"x"</formula></formulas>
<reportHeader><section height="500"><text x="1" y="2" width="3000" height="300" size="14.5" bold="true" italic="1"
 underline="true" font="Noto Sans" color="#0B5C8A" align="right" grow="true" suppress="false">Titre &amp; suite</text></section></reportHeader>
<pageHeader><section height="100"><line x="0" y="50" width="5000" height="0" thickness="20" color="#123456"/></section></pageHeader>
<group by="{TVEH.MARQUE}" direction="descending" keepTogether="true" repeatHeader="true">
 <header><section height="300"><field x="0" y="0" width="3000" height="300" value="{TVEH.MARQUE}" format="0"/></section></header>
 <footer><section height="300"><text x="0" y="0" width="3000" height="300">Fin</text></section></footer>
</group>
<details><section height="300" suppress="{TVEH.KM} &lt; 5" suppressBlank="true" keepTogether="false" newPageBefore="true"
 newPageAfter="true"><box x="0" y="0" width="100" height="100" fill="#FFFFFF" radius="40" thickness="0"/></section>
 <section><flow x="0" y="0" width="6000" columns="2" gap="200"><cell height="300" suppress="{@VALUSER3} = ''">
 <text x="0" y="0" width="3000" height="300">Cellule</text></cell></flow></section></details>
<pageFooter><section height="300"><picture x="0" y="0" width="300" height="300" file="logo.png"/></section></pageFooter>
<reportFooter/>
)";

TEST_F(ReportFileTest, AFileThatUsesEverythingIsRead) {
    const auto report = folder_.Open(QString::fromUtf8(kEverything));
    EXPECT_EQ(report->Title(), QStringLiteral("Essai"));
    EXPECT_EQ(report->PageLayout().orientation(), QPageLayout::Landscape);
    EXPECT_EQ(report->PageLayout().margins(QPageLayout::Point), QMarginsF(51, 51, 51, 51));
    EXPECT_EQ(report->RecordSelectionFormula(), QStringLiteral("{TVEH.IMMAT} = 'AA-111-AA'"));
    ASSERT_EQ(report->RecordSortFields().Count(), 1);
    EXPECT_EQ(report->RecordSortFields().Item(1).field, QStringLiteral("KM"));
    EXPECT_EQ(report->RecordSortFields().Item(1).direction, SortDirection::Descending);
}

TEST_F(ReportFileTest, TheModelCountsFromOneInTheOrderOfTheFile) {
    const auto report = folder_.Open(QString::fromUtf8(kEverything));
    ASSERT_EQ(report->Database().Tables().Count(), 2);
    EXPECT_EQ(report->Database().Tables().Item(1).Name(), QStringLiteral("TVEH"));
    EXPECT_EQ(report->Database().Tables().Item(1).Location(), QStringLiteral("C:\\X.MDB"));
    EXPECT_EQ(report->Database().Tables().Item(2).Source(), QStringLiteral("TCLI"));
    ASSERT_EQ(report->FormulaFields().Count(), 2);
    EXPECT_EQ(report->FormulaFields().Item(1).Name(), QStringLiteral("{@LIBUSER3}"));
    EXPECT_EQ(report->FormulaFields().Item(1).Text(), QStringLiteral("''"));
    EXPECT_EQ(static_cast<int>(FormulaField::Kind()), 2);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(report->FormulaFields().Item(3)); }).substr(0, 2), "9 ");
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(report->Database().Tables().Item(0)); }).substr(0, 2), "9 ");
}

TEST_F(ReportFileTest, SectionsTellTheirObjectsThoseInCellsIncluded) {
    const auto report = folder_.Open(QString::fromUtf8(kEverything));
    const Collection<Section> sections = report->Sections();
    ASSERT_EQ(sections.Count(), 7);
    EXPECT_EQ(sections.Item(1).Kind(), SectionKind::ReportHeader);
    EXPECT_EQ(sections.Item(7).Kind(), SectionKind::PageFooter);
    const Collection<ReportObject> cells = sections.Item(5).ReportObjects();
    ASSERT_EQ(cells.Count(), 2);
    EXPECT_EQ(cells.Item(1).Kind(), ObjectKind::Flow);
    EXPECT_EQ(static_cast<int>(cells.Item(2).Kind()), 2);
}

TEST_F(ReportFileTest, TextsCanBeReadAndChanged) {
    const auto report = folder_.Open(QString::fromUtf8(kEverything));
    const Collection<ReportObject> objects = report->Sections().Item(1).ReportObjects();
    auto& text = dynamic_cast<TextObject&>(objects.Item(1));
    EXPECT_EQ(text.Text(), QStringLiteral("Titre & suite"));
    EXPECT_EQ(text.Font().name, QStringLiteral("Noto Sans"));
    EXPECT_EQ(text.Font().points, 14.5);
    EXPECT_TRUE(text.Font().bold && text.Font().italic && text.Font().underline);
    EXPECT_EQ(text.look.alignment, Qt::AlignRight);
    EXPECT_EQ(text.look.color, QColor(QStringLiteral("#0B5C8A")));
    text.SetText(QStringLiteral("Title"));
    EXPECT_EQ(text.Text(), QStringLiteral("Title"));
}

TEST_F(ReportFileTest, AMissingFileIsTold) {
    EXPECT_EQ(
        ErrorOf([] { static_cast<void>(Application().OpenReport(QStringLiteral("Z:\\absent\\X.RPT"))); }),
        "53 Fichier introuvable : « Z:\\absent\\X.RPT »");
    EXPECT_EQ(ErrorOf([&] {
                  static_cast<void>(Application().OpenReport(folder_.WindowsPath(QStringLiteral("."))));
              }).substr(0, 3),
              "53 ");
}

TEST_F(ReportFileTest, WhatIsNoReportIsTold) {
    const auto complaint = [&](const QByteArray& bytes) {
        folder_.WriteFile(QStringLiteral("X.RPT"), bytes);
        return ErrorOf([&] {
            static_cast<void>(Application().OpenReport(folder_.WindowsPath(QStringLiteral("X.RPT"))));
        });
    };
    for (const char* bytes : {"", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 binaire", "<report/>", "<html></html>",
                              "<report xmlns=\"urn:quardele:report\"/>",
                              "<report xmlns=\"urn:quardele:report\" version=\"2\"/>"}) {
        EXPECT_EQ(complaint(bytes).substr(0, 4), "321 ") << bytes;
    }
    EXPECT_EQ(complaint("<report xmlns=\"urn:quardele:report\" version=\"1\"/>"), "");
}

TEST_F(ReportFileTest, ADamagedFileIsToldWhereverItEnds) {
    const QByteArray whole = folder_.Xml(QString::fromUtf8(kEverything)).toUtf8();
    const qsizetype end = whole.lastIndexOf('>');
    for (qsizetype length = 0; length < end; length += 37) {
        folder_.WriteFile(QStringLiteral("X.RPT"), whole.first(length));
        EXPECT_EQ(
            ErrorOf([&] {
                static_cast<void>(Application().OpenReport(folder_.WindowsPath(QStringLiteral("X.RPT"))));
            }).substr(0, 4),
            "321 ")
            << length;
    }
}

TEST_F(ReportFileTest, ErrorsNameTheFileTheLineAndWhatIsWrong) {
    const std::string complaint = Complaint(
        QStringLiteral("\n<details>\n<section>\n<text width=\"900\" widht=\"3\"/></section></details>"));
    EXPECT_EQ(complaint, "321 Format de fichier incorrect : « " +
                             folder_.WindowsPath(QStringLiteral("ESSAI.RPT")).toStdString() +
                             " », ligne 6 : l'attribut « widht » est inconnu.");
}

TEST_F(ReportFileTest, ElementsAttributesAndValuesThatDoNotBelongAreRefused) {
    for (const char* elements :
         {"<detail/>",
          "<details><text/></details>",
          "<details><section><flow width=\"100\"><text/></flow></section></details>",
          "<details><section height=\"-1\"/></details>",
          "<details><section><text height=\"300\">x</text></section></details>",
          "<details><section><text width=\"0\" height=\"300\">x</text></section></details>",
          "<details><section><field height=\"300\" value=\"1\"/></section></details>",
          "<details><section><flow><cell/></flow></section></details>",
          "<details><section><picture width=\"300\" file=\"logo.png\"/></section></details>",
          "<details><section><box width=\"300\"/></section></details>",
          "<details><section><line/></section></details>",
          "<pageHeader><section height=\"300\" newPageBefore=\"true\"/></pageHeader>",
          "<pageFooter><section height=\"300\" keepTogether=\"false\"/></pageFooter>",
          "<pageFooter><section height=\"300\"><text width=\"9\" "
          "grow=\"true\">x</text></section></pageFooter>",
          "<pageFooter><section height=\"300\"><flow width=\"9\"/></section></pageFooter>",
          "<x:details xmlns:x=\"other\"/>",
          "<details><section><text width=\"9\" align=\"\">x</text></section></details>",
          "<details><section><text width=\"9\" x:y=\"1\" xmlns:x=\"other\">x</text></section></details>",
          "<sort><by field=\"{T.F}\" direction=\"\"/></sort>",
          "<page width=\"6000\"/>",
          "<page height=\"6000\"/>",
          "<page width=\"6000\" height=\"6000\" size=\"A4\"/>",
          "<details><section height=\"1cm\"/></details>",
          "<details><section keepTogether=\"oui\"/></details>",
          "<details><section><text width=\"9\" color=\"rouge\">x</text></section></details>",
          "<details><section><text width=\"9\" size=\"0\">x</text></section></details>",
          "<details><section><text width=\"9\" align=\"middle\">x</text></section></details>",
          "<details><section><field width=\"9\"/></section></details>",
          "<details><section><field width=\"9\" value=\"1\">x</field></section></details>",
          "<details><section><text width=\"9\">a<b/></text></section></details>",
          "<details><section><flow width=\"100\" columns=\"2\" gap=\"200\"/></section></details>",
          "<details><section><flow width=\"100\" columns=\"0\"/></section></details>",
          "<details><section><flow width=\"100\"><cell><flow "
          "width=\"10\"/></cell></flow></section></details>",
          "<details><section><picture width=\"9\" height=\"9\"/></section></details>",
          "<details>texte</details>",
          "<details/><details/>",
          "<group/>",
          "<group by=\"MARQUE\"/>",
          "<group by=\"{T.F}\"><details/></group>",
          "<sort><by field=\"{T.}\"/></sort>",
          "<page size=\"A9\"/>",
          "<page left=\"9000\" right=\"9000\"/>",
          "<tables><table/></tables>",
          "<tables><table name=\"T\"/><table name=\"t\"/></tables>",
          "<tables><link from=\"T\" to=\"U.V\"/></tables>",
          "<formulas><formula>1</formula></formulas>",
          "<formulas><formula name=\"a\"/><formula name=\"A\"/></formulas>"}) {
        EXPECT_EQ(Complaint(QString::fromUtf8(elements)).substr(0, 4), "321 ") << elements;
    }
}

TEST_F(ReportFileTest, PicturesOutsideTheReportsFolderAreRefused) {
    for (const char* file :
         {"C:\\logo.png", "/logo.png", "..\\logo.png", "../logo.png", "a/../../logo.png", ".."}) {
        EXPECT_EQ(Complaint(QStringLiteral("<details><section><picture width=\"9\" height=\"9\" "
                                           "file=\"%1\"/></section></details>")
                                .arg(QLatin1StringView(file)))
                      .substr(0, 4),
                  "321 ")
            << file;
    }
}

TEST_F(ReportFileTest, PapersAreAsLargeAsTheyReallyAre) {
    EXPECT_EQ(folder_.Open(QStringLiteral("<page size=\"A4\"/>"))->Compose()->PageSize(),
              QSizeF(11906, 16838));
    EXPECT_EQ(
        folder_.Open(QStringLiteral("<page size=\"A5\" orientation=\"landscape\"/>"))->Compose()->PageSize(),
        QSizeF(11906, 8391));
    EXPECT_EQ(folder_.Open(QStringLiteral("<page size=\"Letter\"/>"))->Compose()->PageSize(),
              QSizeF(12240, 15840));
}

TEST_F(ReportFileTest, PaperMayHaveASizeOfItsOwn) {
    const auto report =
        folder_.Open(QStringLiteral("<page width=\"4000\" height=\"2000\" left=\"100\" top=\"100\" "
                                    "right=\"100\" bottom=\"100\"/>"));
    EXPECT_EQ(report->Compose()->PageSize(), QSizeF(4000, 2000));
}

/// Held against the schema by a program of its own.
bool IsValid(const QString& nativePath) {
    return QProcess::execute(QStringLiteral("xmllint"),
                             {QStringLiteral("--noout"), QStringLiteral("--schema"),
                              QStringLiteral(QUARDELE_SOURCE_DIR "/docs/report.xsd"), nativePath}) == 0;
}

TEST_F(ReportFileTest, TheExampleOfTheDocumentationIsAReport) {
    QFile documentation(QStringLiteral(QUARDELE_SOURCE_DIR "/docs/report-format.md"));
    ASSERT_TRUE(documentation.open(QIODevice::ReadOnly));
    const QByteArray text = documentation.readAll();
    const qsizetype begin = text.indexOf("<?xml");
    folder_.WriteFile(QStringLiteral("PARC.RPT"), text.sliced(begin, text.indexOf("```", begin) - begin));
    const auto report = Application().OpenReport(folder_.WindowsPath(QStringLiteral("PARC.RPT")));
    EXPECT_EQ(report->Title(), QStringLiteral("Parc"));
    EXPECT_EQ(report->FormulaFields().Count(), 1);
    if (QStandardPaths::findExecutable(QStringLiteral("xmllint")).isEmpty()) {
        GTEST_SKIP() << "xmllint is not installed";
    }
    EXPECT_TRUE(IsValid(folder_.NativePath(QStringLiteral("PARC.RPT"))));
}

TEST_F(ReportFileTest, TheSchemaTakesWhatTheProgramTakes) {
    if (QStandardPaths::findExecutable(QStringLiteral("xmllint")).isEmpty()) {
        GTEST_SKIP() << "xmllint is not installed";
    }
    const auto isValid = [&](const QString& elements) {
        folder_.WriteFile(QStringLiteral("X.RPT"), folder_.Xml(elements).toUtf8());
        return IsValid(folder_.NativePath(QStringLiteral("X.RPT")));
    };
    EXPECT_TRUE(IsValid(QStringLiteral(QUARDELE_SOURCE_DIR "/resources/reports/IMPVEH.RPT")));
    EXPECT_TRUE(isValid(QString::fromUtf8(kEverything)));
    EXPECT_TRUE(isValid(QStringLiteral("<details/>")));
    EXPECT_TRUE(isValid(QStringLiteral("<tables><table name=\"T\" records=\"first\"/></tables>")));
    EXPECT_FALSE(isValid(QStringLiteral("<tables><table name=\"T\" records=\"last\"/></tables>")));
    EXPECT_FALSE(isValid(QStringLiteral("<detail/>")));
    for (const char* wrong :
         {"<text widht=\"3\" width=\"9\"/>", "<text height=\"300\">x</text>", "<text width=\"0\">x</text>",
          "<field value=\"1\"/>", "<flow/>", "<picture width=\"9\" file=\"a.png\"/>", "<box width=\"9\"/>",
          "<text width=\"9\" align=\"\">x</text>", "<x:line xmlns:x=\"other\" width=\"9\"/>"}) {
        EXPECT_FALSE(
            isValid(QStringLiteral("<details><section>%1</section></details>").arg(QLatin1StringView(wrong))))
            << wrong;
    }
    EXPECT_FALSE(isValid(QStringLiteral("<pageHeader><section newPageBefore=\"true\"/></pageHeader>")));
    EXPECT_FALSE(isValid(QStringLiteral("<details><section height=\"-1\"/></details>")));
}

}  // namespace

}  // namespace quardele::engine
