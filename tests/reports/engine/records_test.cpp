// Which records a report shows, and in which order.
#include <gtest/gtest.h>

#include "composer.h"
#include "definition.h"
#include "report_folder.h"
#include "report_reader.h"
#include "statement_text.h"

#include <functional>

#include <QBuffer>

#include <forms/strings.h>

namespace quardele::engine {

namespace {

using test::ErrorOf;

const QString kDetail = QStringLiteral(
    "<details><section height=\"300\"><field x=\"0\" y=\"0\" width=\"3000\" height=\"300\" "
    "value=\"{TVEH.IMMAT}\"/>"
    "</section></details>");

class RecordsTest : public testing::Test {
 protected:
    void SetUp() override { folder_.MakeVehicles(); }

    /// The registrations on the only page, separated by blanks, without their repetition.
    [[nodiscard]] std::string Vehicles(const QString& elements) const {
        return folder_.Pages(elements + kDetail).value(0).replace(u'\n', u' ').toStdString();
    }
    [[nodiscard]] std::string Selected(const QString& formula) const {
        return Vehicles(
            QStringLiteral("<selection><![CDATA[%1]]></selection><sort><by field=\"{TVEH.IMMAT}\"/></sort>")
                .arg(formula));
    }
    [[nodiscard]] std::string Statement(const QString& elements) const {
        QByteArray bytes = folder_.Xml(elements).toUtf8();
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        const auto report = ReadReport(buffer, QStringLiteral("X.RPT"), QDir());
        FormulaSet formulas(*report);
        const CompiledFormula selection = formulas.Compile(report->selection, QStringLiteral("sélection"));
        return basic::ToUtf8(StatementText(*report, formulas, selection));
    }

    test::ReportFolder folder_;
};

TEST_F(RecordsTest, ASelectionTakesSome) {
    EXPECT_EQ(Selected(QStringLiteral("{TVEH.IMMAT}='CC-333-CC'")), "CC-333-CC");
    EXPECT_EQ(Selected(QStringLiteral("{TVEH.IMMAT}='cc-333-cc'")), "CC-333-CC");
    EXPECT_EQ(Selected(QStringLiteral("{TVEH.KM} >= 30000 and {TVEH.MARQUE} <> 'Renault'")),
              "CC-333-CC DD-444-DD");
    EXPECT_EQ(Selected(QStringLiteral("{TVEH.ACHAT} < #1/1/2020# or IsNull({TVEH.ACHAT})")),
              "AA-111-AA BB-222-BB");
    EXPECT_EQ(Selected(QStringLiteral("{TVEH.ACHAT} = #3/1/2020#")), "CC-333-CC");
    EXPECT_EQ(Selected(QStringLiteral("{TVEH.MARQUE} > 'Peugeot'")), "AA-111-AA EE-555-EE");
    EXPECT_EQ(Selected(QStringLiteral("Left({TVEH.IMMAT}, 1) = 'B'")), "BB-222-BB");
    EXPECT_EQ(Selected(QStringLiteral("{TVEH.IMMAT}='nobody'")), "");
}

TEST_F(RecordsTest, WithoutASelectionAllAreTaken) {
    EXPECT_EQ(Vehicles(QStringLiteral("<sort><by field=\"{TVEH.IMMAT}\"/></sort>")),
              "AA-111-AA BB-222-BB CC-333-CC DD-444-DD EE-555-EE");
}

TEST_F(RecordsTest, ACallerSelectsInsteadOfTheFile) {
    const auto report = folder_.Open(QStringLiteral("<selection>false</selection>") + kDetail);
    EXPECT_EQ(test::PagesOf(*report->Compose()), QStringList(QString()));
    report->SetRecordSelectionFormula(QStringLiteral("{TVEH.IMMAT}='AA-111-AA'"));
    EXPECT_EQ(test::PagesOf(*report->Compose()), QStringList(QStringLiteral("AA-111-AA")));
}

TEST_F(RecordsTest, AnEqualityOnAKeyBecomesAConditionThatTheDatabaseSeeks) {
    EXPECT_EQ(
        Statement(QStringLiteral("<selection>{TVEH.IMMAT}='AA-111-AA' and {TVEH.KM} &gt; 5</selection>")),
        "SELECT [TVEH].[IMMAT], [TVEH].[KM] FROM [TVEH] AS [TVEH] WHERE [TVEH].[IMMAT] = 'AA-111-AA' AND "
        "[TVEH].[KM] > 5");
}

TEST_F(RecordsTest, QuotesInTheConditionAreDoubled) {
    EXPECT_EQ(Selected(QStringLiteral("{TVEH.IMMAT}=\"x' or 'a'='a\"")), "");
}

TEST_F(RecordsTest, TextsAreNotComparedInTheDatabasesOrder) {
    EXPECT_EQ(
        Statement(QStringLiteral(
            "<selection>{TVEH.MARQUE} &gt; 'P' and {TVEH.ACHAT} &lt;= #2020-03-01#</selection>")),
        "SELECT [TVEH].[MARQUE], [TVEH].[ACHAT] FROM [TVEH] AS [TVEH] WHERE [TVEH].[ACHAT] <= #03/01/2020#");
}

TEST_F(RecordsTest, SortFieldsOrderThemAndACallerAddsMore) {
    EXPECT_EQ(
        Vehicles(QStringLiteral(
            "<sort><by field=\"{TVEH.MARQUE}\"/><by field=\"TVEH.KM\" direction=\"descending\"/></sort>")),
        "BB-222-BB DD-444-DD CC-333-CC EE-555-EE AA-111-AA");
    const auto report = folder_.Open(kDetail);
    const Collection<DatabaseField> fields = report->Database().Tables().Item(1).Fields();
    EXPECT_EQ(fields.Count(), 6);
    EXPECT_EQ(fields.Item(4).Name(), QStringLiteral("KM"));
    report->RecordSortFields().Add(fields.Item(4), SortDirection::Ascending);
    EXPECT_EQ(test::PagesOf(*report->Compose()).value(0).left(9), QStringLiteral("AA-111-AA"));
}

TEST_F(RecordsTest, LinkedTablesGiveTheirRecords) {
    const QString tables = QStringLiteral(
        "<tables><table name=\"TVEH\" location=\"%1\"/><table name=\"CLI\" source=\"TCLI\"/>"
        "<link from=\"{TVEH.CLI}\" to=\"{CLI.CODE}\" join=\"%2\"/></tables>"
        "<sort><by field=\"{TVEH.IMMAT}\"/></sort><details><section height=\"300\">"
        "<field width=\"5000\" height=\"300\" value=\"{TVEH.IMMAT} &amp; ' ' &amp; {CLI.NOM}\"/>"
        "</section></details>");
    const QString file = folder_.WindowsPath(QStringLiteral("DONNEES.MDB"));
    EXPECT_EQ(
        folder_.Pages(tables.arg(file, QStringLiteral("left"))).value(0).toStdString(),
        "AA-111-AA Dupont & Fils\nBB-222-BB Martin\nCC-333-CC Martin\nDD-444-DD \nEE-555-EE Dupont & Fils");
    EXPECT_EQ(folder_.Pages(tables.arg(file, QStringLiteral("inner"))).value(0).count(u'\n'), 3);
}

TEST_F(RecordsTest, ATableIsLinkedToALinkedOne) {
    EXPECT_EQ(
        folder_
            .Pages(QStringLiteral(
                       "<tables><table name=\"TVEH\" location=\"%1\"/><table name=\"CLI\" source=\"TCLI\"/>"
                       "<table name=\"SUITE\" source=\"TCLI\"/>"
                       "<link from=\"{TVEH.CLI}\" to=\"{CLI.CODE}\" join=\"inner\"/>"
                       "<link from=\"{CLI.CODE}\" to=\"{SUITE.CODE}\"/></tables>"
                       "<selection>{TVEH.MARQUE} = 'Peugeot'</selection><details><section height=\"300\">"
                       "<field width=\"5000\" height=\"300\" value=\"{TVEH.IMMAT} &amp; ' ' &amp; "
                       "{SUITE.NOM}\"/></section></details>")
                       .arg(folder_.WindowsPath(QStringLiteral("DONNEES.MDB"))))
            .value(0),
        QStringLiteral("CC-333-CC Martin"));
}

/// Two vehicles, and what the table of parameters says beside each.
QString WithParameters(const QString& dataFile) {
    return QStringLiteral(
               "<tables><table name=\"TPAR\" records=\"first\" location=\"%1\"/><table "
               "name=\"TVEH\"/></tables>"
               "<selection>{TVEH.IMMAT} &lt; 'C' and {TPAR.TITRE} &lt;&gt; 'autre'</selection>"
               "<group by=\"{TPAR.TITRE}\"/><sort><by field=\"{TPAR.ANNEE}\"/><by field=\"{TVEH.IMMAT}\" "
               "direction=\"descending\"/></sort><details><section height=\"300\"><field width=\"5000\" "
               "height=\"300\" value=\"{TPAR.TITRE} &amp; ' ' &amp; {TVEH.IMMAT} &amp; ' ' &amp; "
               "{TPAR.ANNEE}\"/></section></details>")
        .arg(dataFile);
}

TEST_F(RecordsTest, TheFirstRecordOfATableOfParametersBelongsToAll) {
    const QString name = QStringLiteral("PARAM.MDB");
    folder_.MakeData(name, {QStringLiteral("CREATE TABLE TPAR (TITRE TEXT(20), ANNEE LONG)"),
                            QStringLiteral("INSERT INTO TPAR VALUES ('Parc', 2026)"),
                            QStringLiteral("INSERT INTO TPAR VALUES ('Suite', 2027)"),
                            QStringLiteral("CREATE TABLE TVEH (IMMAT TEXT(20) PRIMARY KEY)"),
                            QStringLiteral("INSERT INTO TVEH VALUES ('AA-111-AA')"),
                            QStringLiteral("INSERT INTO TVEH VALUES ('BB-222-BB')"),
                            QStringLiteral("INSERT INTO TVEH VALUES ('CC-333-CC')")});
    const QString report = WithParameters(folder_.WindowsPath(name));
    EXPECT_EQ(folder_.Pages(report).value(0).toStdString(), "Parc BB-222-BB 2026\nParc AA-111-AA 2026");
    EXPECT_EQ(Statement(report), "SELECT [TVEH].[IMMAT] FROM [TVEH] AS [TVEH] ORDER BY [TVEH].[IMMAT] DESC");
}

TEST_F(RecordsTest, WithoutAFirstRecordItsFieldsAreNull) {
    const QString name = QStringLiteral("PARAM.MDB");
    folder_.MakeData(name, {QStringLiteral("CREATE TABLE TPAR (TITRE TEXT(20), ANNEE LONG)"),
                            QStringLiteral("CREATE TABLE TVEH (IMMAT TEXT(20) PRIMARY KEY)"),
                            QStringLiteral("INSERT INTO TVEH VALUES ('AA-111-AA')")});
    const QString report = WithParameters(folder_.WindowsPath(name));
    EXPECT_EQ(folder_.Pages(report).value(0), QString());
    EXPECT_EQ(
        folder_.Pages(QString(report).remove(QStringLiteral(" and {TPAR.TITRE} &lt;&gt; 'autre'"))).value(0),
        QStringLiteral(" AA-111-AA "));
}

TEST_F(RecordsTest, ATableOfParametersAloneHasNoRecordsAndTakesNoLink) {
    const QString file = folder_.WindowsPath(QStringLiteral("DONNEES.MDB"));
    const QString alone =
        QStringLiteral("<tables><table name=\"TVEH\" records=\"first\" location=\"%1\"/></tables>");
    EXPECT_EQ(folder_.Pages(alone.arg(file) + kDetail), QStringList(QString()));
    EXPECT_EQ(
        ErrorOf([&] {
            static_cast<void>(folder_.Pages(
                QStringLiteral("<tables><table name=\"TVEH\" location=\"%1\"/><table name=\"TCLI\" "
                               "records=\"first\"/><link from=\"{TVEH.CLI}\" to=\"{TCLI.CODE}\"/></tables>")
                    .arg(file) +
                kDetail));
        }),
        "3001 La table « TCLI » ne donne que son premier enregistrement : aucun lien ne la concerne.");
}

TEST_F(RecordsTest, ATableGoesToAnotherDataFileWhenItsLocationIsSet) {
    folder_.MakeData(QStringLiteral("AUTRE.MDB"), {QStringLiteral("CREATE TABLE TVEH (IMMAT TEXT(20))"),
                                                   QStringLiteral("INSERT INTO TVEH VALUES ('autre')")});
    const auto report = folder_.Open(kDetail);
    report->Database().Tables().Item(1).SetLocation(folder_.WindowsPath(QStringLiteral("AUTRE.MDB")));
    EXPECT_EQ(test::PagesOf(*report->Compose()), QStringList(QStringLiteral("autre")));
}

TEST_F(RecordsTest, AReportWithoutTablesHasNoRecords) {
    EXPECT_EQ(folder_.Pages(QStringLiteral(
                  "<tables/><reportHeader><section height=\"300\"><text width=\"900\" "
                  "height=\"300\">Seul</text></section></reportHeader><details><section "
                  "height=\"300\"><text width=\"900\" height=\"300\">x</text></section></details>")),
              QStringList(QStringLiteral("Seul")));
}

TEST_F(RecordsTest, WhatCannotBeFoundIsTold) {
    const auto complaint = [&](const QString& elements) {
        return ErrorOf([&] { static_cast<void>(folder_.Pages(elements)); });
    };
    const auto field = [](const QString& value) {
        return QStringLiteral(
                   "<details><section height=\"300\"><field width=\"900\" height=\"300\" "
                   "value=\"%1\"/></section></details>")
            .arg(value);
    };
    EXPECT_EQ(complaint(field(QStringLiteral("{TVEH.ABSENT}"))),
              "3265 L'état ne connaît pas le champ {TVEH.ABSENT}. (détail, champ {TVEH.ABSENT})");
    EXPECT_EQ(complaint(field(QStringLiteral("{AUTRE.IMMAT}"))).substr(0, 5), "3265 ");
    EXPECT_EQ(complaint(field(QStringLiteral("{@ABSENTE}"))),
              "3265 L'état ne connaît pas la formule {@ABSENTE}. (détail, champ {@ABSENTE})");
    EXPECT_EQ(complaint(QStringLiteral("<sort><by field=\"{TVEH.X}\"/></sort>") + kDetail).substr(0, 5),
              "3265 ");
    EXPECT_EQ(complaint(QStringLiteral("<group by=\"{TVEH.X}\"/>") + kDetail).substr(0, 5), "3265 ");
    EXPECT_EQ(complaint(QStringLiteral("<selection>{TVEH.X} = 1</selection>") + kDetail).substr(0, 5),
              "3265 ");
    EXPECT_EQ(
        complaint(QStringLiteral("<tables><table name=\"TVEH\" location=\"Z:\\absent.mdb\"/></tables>") +
                  kDetail)
            .substr(0, 5),
        "3024 ");
    EXPECT_EQ(complaint(QStringLiteral("<tables><table name=\"TVEH\"/></tables>") + kDetail).substr(0, 5),
              "3024 ");
    EXPECT_EQ(
        complaint(QStringLiteral("<tables><table name=\"TVEH\" source=\"TX\" location=\"%1\"/></tables>")
                      .arg(folder_.WindowsPath(QStringLiteral("DONNEES.MDB"))) +
                  kDetail)
            .substr(0, 5),
        "3078 ");
}

TEST_F(RecordsTest, TablesThatNothingLinksOrThatLieApartAreRefused) {
    const QString file = folder_.WindowsPath(QStringLiteral("DONNEES.MDB"));
    EXPECT_EQ(ErrorOf([&] {
                  static_cast<void>(folder_.Pages(
                      QStringLiteral(
                          "<tables><table name=\"TVEH\" location=\"%1\"/><table name=\"TCLI\"/></tables>")
                          .arg(file) +
                      kDetail));
              }),
              "3001 Rien ne relie la table « TCLI » aux autres tables de l'état.");
    folder_.MakeData(QStringLiteral("AUTRE.MDB"), {QStringLiteral("CREATE TABLE TCLI (CODE TEXT(20))")});
    EXPECT_EQ(
        ErrorOf([&] {
            static_cast<void>(folder_.Pages(
                QStringLiteral(
                    "<tables><table name=\"TVEH\" location=\"%1\"/><table name=\"TCLI\" location=\"%2\"/>"
                    "<link from=\"{TVEH.CLI}\" to=\"{TCLI.CODE}\"/></tables>")
                    .arg(file, folder_.WindowsPath(QStringLiteral("AUTRE.MDB"))) +
                kDetail));
        }).substr(0, 5),
        "3001 ");
}

TEST_F(RecordsTest, BadFormulasAreToldWithTheirNames) {
    const auto complaint = [&](const QString& formula) {
        return ErrorOf([&] {
            static_cast<void>(folder_.Pages(
                QStringLiteral("<formulas><formula name=\"F\"><![CDATA[%1]]></formula></formulas>")
                    .arg(formula) +
                kDetail));
        });
    };
    EXPECT_EQ(complaint(QStringLiteral("1 +")),
              "3075 Erreur de syntaxe dans l'expression « 1 + ». Une valeur est attendue (caractère 4). "
              "(formule {@F})");
    EXPECT_EQ(
        complaint(QStringLiteral("'x (formule ' +")),
        "3075 Erreur de syntaxe dans l'expression « 'x (formule ' + ». Une valeur est attendue (caractère "
        "16). (formule {@F})");
    EXPECT_EQ(complaint(QStringLiteral("{@F} + 1")),
              "3001 La formule {@F} a besoin d'elle-même. (formule {@F})");
    EXPECT_EQ(complaint(QStringLiteral("Truc(1)")),
              "3085 Fonction « Truc » non définie dans l'expression. (formule {@F})");
    EXPECT_EQ(
        ErrorOf([&] {
            static_cast<void>(folder_.Pages(QStringLiteral(
                "<formulas><formula name=\"F\">1 / 0</formula></formulas><details><section "
                "height=\"300\"><field width=\"900\" height=\"300\" value=\"{@F}\"/></section></details>")));
        }),
        "11 Division par zéro (formule {@F})");
    EXPECT_EQ(
        ErrorOf([&] { static_cast<void>(Selected(QStringLiteral("{TVEH.IMMAT}='AB'CD'"))); }).substr(0, 5),
        "3075 ");
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(Selected(QStringLiteral("PageNumber = 1"))); }).substr(0, 5),
              "3001 ");
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(Selected(QStringLiteral("{TVEH.MARQUE}"))); }),
              "13 Type incompatible (formule de sélection)");
}

QString Formulas(int count, const std::function<QString(int)>& text) {
    QString formulas;
    for (int i = 0; i < count; ++i) {
        formulas += QStringLiteral("<formula name=\"F%1\"><![CDATA[%2]]></formula>").arg(i).arg(text(i));
    }
    return QStringLiteral("<formulas>%1</formulas>").arg(formulas);
}
QString FieldOf(const QString& value) {
    return QStringLiteral(
               "<reportHeader><section><field width=\"9000\" value=\"%1\"/></section></reportHeader>")
        .arg(value);
}

TEST_F(RecordsTest, AFormulaIsComputedOnceHoweverOftenOthersMentionIt) {
    const QString formulas = Formulas(60, [](int i) {
        return i == 0 ? QStringLiteral("3") : QStringLiteral("({@F%1} + {@F%1}) / 2").arg(i - 1);
    });
    EXPECT_EQ(folder_.Pages(formulas + FieldOf(QStringLiteral("{@F59}"))), QStringList(QStringLiteral("3")));
    EXPECT_EQ(folder_.Pages(formulas + FieldOf(QStringLiteral("Sum({@F59})"))),
              QStringList(QStringLiteral("15")));
}

TEST_F(RecordsTest, AFormulasValueIsThatOfItsRecordAndPage) {
    EXPECT_EQ(folder_.Pages(QStringLiteral(
                  "<formulas><formula name=\"F\">{TVEH.KM} + Sum({@K}) * 0</formula><formula "
                  "name=\"K\">{TVEH.KM}</formula></formulas><sort><by field=\"{TVEH.KM}\"/></sort><details>"
                  "<section><field width=\"900\" value=\"{@K}\"/><field x=\"900\" width=\"3000\" "
                  "value=\"{@F} &amp; '/' &amp; {@K}\"/></section></details>")),
              QStringList(QStringLiteral("10000\t10000/10000\n20000\t20000/20000\n30000\t30000/30000\n"
                                         "40000\t40000/40000\n50000\t50000/50000")));
}

TEST_F(RecordsTest, TextsThatFormulasDoubleEndBeforeTheMemoryDoes) {
    const QString formulas = Formulas(40, [](int i) {
        return i == 0 ? QStringLiteral("'0123456789'") : QStringLiteral("{@F%1} & {@F%1}").arg(i - 1);
    });
    EXPECT_EQ(ErrorOf([&] {
                  static_cast<void>(folder_.Pages(formulas + FieldOf(QStringLiteral("{@F39}"))));
              }).substr(0, 2),
              "6 ");
}

TEST_F(RecordsTest, FormulasThatMentionEachOtherTooDeepAreRefused) {
    constexpr int kCount = 1200;
    const auto complaint = [&](const std::function<QString(int)>& text) {
        return ErrorOf([&] { static_cast<void>(folder_.Pages(Formulas(kCount, text))); }).substr(0, 5);
    };
    EXPECT_EQ(complaint([](int i) {
                  return i + 1 == kCount ? QStringLiteral("1") : QStringLiteral("{@F%1}").arg(i + 1);
              }),
              "3360 ");
    EXPECT_EQ(
        complaint([](int i) { return i == 0 ? QStringLiteral("1") : QStringLiteral("{@F%1}").arg(i - 1); }),
        "3360 ");
}

TEST_F(RecordsTest, SummariesAreOverAllRecordsOrOverAGroup) {
    const QString group = QStringLiteral(
        "<group by=\"{TVEH.MARQUE}\"><footer><section height=\"300\"><field width=\"9000\" height=\"300\" "
        "value=\"{TVEH.MARQUE} "
        "&amp; ' ' &amp; Count({TVEH.IMMAT}, {TVEH.MARQUE}) &amp; ' ' &amp; Sum({TVEH.KM}, {TVEH.MARQUE}) "
        "&amp; ' ' &amp; "
        "Count({TVEH.NOTE}) &amp; ' ' &amp; Maximum({TVEH.KM}) &amp; ' ' &amp; Minimum({TVEH.IMMAT}) &amp; ' "
        "' &amp; "
        "Average({@D}, {TVEH.MARQUE})\"/></section></footer></group><formulas><formula name=\"D\">{TVEH.KM} "
        "* 2</formula></formulas>");
    EXPECT_EQ(folder_.Pages(group).value(0).toStdString(),
              "Citroën 1 20000 4 50000 AA-111-AA 40000\n"
              "Peugeot 2 70000 4 50000 AA-111-AA 70000\n"
              "Renault 2 60000 4 50000 AA-111-AA 60000");
}

TEST_F(RecordsTest, ASummaryOfSummariesIsRefused) {
    EXPECT_EQ(ErrorOf([&] {
                  static_cast<void>(folder_.Pages(
                      QStringLiteral("<formulas><formula name=\"A\">Sum({TVEH.KM})</formula><formula "
                                     "name=\"B\">Sum({@A})</formula></formulas>")));
              }).substr(0, 5),
              "3001 ");
    EXPECT_EQ(ErrorOf([&] {
                  static_cast<void>(folder_.Pages(QStringLiteral(
                      "<formulas><formula name=\"A\">Sum({TVEH.KM}, {TVEH.IMMAT})</formula></formulas>")));
              }).substr(0, 5),
              "3265 ");
}

}  // namespace

}  // namespace quardele::engine
