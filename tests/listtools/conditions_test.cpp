// The conditions that the selection writes, by kind of column, comparison and value.
#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

// The list of due visits: its statement as the tools take it apart.
const QString kBase = QStringLiteral(
    "SELECT DATEADD('M',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]) AS DATEPREV, "
    "TVEH_DETAIL.TVEH_DETAIL_PERIOD, TVEH_DETAIL.TVEH_DETAIL_DATVIS, TVEH.TVEH_MARQUE,TVEH.TVEH_IMMAT, "
    "TVEH.TVEH_EDIT, TVEH.TVEH_CODCLI, TVEH_DETAIL.TVEH_DETAIL_TYPTRAV FROM TVEH_DETAIL LEFT JOIN TVEH ON "
    "TVEH_DETAIL.TVEH_DETAIL_IMMAT = TVEH.TVEH_IMMAT");
const QString kDue = QStringLiteral(
    "(((DATEADD('M',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]))<#11/20/2026#)) AND [TVEH_DETAIL_PERIOD]<> 0");
const QString kOrder = QStringLiteral("TVEH.TVEH_CODCLI, TVEH.TVEH_IMMAT, TVEH_DETAIL.TVEH_DETAIL_TYPTRAV");

const QString kRefused = QStringLiteral("Ce mode de sélection est impossible sur ce type colonne...");
const QString kNoDate = QStringLiteral("SELECTION ERR. 13 Saisie d'une date attendue ");
const QString kNoNumber = QStringLiteral("SELECTION ERR. 13 Saisie d'une valeur numérique attendue ");
const QString kNoRows = QStringLiteral("Sélection vide.");
/// The rest is the engine's.
const QString kFailure = QStringLiteral("SELECTION (ERREUR ");

/// The entries of the comparisons.
enum Comparison { StartsWith, Equal, Different, Greater, Less, Contains };

struct Case {
    const char* name;
    int column;
    const char* line;  ///< of the column, where the case wants another kind
    int comparison;
    const char* value;
    const char* condition;  ///< joined to those in force; null where nothing is sent to the list
    QString box;            ///< how the box starts that is shown; empty for none
};

constexpr int kText = 2;
constexpr int kTick = 3;
constexpr int kOther = 4;
constexpr int kDate = 6;
constexpr int kNumber = 7;

const char* const kFloatLine = "Mois|TVEH_DETAIL_PERIOD|8|float|locked";
const char* const kIntegerLine = "Mois|TVEH_DETAIL_PERIOD|8|integer|locked";
const char* const kTickLine = "Marque|TVEH_EDIT|8|check|locked";
const char* const kButtonLine = "Client|TVEH_CODCLI|8|button|locked";

const std::vector<Case>& Cases() {
    static const std::vector<Case> cases{
        // Texts.
        {"text starts with", kText, "", StartsWith, "14", " left(TVEH_IMMAT,2) = '14'", {}},
        {"text starts with, one character", kText, "", StartsWith, "A", " left(TVEH_IMMAT,1) = 'A'", {}},
        {"text equal", kText, "", Equal, "1466 WP 51", " TVEH_IMMAT= '1466 WP 51'", {}},
        {"text different", kText, "", Different, "x", " TVEH_IMMAT<> 'x'", {}},
        {"text greater", kText, "", Greater, "M", " TVEH_IMMAT> 'M'", {}},
        {"text less", kText, "", Less, "M", " TVEH_IMMAT< 'M'", {}},
        {"text contains", kText, "", Contains, "AB", " InStr(1, TVEH_IMMAT, 'AB') <> 0", {}},
        {"text NULL is a text", kText, "", Equal, "NULL", " TVEH_IMMAT= 'NULL'", kNoRows},
        {"text VIDE is a text", kText, "", StartsWith, "Vide", " left(TVEH_IMMAT,4) = 'Vide'", kNoRows},
        {"text keeps its blanks", kText, "", Equal, " 1466 WP 51 ", " TVEH_IMMAT= ' 1466 WP 51 '", kNoRows},
        {"text of one blank", kText, "", StartsWith, " ", " left(TVEH_IMMAT,1) = ' '", kNoRows},
        {"text with an apostrophe", kText, "", Equal, "L'OREE", " TVEH_IMMAT= 'L'OREE'", kFailure},
        {"text with a bracket", kText, "", Equal, "[A", " TVEH_IMMAT= '[A'", kNoRows},
        {"text that is a condition", kText, "", Equal, "x' or 'a'='a", " TVEH_IMMAT= 'x' or 'a'='a'", {}},
        {"text that is a statement", kText, "", Equal, "x'; DELETE FROM TVEH;",
         " TVEH_IMMAT= 'x'; DELETE FROM TVEH;'", kFailure},
        // Kinds that are none of the named ones count as texts, and start with means equal.
        {"other starts with", kOther, kButtonLine, StartsWith, "C0317", " TVEH_CODCLI= 'C0317'", {}},
        {"other equal", kOther, kButtonLine, Equal, "C0317", " TVEH_CODCLI= 'C0317'", {}},
        {"other different", kOther, kButtonLine, Different, "C0317", " TVEH_CODCLI<> 'C0317'", {}},
        {"other contains", kOther, kButtonLine, Contains, "031", " InStr(1, TVEH_CODCLI, '031') <> 0", {}},
        // Dates.
        {"date starts with", kDate, "", StartsWith, "31/12/2020", " TVEH_DETAIL_DATVIS= #12/31/20#", kNoRows},
        {"date equal", kDate, "", Equal, "31/12/2020", " TVEH_DETAIL_DATVIS= #12/31/20#", kNoRows},
        {"date different", kDate, "", Different, "31/12/2020", " TVEH_DETAIL_DATVIS<> #12/31/20#", {}},
        {"date greater", kDate, "", Greater, "1-2-24", " TVEH_DETAIL_DATVIS> #02/01/24#", {}},
        {"date less", kDate, "", Less, "05/06/2024 10:30", " TVEH_DETAIL_DATVIS< #06/05/24#", {}},
        {"date null", kDate, "", Equal, "null", " TVEH_DETAIL_DATVIS= Null", kNoRows},
        {"date vide", kDate, "", Different, "Vide", " TVEH_DETAIL_DATVIS<> Null", kNoRows},
        {"date contains", kDate, "", Contains, "31/12/2020", nullptr, kRefused},
        {"date contains null", kDate, "", Contains, "NULL", nullptr, kRefused},
        {"no date", kDate, "", Equal, "demain", nullptr, kNoDate},
        {"blanks are no date", kDate, "", Equal, "   ", nullptr, kNoDate},
        // Numbers.
        {"number starts with", kNumber, "", StartsWith, "12", " TVEH_DETAIL_PERIOD=12", {}},
        {"number equal", kNumber, "", Equal, "12", " TVEH_DETAIL_PERIOD=12", {}},
        {"number different", kNumber, "", Different, "12", " TVEH_DETAIL_PERIOD<>12", {}},
        {"number greater", kNumber, "", Greater, "12", " TVEH_DETAIL_PERIOD>12", {}},
        {"number less", kNumber, "", Less, " 24 ", " TVEH_DETAIL_PERIOD< 24", {}},
        {"number with a comma", kNumber, "", Equal, "1,5", " TVEH_DETAIL_PERIOD=1,5", kFailure},
        {"number of blanks", kNumber, "", Equal, "  ", " TVEH_DETAIL_PERIOD=", kFailure},
        {"number contains", kNumber, "", Contains, "12", nullptr, kRefused},
        {"no number", kNumber, "", Equal, "douze", nullptr, kNoNumber},
        {"NULL is no number", kNumber, "", Equal, "NULL", nullptr, kNoNumber},
        {"float equal", kNumber, kFloatLine, Equal, "12", " TVEH_DETAIL_PERIOD=12", {}},
        {"float contains", kNumber, kFloatLine, Contains, "12", nullptr, kRefused},
        {"no float", kNumber, kFloatLine, Equal, "12a", nullptr, kNoNumber},
        {"integer greater", kNumber, kIntegerLine, Greater, "12", " TVEH_DETAIL_PERIOD>12", {}},
        {"integer contains", kNumber, kIntegerLine, Contains, "12", nullptr, kRefused},
        {"no integer", kNumber, kIntegerLine, Less, "12 mois", nullptr, kNoNumber},
        // Ticks: the comparison does not count.
        {"tick true", kTick, kTickLine, Equal, "true", " TVEH_EDIT", {}},
        {"tick vrai", kTick, kTickLine, Greater, "Vrai", " TVEH_EDIT", {}},
        {"tick oui, different", kTick, kTickLine, Different, "oui", " TVEH_EDIT", {}},
        {"tick false", kTick, kTickLine, StartsWith, "false", " not TVEH_EDIT", {}},
        {"tick faux", kTick, kTickLine, Less, "FAUX", " not TVEH_EDIT", {}},
        {"tick non", kTick, kTickLine, Equal, "non", " not TVEH_EDIT", {}},
        {"tick of another word", kTick, kTickLine, Equal, "peut-être", "", {}},
        {"tick contains", kTick, kTickLine, Contains, "oui", nullptr, kRefused},
    };
    return cases;
}

}  // namespace

class ConditionsTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase();
    void cleanupTestCase() { program_.reset(); }
    void ConditionsJoinThoseInForce_data();
    void ConditionsJoinThoseInForce();

 private:
    std::unique_ptr<ListProgram> program_;
    QString dueVisits_;
    QStringList columns_;
};

void ConditionsTest::initTestCase() {
    PrepareVehicleTests();
    program_ = std::make_unique<ListProgram>();
    program_->OpenReminders();
    dueVisits_ = Reminders().data->RecordSource();
    columns_ = Reminders().grid->ColumnLines();
}

void ConditionsTest::ConditionsJoinThoseInForce_data() {
    QTest::addColumn<int>("number");
    int number = 0;
    for (const Case& row : Cases()) {
        QTest::newRow(row.name) << number++;
    }
}

void ConditionsTest::ConditionsJoinThoseInForce() {
    QFETCH(int, number);
    const Case& row = Cases()[static_cast<std::size_t>(number)];
    const List list = Reminders();
    list.grid->SetColumnLines(columns_);
    list.data->SetRecordSource(dueVisits_);
    list.data->Refresh();
    if (*row.line != '\0') {
        ReplaceColumn(*list.grid, row.column, QString::fromLatin1(row.line));
    }
    program_->boxes.TakeTexts();
    bool stays = false;
    GoToColumn(*list.grid, row.column);
    QVERIFY(InDialog([&] { PressTool(list, kSelectionTool); },
                     [&] {
                         Select(row.comparison, QString::fromUtf8(row.value));
                         stays = forms::IsLoaded<listtools::FSELECT>();
                     }));

    const bool tryAgain = row.box == kNoDate || row.box == kNoNumber;
    QCOMPARE(stays, tryAgain);
    QCOMPARE(forms::Screen::MousePointer(), 0);
    if (row.condition == nullptr) {
        QCOMPARE(list.data->RecordSource(), dueVisits_);
    } else {
        const QString joined =
            *row.condition == '\0' ? QString() : QStringLiteral(" and") + QString::fromUtf8(row.condition);
        QCOMPARE(list.data->RecordSource(), kBase + QStringLiteral(" Where ") + kDue + joined +
                                                QStringLiteral("  Order by ") + kOrder + u';');
    }
    const std::vector<QString> boxes = program_->boxes.TakeTexts();
    if (row.box.isEmpty()) {
        QVERIFY2(boxes.empty(), boxes.empty() ? "" : qPrintable(boxes.front()));
    } else {
        QCOMPARE(boxes.size(), std::size_t{1});
        QVERIFY2(boxes.front().startsWith(row.box), qPrintable(boxes.front()));
        QVERIFY(row.box == kFailure || boxes.front() == row.box);
    }
    QCOMPARE(program_->Ends(), 0);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    ConditionsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "conditions_test.moc"
