// The selection of jobs by date: its frame, the statements that it makes, what it remembers.
#include <QKeyEvent>
#include <QSignalSpy>

#include <basic/date.h>
#include <forms/drop_down.h>
#include <forms/strings.h>

#include "job_rows.h"
#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

using forms::CellType;
using listtools::TheListToolContext;

/// A vehicle without jobs of its own until a test adds some.
const QString kVehicle = QStringLiteral("ZY-100-AA");
constexpr std::int32_t kFirstJob = 900001;
constexpr int kDateColumn = 1;

const QString kSelect = QStringLiteral(
    "SELECT IIF([TAFF_DETAIL_DATSORTIEEFF] IS NOT NULL,[TAFF_DETAIL_DATSORTIEEFF],[TAFF_DATLIVRPREV]) AS "
    "DATEVISITE, TAFF.TAFF_NUMAFF, TAFF.TAFF_CODCLI, TAFF.TAFF_CM, TAFF.TAFF_LIBOPE, TAFF.TAFF_DETAILOPE "
    "FROM TAFF LEFT JOIN TAFF_DETAIL ON TAFF.TAFF_NUMAFF = TAFF_DETAIL.TAFF_DETAIL_NUMAFF");
const QString kOrder = QStringLiteral(
    " Order by IIF([TAFF_DETAIL_DATSORTIEEFF] IS NOT "
    "NULL,[TAFF_DETAIL_DATSORTIEEFF],[TAFF_DATSORTIEEFF]) DESC;");
const QString kDate = QStringLiteral(
    "IIf([TAFF_DETAIL_DatSortieEff] Is Not Null,[TAFF_DETAIL_DatSortieEff],[TAFF_DatSortieEff])");

/// The same in the upper case in which the next selection finds it.
QString InCapitals(const QString& text) {
    return text.toUpper();
}

QString OwnCondition(const QString& registration) {
    return QStringLiteral("(((TAFF_DETAIL.TAFF_DETAIL_IDENT)='%1')) OR (([TAFF_IMMATR]='%1'))")
        .arg(registration);
}

QString Statement(const QString& conditions) {
    return kSelect + QStringLiteral(" Where ") + conditions + u' ' + kOrder;
}

QString Source() {
    return Data("DBD_HISTO")->RecordSource();
}

forms::DropDown* Comparisons() {
    return Control<forms::DropDown>("BXC_ChoixDate");
}

bool FrameShown() {
    return Shown(Control<QWidget>("FRM_SelDate"));
}

/// Opens the history of a registration that need not be a vehicle's.
void OpenHistoryOf(const QString& registration) {
    if (Tabs()->Tab() != kRecordTab) {
        Tabs()->SetTab(kRecordTab);
    }
    Box("CTX_IMMAT")->SetText(registration);
    Press("CMD_HistoVis");
}

/// By a click on a date and one on the tool, as the operator does; without jobs on the heading.
void OpenFrame() {
    if (Grid("DBG_HISTO")->MaxRows() > 0) {
        ClickCell("DBG_HISTO", kDateColumn, 1);
    } else {
        ClickHeading("DBG_HISTO", kDateColumn);
    }
    Press("Cmd_ToolBar_Histo_0");
    QVERIFY(FrameShown());
}

/// From the tool, by Tab, as the operator does without a mouse.
void GoToComparisons() {
    constexpr int kMostStops = 10;
    for (int tab = 0; tab < kMostStops && forms::Screen::ActiveControl() != Comparisons(); ++tab) {
        PressKey(Qt::Key_Tab);
    }
    QCOMPARE(forms::Screen::ActiveControl(), Comparisons());
}

/// Keys that arrive at a widget, those that what stands in it has no use for.
class KeyWatcher : public QObject {
 public:
    explicit KeyWatcher(QWidget* widget) { widget->installEventFilter(this); }

    [[nodiscard]] std::vector<int> Keys() const { return keys_; }

    bool eventFilter(QObject* /*widget*/, QEvent* event) override {
        if (event->type() == QEvent::KeyPress) {
            keys_.push_back(static_cast<QKeyEvent*>(event)->key());
        }
        return false;
    }

 private:
    std::vector<int> keys_;
};

/// Chooses an entry of the comparisons, -1 for none, types a date and presses the button.
void SelectDate(int entry, const QString& date) {
    OpenFrame();
    Comparisons()->SetListIndex(entry);
    TypeOver(Box("CTX_ChoixDate"), date);
    Press("Cmd_SelDate_Select");
}

/// Puts a value into the box that the operator could not leave there, and presses the button.
void SelectAsItStands(int entry, const QString& value) {
    OpenFrame();
    Comparisons()->SetListIndex(entry);
    Box("CTX_ChoixDate")->SetText(value);
    Press("Cmd_SelDate_Select");
}

QStringList ShownLabels() {
    QStringList labels;
    for (const QStringList& job : ShownJobs()) {
        labels.append(job.back());
    }
    return labels;
}

void AddJobs() {
    AddJob({kFirstJob, kVehicle, QStringLiteral("1999"), {}, basic::DateOf(1999, 12, 31)});
    AddJob({kFirstJob + 1, kVehicle, QStringLiteral("2024"), {}, basic::DateOf(2024, 5, 2)});
    AddJob({kFirstJob + 2, kVehicle, QStringLiteral("2026"), {}, basic::DateOf(2026, 2, 1)});
    AddJob({kFirstJob + 3, kVehicle, QStringLiteral("sans"), basic::DateOf(2026, 2, 1), {}});
}

}  // namespace

class DateSelectionTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void TheFrameIsAsDesigned();
    void ReopeningEmptiesBothBoxes();
    void AClickOnADateOpensItBehindASelectionToo();
    void ItOpensOnAListWithoutJobs();
    void ItOpensInFrontOfWhatStandsInTheHistory();
    void ItsButtonClosesItAndTheQueryStays();
    void EscapeClosesItAlone_data();
    void EscapeClosesItAlone();
    void EscapeOnABadDateHoldsNobody();
    void TabsLeadFromTheToolIntoTheFrame();
    void TheFrameIsStillThereWhenTheHistoryWasClosedAroundIt();
    void EnterLeadsThroughTheFrame();
    void EnterIsLeftToTheBoxes();
    void TheDateIsSelectedWholeWhenEntered();
    void ADateIsWrittenOut();
    void WhatIsNoDateIsHeld_data();
    void WhatIsNoDateIsHeld();
    void LeavingTheRecordWithABadDateHoldsNobody();
    void TheStatementOfAComparison_data();
    void TheStatementOfAComparison();
    void ADateOfTheLastCenturyGoesOutWithTwoDigits();
    void TheSortedDateIsComparedNotTheShownOne();
    void AnExitWithItsHourEqualsNoDay();
    void SelectionsAddUp();
    void TheConditionBindsToTheSecondHalfOnly();
    void AnEmptyDateBringsTheListBack();
    void AnEmptyDateWithoutASelectionChangesNothing();
    void TheFirstVehiclesConditionComesBack();
    void AListToolOnTheVehiclesWritesTheFilterToo();
    void TheVehiclesGetTheHistorysFilterToo();
    void NoComparisonOnATextColumnComparesFirstCharacters();
    void AnotherKindOfColumnAddsNothing();
    void NullAndVideHaveABranchThatTheBoxNeverLetsThrough_data();
    void NullAndVideHaveABranchThatTheBoxNeverLetsThrough();
    void AValueThatIsNoDateLeavesTheFrameOpen();
    void AnUnknownComparisonLeavesThePointerBusy();
    void AnEmptySelectionKeepsTheOldPicture();
    void ReopeningTheHistoryKeepsTheOldPictureToo();
    void AFailureIsToldAndTheRestRuns();
    void TheCursorGoesToTheColumnOfTheLastTool();

 private:
    std::unique_ptr<ListProgram> program_;
};

void DateSelectionTest::init() {
    TheListToolContext() = {};
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
    AddJobs();
    OpenHistoryOf(kVehicle);
    QCOMPARE(ShownLabels(), (QStringList{"2026", "2024", "1999", "sans"}));
}

void DateSelectionTest::TheFrameIsAsDesigned() {
    QCOMPARE(Control<forms::Frame>("FRM_SelDate")->Caption(), QStringLiteral("Sélection sur [Date]"));
    QStringList entries;
    for (int entry = 0; entry < Comparisons()->count(); ++entry) {
        entries.append(Comparisons()->itemText(entry));
    }
    QCOMPARE(entries, (QStringList{"Supérieure à", "Inférieure à", "Egale à"}));
    QCOMPARE(Button("Cmd_SelDate_Select")->toolTip(), QStringLiteral("Sélection de lignes de la liste"));
    QCOMPARE(Button("Cmd_SelDate_Close")->toolTip(), QStringLiteral("Fermer la fenêtre"));
}

void DateSelectionTest::ReopeningEmptiesBothBoxes() {
    SelectDate(0, QStringLiteral("01/01/2024"));
    OpenFrame();
    QCOMPARE(Comparisons()->ListIndex(), -1);
    QCOMPARE(Box("CTX_ChoixDate")->Text(), QString());
}

void DateSelectionTest::AClickOnADateOpensItBehindASelectionToo() {
    SelectDate(0, QStringLiteral("01/01/2024"));
    // No list tool has run: the selection puts the cursor where none has left it, in front of the row.
    QCOMPARE(Grid("DBG_HISTO")->ActiveCol(), 0);
    QCOMPARE(Grid("DBG_HISTO")->ActiveRow(), 1);
    ClickCell("DBG_HISTO", kDateColumn, 1);
    QCOMPARE(Grid("DBG_HISTO")->ActiveCol(), kDateColumn);
    Press("Cmd_ToolBar_Histo_0");
    QVERIFY(FrameShown());
    QVERIFY(program_->boxes.Shown().empty());
}

void DateSelectionTest::ItOpensOnAListWithoutJobs() {
    OpenHistoryOf(QStringLiteral("ZY-000-AA"));
    QCOMPARE(Grid("DBG_HISTO")->MaxRows(), 0);
    OpenFrame();
    Press("Cmd_SelDate_Select");
    CompareBoxes(program_->boxes, {QStringLiteral("Sélection vide.")});
    QVERIFY(!FrameShown());
}

void DateSelectionTest::ItOpensInFrontOfWhatStandsInTheHistory() {
    OpenFrame();
    Control<QWidget>("Frm_boutons_Histo")->raise();
    QVERIFY(!InFront("FRM_SelDate", "Frm_boutons_Histo"));
    Press("Cmd_ToolBar_Histo_0");
    QVERIFY(InFront("FRM_SelDate", "Frm_boutons_Histo"));
}

void DateSelectionTest::EscapeClosesItAlone_data() {
    QTest::addColumn<QString>("control");
    for (const char* control :
         {"BXC_ChoixDate", "CTX_ChoixDate", "Cmd_SelDate_Select", "Cmd_SelDate_Close"}) {
        QTest::newRow(control) << QString::fromLatin1(control);
    }
}

void DateSelectionTest::EscapeClosesItAlone() {
    QFETCH(const QString, control);
    const QString before = Source();
    OpenFrame();
    forms::SetFocus(Control<QWidget>(control.toLatin1().constData()));
    PressKey(Qt::Key_Escape);
    QVERIFY(!FrameShown());
    QVERIFY(Shown(Control<QWidget>("FRM_HISTO")));
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_HISTO"));
    QCOMPARE(Source(), before);
}

void DateSelectionTest::EscapeOnABadDateHoldsNobody() {
    OpenFrame();
    TypeOver(Box("CTX_ChoixDate"), QStringLiteral("hier"));
    PressKey(Qt::Key_Escape);
    CompareBoxes(program_->boxes, {QStringLiteral("Saisie d'une date attendue (JJ/MM/AA).")});
    QVERIFY(!FrameShown());
    QCOMPARE(program_->Ends(), 0);
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_HISTO"));
}

void DateSelectionTest::ItsButtonClosesItAndTheQueryStays() {
    SelectDate(0, QStringLiteral("01/01/2024"));
    const QString selected = Source();
    OpenFrame();
    Press("Cmd_SelDate_Close");
    QVERIFY(!FrameShown());
    QCOMPARE(Source(), selected);
}

/// The tool keeps the focus, by its key too.
void DateSelectionTest::TabsLeadFromTheToolIntoTheFrame() {
    PressKey(Qt::Key_L, Qt::ControlModifier);
    QVERIFY(FrameShown());
    QStringList stops;
    for (int tab = 0; tab < 10; ++tab) {
        stops.append(forms::Screen::ActiveControl()->objectName());
        PressKey(Qt::Key_Tab);
    }
    QCOMPARE(stops,
             (QStringList{"Cmd_ToolBar_Histo_0", "Cmd_ToolBar_Histo_1", "Cmd_ToolBar_Histo_2",
                          "Cmd_ToolBar_Histo_3", "Cmd_ToolBar_Histo_4", "Cmd_CloseHisto", "BXC_ChoixDate",
                          "CTX_ChoixDate", "Cmd_SelDate_Select", "Cmd_SelDate_Close"}));
}

/// Escape on the tool is the history's.
void DateSelectionTest::TheFrameIsStillThereWhenTheHistoryWasClosedAroundIt() {
    PressKey(Qt::Key_L, Qt::ControlModifier);
    PressKey(Qt::Key_Escape);
    QVERIFY(!Shown(Control<QWidget>("FRM_HISTO")));
    Press("CMD_HistoVis");
    QVERIFY(FrameShown());
}

void DateSelectionTest::EnterLeadsThroughTheFrame() {
    OpenFrame();
    GoToComparisons();
    PressKey(Qt::Key_Down);
    QCOMPARE(Comparisons()->ListIndex(), 0);
    PressKey(Qt::Key_Return);
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_ChoixDate"));
    QTest::keyClicks(Box("CTX_ChoixDate"), QStringLiteral("1/1/2024"));
    PressKey(Qt::Key_Return);
    QCOMPARE(forms::Screen::ActiveControl(), Button("Cmd_SelDate_Select"));
    PressKey(Qt::Key_Return);
    QVERIFY(!FrameShown());
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_HISTO"));
    QCOMPARE(ShownLabels(), (QStringList{"2026", "2024"}));
}

void DateSelectionTest::EnterIsLeftToTheBoxes() {
    OpenFrame();
    // A list that is only chosen from has no use for Enter: what it stands in gets the key.
    const KeyWatcher watcher(Control<QWidget>("FRM_SelDate"));
    forms::SetFocus(Comparisons());
    PressKey(Qt::Key_Return);
    QCOMPARE(watcher.Keys(), std::vector<int>{Qt::Key_Return});
    const QSignalSpy entered(Box("CTX_ChoixDate"), &QLineEdit::returnPressed);
    PressKey(Qt::Key_Return);
    QCOMPARE(entered.count(), 1);
}

void DateSelectionTest::TheDateIsSelectedWholeWhenEntered() {
    OpenFrame();
    Box("CTX_ChoixDate")->SetText(QStringLiteral("01/02/2026"));
    forms::SetFocus(Box("CTX_ChoixDate"));
    QCOMPARE(Box("CTX_ChoixDate")->selectedText(), QStringLiteral("01/02/2026"));
}

void DateSelectionTest::ADateIsWrittenOut() {
    OpenFrame();
    TypeOver(Box("CTX_ChoixDate"), QStringLiteral("3-4-26"));
    forms::SetFocus(Button("Cmd_SelDate_Close"));
    QCOMPARE(Box("CTX_ChoixDate")->Text(), QStringLiteral("03/04/2026"));
    QVERIFY(program_->boxes.Shown().empty());
}

void DateSelectionTest::WhatIsNoDateIsHeld_data() {
    QTest::addColumn<QString>("typed");
    QTest::newRow("a word") << QStringLiteral("hier");
    QTest::newRow("a day that there is not") << QStringLiteral("45/13/2026");
    QTest::newRow("NULL") << QStringLiteral("NULL");
    QTest::newRow("VIDE") << QStringLiteral("VIDE");
}

void DateSelectionTest::WhatIsNoDateIsHeld() {
    QFETCH(const QString, typed);
    const QString before = Source();
    SelectDate(2, typed);
    CompareBoxes(program_->boxes, {QStringLiteral("Saisie d'une date attendue (JJ/MM/AA).")});
    QCOMPARE(forms::Screen::ActiveControl(), Box("CTX_ChoixDate"));
    QCOMPARE(Box("CTX_ChoixDate")->Text(), typed);
    QVERIFY(FrameShown());
    QCOMPARE(Source(), before);
}

void DateSelectionTest::LeavingTheRecordWithABadDateHoldsNobody() {
    Box("CTX_IMMAT")->SetDataChanged(false);
    OpenFrame();
    TypeOver(Box("CTX_ChoixDate"), QStringLiteral("hier"));
    PressKey(Qt::Key_F8);
    CompareBoxes(program_->boxes, {QStringLiteral("Saisie d'une date attendue (JJ/MM/AA).")});
    QCOMPARE(program_->Ends(), 0);
    QCOMPARE(Tabs()->Tab(), kListTab);
}

void DateSelectionTest::TheStatementOfAComparison_data() {
    QTest::addColumn<int>("entry");
    QTest::addColumn<QString>("word");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("later") << 0 << QStringLiteral(">") << QStringList{"2026"};
    QTest::newRow("earlier") << 1 << QStringLiteral("<") << QStringList{"1999"};
    QTest::newRow("equal") << 2 << QStringLiteral("=") << QStringList{"2024"};
    QTest::newRow("nothing chosen") << -1 << QStringLiteral("=") << QStringList{"2024"};
}

void DateSelectionTest::TheStatementOfAComparison() {
    QFETCH(const int, entry);
    QFETCH(const QString, word);
    QFETCH(const QStringList, labels);
    SelectDate(entry, QStringLiteral("02/05/2024"));
    QCOMPARE(Source(), Statement(OwnCondition(kVehicle) + QStringLiteral(" and ") + kDate + word +
                                 QStringLiteral(" #05/02/24#")));
    QCOMPARE(ShownLabels(), labels);
    QVERIFY(!FrameShown());
    QCOMPARE(forms::Screen::MousePointer(), 0);
    QVERIFY(Grid("DBG_HISTO")->ReDraw());
    QVERIFY(program_->boxes.Shown().empty());
}

void DateSelectionTest::ADateOfTheLastCenturyGoesOutWithTwoDigits() {
    SelectDate(2, QStringLiteral("31/12/1999"));
    QVERIFY(Source().contains(QStringLiteral("= #12/31/99# ")));
    QCOMPARE(ShownLabels(), QStringList{"1999"});
}

void DateSelectionTest::TheSortedDateIsComparedNotTheShownOne() {
    // The last job shows 01/02/2026 too, its planned day, but has not left.
    SelectDate(2, QStringLiteral("01/02/2026"));
    QCOMPARE(ShownLabels(), QStringList{"2026"});
}

void DateSelectionTest::AnExitWithItsHourEqualsNoDay() {
    constexpr double kTenToMidday = 0.493;
    const basic::Date left{basic::DateOf(2025, 7, 1).days + kTenToMidday};
    AddJob({kFirstJob + 4, kVehicle, QStringLiteral("avec heure"), {}, left});
    Press("CMD_HistoVis");
    SelectDate(2, QStringLiteral("01/07/2025"));
    CompareBoxes(program_->boxes, {QStringLiteral("Sélection vide.")});
    Press("CMD_HistoVis");
    SelectDate(0, QStringLiteral("01/07/2025"));
    QCOMPARE(ShownLabels(), (QStringList{"2026", "avec heure"}));
}

void DateSelectionTest::SelectionsAddUp() {
    SelectDate(0, QStringLiteral("01/01/2000"));
    QCOMPARE(ShownLabels(), (QStringList{"2026", "2024"}));
    SelectDate(1, QStringLiteral("01/01/2025"));
    QCOMPARE(Source(),
             Statement(OwnCondition(kVehicle) + QStringLiteral(" AND ") + InCapitals(kDate) +
                       QStringLiteral("> #01/01/00# and ") + kDate + QStringLiteral("< #01/01/25#")));
    QCOMPARE(ShownLabels(), QStringList{"2024"});
}

void DateSelectionTest::TheConditionBindsToTheSecondHalfOnly() {
    AddJob({kFirstJob + 4, QStringLiteral("AUTRE"), QStringLiteral("par une ligne"), {}, {}});
    AddJobDetail(kFirstJob + 4, kVehicle, basic::DateOf(1990, 1, 1));
    Press("CMD_HistoVis");
    SelectDate(0, QStringLiteral("01/01/2026"));
    QCOMPARE(ShownLabels(), (QStringList{"2026", "par une ligne"}));
}

void DateSelectionTest::AnEmptyDateBringsTheListBack() {
    QCOMPARE(Form().Tag(), QString());
    SelectDate(0, QStringLiteral("01/01/2025"));
    QCOMPARE(Form().Tag(), OwnCondition(kVehicle));
    SelectDate(0, QStringLiteral("01/01/2026"));
    QCOMPARE(Form().Tag(), OwnCondition(kVehicle));
    SelectDate(0, QString());
    QCOMPARE(Source(), Statement(OwnCondition(kVehicle)));
    QCOMPARE(ShownLabels(), (QStringList{"2026", "2024", "1999", "sans"}));
}

void DateSelectionTest::AnEmptyDateWithoutASelectionChangesNothing() {
    SelectDate(-1, QString());
    QCOMPARE(Source(), Statement(OwnCondition(kVehicle)));
    QCOMPARE(ShownLabels(), (QStringList{"2026", "2024", "1999", "sans"}));
    QCOMPARE(Form().Tag(), OwnCondition(kVehicle));
}

void DateSelectionTest::TheFirstVehiclesConditionComesBack() {
    SelectDate(0, QStringLiteral("01/01/2025"));
    OpenHistoryOf(QStringLiteral("1191 JR 43"));
    QVERIFY(!ShownLabels().contains(QStringLiteral("2026")));
    SelectDate(0, QString());
    QCOMPARE(Source(), Statement(OwnCondition(kVehicle)));
    QCOMPARE(ShownLabels(), (QStringList{"2026", "2024", "1999", "sans"}));
}

void DateSelectionTest::AListToolOnTheVehiclesWritesTheFilterToo() {
    Box("CTX_IMMAT")->SetDataChanged(false);
    Tabs()->SetTab(kListTab);
    GoToColumn(*Vehicles().grid, 1);
    QVERIFY(InDialog([] { tests::PressTool(Vehicles(), kSortTool); }, [] {}));
    QCOMPARE(Form().Tag(), QStringLiteral("***"));
    OpenHistoryOf(kVehicle);
    TheListToolContext().ColumnType = CellType::Date;
    SelectDate(-1, QString());
    QCOMPARE(Source(), kSelect + kOrder);
    QVERIFY(Grid("DBG_HISTO")->MaxRows() > 1000);
    // A date typed then is the only condition.
    SelectDate(2, QStringLiteral("31/12/1999"));
    QCOMPARE(Source(), Statement(kDate + QStringLiteral("= #12/31/99#")));
    QCOMPARE(ShownLabels(), QStringList{"1999"});
}

void DateSelectionTest::TheVehiclesGetTheHistorysFilterToo() {
    SelectDate(0, QStringLiteral("01/01/2025"));
    Box("CTX_IMMAT")->SetDataChanged(false);
    Tabs()->SetTab(kListTab);
    const QString before = Vehicles().data->RecordSource();
    SelectOn(Vehicles(), 1, 0, QString());
    // Fields of jobs mean nothing there.
    const std::vector<support::ShownBox>& boxes = program_->boxes.Shown();
    QVERIFY(!boxes.empty());
    QVERIFY2(boxes[0].text.startsWith(QStringLiteral("SELECTION (ERREUR 3061): ")),
             qPrintable(boxes[0].text));
    // The form opened anew has forgotten the filter.
    Press("Cmd_Quitter");
    QCOMPARE(program_->Ends(), 0);
    program_->OpenList();
    QCOMPARE(Form().Tag(), QString());
    QCOMPARE(Vehicles().data->RecordSource(), before);
    QVERIFY(Vehicles().grid->MaxRows() > 0);
}

void DateSelectionTest::NoComparisonOnATextColumnComparesFirstCharacters() {
    TheListToolContext().ColumnType = CellType::Edit;
    SelectDate(-1, QStringLiteral("02/05/2024"));
    QCOMPARE(Source(), Statement(OwnCondition(kVehicle) + QStringLiteral(" and left(") + kDate +
                                 QStringLiteral(",10) = '02/05/2024'")));
    QCOMPARE(ShownLabels(), QStringList{"2024"});
}

void DateSelectionTest::AnotherKindOfColumnAddsNothing() {
    for (const CellType kind : {CellType::Edit, CellType::Number, CellType::CheckBox}) {
        TheListToolContext().ColumnType = kind;
        SelectDate(0, QStringLiteral("02/05/2024"));
        QCOMPARE(Source(), Statement(OwnCondition(kVehicle)));
    }
}

void DateSelectionTest::NullAndVideHaveABranchThatTheBoxNeverLetsThrough_data() {
    QTest::addColumn<QString>("word");
    QTest::newRow("NULL") << QStringLiteral("Null");
    QTest::newRow("VIDE") << QStringLiteral("vide");
}

void DateSelectionTest::NullAndVideHaveABranchThatTheBoxNeverLetsThrough() {
    QFETCH(const QString, word);
    SelectAsItStands(2, word);
    QCOMPARE(Source(),
             Statement(OwnCondition(kVehicle) + QStringLiteral(" and ") + kDate + QStringLiteral("= Null")));
    // Nothing equals Null.
    CompareBoxes(program_->boxes, {QStringLiteral("Sélection vide.")});
}

void DateSelectionTest::AValueThatIsNoDateLeavesTheFrameOpen() {
    const QString before = Source();
    SelectAsItStands(0, QStringLiteral("hier"));
    CompareBoxes(program_->boxes, {QStringLiteral("SELECTION ERR. 13 Saisie d'une date attendue ")});
    QVERIFY(FrameShown());
    QCOMPARE(forms::Screen::MousePointer(), 0);
    QCOMPARE(Source(), before);
    QVERIFY(Grid("DBG_HISTO")->ReDraw());
}

void DateSelectionTest::AnUnknownComparisonLeavesThePointerBusy() {
    Comparisons()->addItem(QStringLiteral("Entre"));
    const QString before = Source();
    SelectAsItStands(3, QStringLiteral("01/01/2025"));
    QCOMPARE(forms::Screen::ActiveControl(), Comparisons());
    QCOMPARE(forms::Screen::MousePointer(), 11);
    QVERIFY(FrameShown());
    QCOMPARE(Source(), before);
    forms::Screen::SetMousePointer(0);
}

void DateSelectionTest::AnEmptySelectionKeepsTheOldPicture() {
    SelectDate(0, QStringLiteral("01/01/2029"));
    CompareBoxes(program_->boxes, {QStringLiteral("Sélection vide.")});
    QVERIFY(!FrameShown());
    QCOMPARE(forms::Screen::MousePointer(), 0);
    QCOMPARE(Grid("DBG_HISTO")->MaxRows(), 0);
    QVERIFY(!Grid("DBG_HISTO")->ReDraw());
    SelectDate(0, QString());
    QVERIFY(Grid("DBG_HISTO")->ReDraw());
    QCOMPARE(ShownLabels().size(), 4);
}

void DateSelectionTest::ReopeningTheHistoryKeepsTheOldPictureToo() {
    SelectDate(0, QStringLiteral("01/01/2029"));
    Press("CMD_HistoVis");
    QCOMPARE(ShownLabels().size(), 4);
    QVERIFY(!Grid("DBG_HISTO")->ReDraw());
    SelectDate(0, QStringLiteral("01/01/2026"));
    QVERIFY(Grid("DBG_HISTO")->ReDraw());
}

void DateSelectionTest::AFailureIsToldAndTheRestRuns() {
    Data("DBD_HISTO")->SetRecordSource(QStringLiteral("SELECT * FROM TAFF ORDER BY"));
    // The pointer is the normal one by the time that the operator reads of it.
    std::vector<int> pointers;
    program_->boxes.LookAtBoxes([&] { pointers.push_back(forms::Screen::MousePointer()); });
    SelectDate(0, QStringLiteral("01/01/2025"));
    // The clauses of the context are those of the last list tool: none. The statement that comes of them is
    // no SELECT.
    const std::vector<support::ShownBox>& boxes = program_->boxes.Shown();
    QVERIFY(boxes.size() >= 2);
    QCOMPARE(pointers, std::vector<int>(boxes.size(), 0));
    QVERIFY2(boxes[0].text.startsWith(QStringLiteral("SELECTION (ERREUR 5): ")), qPrintable(boxes[0].text));
    QVERIFY2(boxes[1].text.startsWith(QStringLiteral("SELECTION (ERREUR 3078): ")),
             qPrintable(boxes[1].text));
    QVERIFY(!FrameShown());
    QCOMPARE(forms::Screen::MousePointer(), 0);
    QCOMPARE(program_->Ends(), 0);
}

void DateSelectionTest::TheCursorGoesToTheColumnOfTheLastTool() {
    TheListToolContext().ActiveCol = 3;
    SelectDate(0, QStringLiteral("01/01/2000"));
    QCOMPARE(Grid("DBG_HISTO")->ActiveCol(), 3);
    QCOMPARE(Grid("DBG_HISTO")->ActiveRow(), 1);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    DateSelectionTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "date_selection_test.moc"
