// The visits of a vehicle, typed in place with real keys and a real mouse, and what is in the file
// afterwards.
#include <QLineEdit>

#include <basic/conversion.h>
#include <basic/date.h>
#include <forms/strings.h>
#include <shell/form_support.h>

#include "other_operator.h"
#include "stored_rows.h"
#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

/// Three visits: CT, LIM and VID.
const QString kToyota = QStringLiteral("KG-361-VP");
/// Its visit CT has no date.
const QString kWithoutDate = QStringLiteral("RG-194-NE");
/// Its third visit, EXT, has no period.
const QString kWithoutPeriod = QStringLiteral("TH-496-AN");
const QString kNew = QStringLiteral("ZY-001-AA");

constexpr int kType = 1;
constexpr int kPeriod = 2;
constexpr int kDate = 3;
constexpr int kLink = 4;
constexpr int kNext = 5;

forms::Grid* Visits() {
    return Grid("DBG_DETAIL");
}

forms::Grid* Picker() {
    return Grid("DBG_TypTrav");
}

QString Visit(int column, int row) {
    return Cell("DBG_DETAIL", column, row);
}

QString Today() {
    return forms::ToQString(basic::Joined(basic::Today()));
}

QPoint Cursor() {
    return {Visits()->ActiveCol(), Visits()->ActiveRow()};
}

/// Keys go where the focus is, be it an open cell.
void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    QCoreApplication::processEvents();
}

/// The first character may open a cell, which the others go to.
void Type(const QString& text) {
    for (const QChar character : text) {
        QTest::keyClicks(QApplication::focusWidget(), character);
    }
}

void ClickCell(forms::Grid* grid, int column, int row) {
    const QRect cell = grid->visualRect(grid->model()->index(row - 1, column - 1));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
}

void DoubleClickCell(forms::Grid* grid, int column, int row) {
    ClickCell(grid, column, row);
    const QPoint place = grid->visualRect(grid->model()->index(row - 1, column - 1)).center();
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseRelease(grid->viewport(), Qt::LeftButton, {}, place);
}

bool IsOpenForTyping() {
    const auto* const open = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    return open != nullptr && Visits()->isAncestorOf(open);
}

bool IsFlagged(int column, int row) {
    Visits()->SetCol(column);
    Visits()->SetRow(row);
    return Visits()->ChangedFlag();
}

bool PickerIsShown() {
    return Shown(Control<forms::Frame>("Frm_TypTrav"));
}

QString PickedCode() {
    return Cell("DBG_TypTrav", 1, Picker()->ActiveRow());
}

}  // namespace

class VisitsTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    // The grid.
    void TheColumnsAreAsDesigned_data();
    void TheColumnsAreAsDesigned();
    void AnEmptyGridOpensABlankRowWhenItGetsTheFocus();
    void AGridWithVisitsStaysAsItIsWhenItGetsTheFocus();
    void PermanentEditModeStaysForTheNextVehicles();
    void EnterOpensTheNextRowFromTheLastDate();
    void EnterInTheLastDateKeepsADate();
    void EnterInADateAboveMovesOn();
    void LeavingADateLinksTheRowToTheVehicle();

    // The next visit.
    void TheNextVisitIsThePeriodAfterTheLast();
    void WithoutPeriodOrDateThereIsNoNextVisit();
    void ANextVisitFallsToTheLastDayOfItsMonth();
    void ANextVisitIsWorkedOutOnlyWhenTheRowsAreLoaded();
    void TheNextVisitCannotBeTyped();
    void WorkingOutTheNextVisitIsNoChange();

    // Checks of cells.
    void LettersInThePeriodBecomeZero();
    void AnEmptyPeriodBecomesZero();
    void APeriodAboveTheLimitIsRefused();
    void AnEmptyDateBecomesToday();
    void ADateOutsideTheRangeIsRefused();
    void AKnownCodeIsLeftInAnyCaseAndWithBlanks();
    void ABlankThatDoesNotBreakIsPartOfACode();
    void AnEmptyCodeIsNotChecked();
    void AnApostropheInACodeIsTheUnhandledError();

    // The picker.
    void AnUnknownCodeOpensThePickerOnTheNearestOne();
    void EscapeFromThePickerLeavesTheCodeAndTheNextMoveOpensItAgain();
    void F4OpensThePickerInTheFirstColumnOnly();
    void ADoubleClickChoosesTheCodeOfItsRow();
    void EnterChoosesTheActiveCode();
    void AChoiceAloneIsNoChange();
    void WithoutTypesOfWorkThereIsNothingToChoose();
    void TheButtonClosesThePickerAsEscapeDoes();
    void EscapeOnTheButtonOfThePickerClosesItToo();

    // In the file.
    void TwoVisitsOfANewVehicleAreTypedAndSavedWithoutTheMouse();
    void ChangedVisitsAreEditedAndNewOnesAppended();
    void ARowNeverLeftThroughItsDateIsLinkedByTheSave();
    void ACodeThatIsNotLeftForAnotherCellIsSavedUnchecked();
    void APeriodOfZeroIsStored();
    void ATypedVisitHoldsTheOperatorOnTheRecord();
    void CancellingDropsTypedVisits();

 private:
    void OpenWithoutVisits(const QString& registration);
    [[nodiscard]] std::vector<StoredRow> Stored(const QString& registration) const {
        return StoredRows(program_->DataFile(), "TVEH_DETAIL", QStringLiteral("TVEH_DETAIL_Immat"),
                          registration);
    }

    std::unique_ptr<RunningProgram> program_;
};

void VisitsTest::init() {
    program_ = std::make_unique<RunningProgram>();
    program_->OpenVehicles();
    OpenRecordOf(kToyota);
}

void VisitsTest::OpenWithoutVisits(const QString& registration) {
    Tabs()->SetTab(kListTab);
    ExecuteElsewhere(
        program_->DataFile(),
        QStringLiteral("delete from TVEH_DETAIL where TVEH_DETAIL_Immat = '%1'").arg(registration));
    dao::DBEngine::Instance().Idle(1);
    OpenRecordOf(registration);
}

// The grid.

void VisitsTest::TheColumnsAreAsDesigned_data() {
    QTest::addColumn<QString>("grid");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("heading");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("design");
    const auto add = [](const char* grid, int column, const char* heading, const char* field,
                        const char* design) {
        QTest::newRow(heading) << QString::fromLatin1(grid) << column << QString::fromUtf8(heading)
                               << QString::fromLatin1(field) << QString::fromLatin1(design);
    };
    add("DBG_DETAIL", 1, "Type de travaux", "TVEH_DETAIL_TypTrav", "13.87|text");
    add("DBG_DETAIL", 2, "Périodicité", "TVEH_DETAIL_Period", "8.75|number|||-99999999..200");
    add("DBG_DETAIL", 3, "Dernière visite", "TVEH_DETAIL_DatVis", "9.25|date|||1990-01-01..2100-12-31");
    add("DBG_DETAIL", 4, "Immat", "TVEH_DETAIL_Immat", "0|text");
    add("DBG_DETAIL", 5, "Prochaine visite", "", "10.12|date|locked||1990-01-01..2100-12-31");
    add("DBG_TypTrav", 1, "Code", "TTYP_CODE", "");
    add("DBG_TypTrav", 2, "Libellé", "TTYP_LIBELLE", "");
}

void VisitsTest::TheColumnsAreAsDesigned() {
    QFETCH(const QString, grid);
    QFETCH(const int, column);
    QFETCH(const QString, heading);
    QFETCH(const QString, field);
    QFETCH(const QString, design);
    forms::Grid* const columns = Grid(qPrintable(grid));
    QCOMPARE(columns->MaxCols(), grid == QStringLiteral("DBG_DETAIL") ? 5 : 2);
    QCOMPARE(Cell(qPrintable(grid), column, 0), heading);
    QString line = columns->property("columns").toStringList().at(column - 1);
    while (line.endsWith(u'|')) {
        line.chop(1);
    }
    const QString expected = heading + u'|' + field + u'|' + design;
    QVERIFY2(design.isEmpty() ? line.startsWith(expected) : line == expected, qPrintable(line));
    QCOMPARE(columns->isColumnHidden(column - 1), heading == QStringLiteral("Immat"));
}

void VisitsTest::AnEmptyGridOpensABlankRowWhenItGetsTheFocus() {
    OpenWithoutVisits(kToyota);
    QCOMPARE(Visits()->MaxRows(), 0);
    forms::SetFocus(Box("CTX_CODCLI"));
    Key(Qt::Key_Return);
    QCOMPARE(Visits()->MaxRows(), 1);
    QCOMPARE(Cursor(), QPoint(1, 1));
    QVERIFY(IsOpenForTyping());
    QVERIFY(Visits()->EditModePermanent());
    QVERIFY(Visits()->EditModeReplace());
    QVERIFY(!shell::Saisie_En_Cours(Form()));
}

void VisitsTest::AGridWithVisitsStaysAsItIsWhenItGetsTheFocus() {
    forms::SetFocus(Visits());
    QCOMPARE(Visits()->MaxRows(), 3);
    QVERIFY(!IsOpenForTyping());
    Type(QStringLiteral("FRE"));
    QVERIFY(IsOpenForTyping());
    Key(Qt::Key_Return);
    QCOMPARE(Visit(kType, 1), QStringLiteral("FRE"));
}

void VisitsTest::PermanentEditModeStaysForTheNextVehicles() {
    OpenWithoutVisits(kToyota);
    forms::SetFocus(Visits());
    Key(Qt::Key_F8);
    OpenRecordOf(kWithoutPeriod);
    forms::SetFocus(Visits());
    QVERIFY(IsOpenForTyping());
}

void VisitsTest::EnterOpensTheNextRowFromTheLastDate() {
    ClickCell(Visits(), kDate, 3);
    Key(Qt::Key_Delete);
    TypeVisit(kDate, 3, QStringLiteral("12/03/2026"));
    QCOMPARE(Visits()->MaxRows(), 4);
    QCOMPARE(Cursor(), QPoint(1, 4));
    Type(QStringLiteral("FRE"));
    Key(Qt::Key_Return);
    Type(QStringLiteral("6"));
    Key(Qt::Key_Return);
    Key(Qt::Key_Return);
    QCOMPARE(Visit(kDate, 4), Today());
    QVERIFY(IsFlagged(kDate, 4));
    QCOMPARE(Cursor(), QPoint(1, 5));
}

void VisitsTest::EnterInTheLastDateKeepsADate() {
    ClickCell(Visits(), kDate, 3);
    Key(Qt::Key_Return);
    QCOMPARE(Visit(kDate, 3), QStringLiteral("30/08/2025"));
    QVERIFY(!IsFlagged(kDate, 3));
    QCOMPARE(Cursor(), QPoint(1, 4));
}

void VisitsTest::EnterInADateAboveMovesOn() {
    ClickCell(Visits(), kDate, 1);
    Key(Qt::Key_Return);
    QCOMPARE(Visits()->MaxRows(), 3);
    QCOMPARE(Cursor(), QPoint(kNext, 1));
    Key(Qt::Key_Return);
    QCOMPARE(Cursor(), QPoint(kType, 2));
}

void VisitsTest::LeavingADateLinksTheRowToTheVehicle() {
    OpenWithoutVisits(kToyota);
    forms::SetFocus(Visits());
    ClickCell(Visits(), kDate, 1);
    QCOMPARE(Visit(kLink, 1), QString());
    ClickCell(Visits(), kPeriod, 1);
    QCOMPARE(Visit(kLink, 1), kToyota);
    QVERIFY(!IsFlagged(kLink, 1));
}

// The next visit.

void VisitsTest::TheNextVisitIsThePeriodAfterTheLast() {
    QCOMPARE(Visit(kDate, 1), QStringLiteral("14/01/2026"));
    QCOMPARE(Visit(kPeriod, 1), QStringLiteral("24"));
    QCOMPARE(Visit(kNext, 1), QStringLiteral("14/01/2028"));
    QCOMPARE(Visit(kPeriod, 2), QStringLiteral("0"));
    QCOMPARE(Visit(kNext, 2), Visit(kDate, 2));
    QCOMPARE(Visit(kNext, 3), QStringLiteral("30/08/2026"));
}

void VisitsTest::WithoutPeriodOrDateThereIsNoNextVisit() {
    Tabs()->SetTab(kListTab);
    OpenRecordOf(kWithoutDate);
    QCOMPARE(Visit(kPeriod, 1), QStringLiteral("24"));
    QCOMPARE(Visit(kDate, 1), QString());
    QCOMPARE(Visit(kNext, 1), QString());
    Tabs()->SetTab(kListTab);
    OpenRecordOf(kWithoutPeriod);
    QCOMPARE(Visit(kPeriod, 3), QString());
    QCOMPARE(Visit(kDate, 3), QStringLiteral("10/10/2025"));
    QCOMPARE(Visit(kNext, 3), QString());
}

void VisitsTest::ANextVisitFallsToTheLastDayOfItsMonth() {
    Tabs()->SetTab(kListTab);
    ExecuteElsewhere(program_->DataFile(),
                     QStringLiteral("update TVEH_DETAIL set TVEH_DETAIL_PERIOD = 1, TVEH_DETAIL_DATVIS = "
                                    "#01/31/2026# where TVEH_DETAIL_Immat = '%1'")
                         .arg(kToyota));
    OpenRecordOf(kToyota);
    QCOMPARE(Visit(kNext, 1), QStringLiteral("28/02/2026"));
}

void VisitsTest::ANextVisitIsWorkedOutOnlyWhenTheRowsAreLoaded() {
    TypeVisit(kPeriod, 1, QStringLiteral("12"));
    TypeVisit(kDate, 1, QStringLiteral("01/02/2026"));
    QCOMPARE(Visit(kNext, 1), QStringLiteral("14/01/2028"));
    Press("Cmd_Update");
    QCOMPARE(Visit(kNext, 1), QStringLiteral("14/01/2028"));
    Tabs()->SetTab(kListTab);
    Tabs()->SetTab(kRecordTab);
    QCOMPARE(Visit(kNext, 1), QStringLiteral("01/02/2027"));
}

void VisitsTest::TheNextVisitCannotBeTyped() {
    ClickCell(Visits(), kNext, 1);
    Type(QStringLiteral("1"));
    DoubleClickCell(Visits(), kNext, 1);
    QVERIFY(!IsOpenForTyping());
    QCOMPARE(Visit(kNext, 1), QStringLiteral("14/01/2028"));
    QVERIFY(!Visits()->ChangeMade());
}

void VisitsTest::WorkingOutTheNextVisitIsNoChange() {
    QCOMPARE(Visit(kNext, 1), QStringLiteral("14/01/2028"));
    QVERIFY(!IsFlagged(kNext, 1));
    QVERIFY(!Visits()->ChangeMade());
    QVERIFY(!shell::Saisie_En_Cours(Form()));
}

// Checks of cells.

void VisitsTest::LettersInThePeriodBecomeZero() {
    TypeVisit(kPeriod, 1, QStringLiteral("abc"));
    QCOMPARE(Visit(kPeriod, 1), QStringLiteral("0"));
    QVERIFY(IsFlagged(kPeriod, 1));
    QCOMPARE(Cursor(), QPoint(kDate, 1));
}

void VisitsTest::AnEmptyPeriodBecomesZero() {
    Tabs()->SetTab(kListTab);
    OpenRecordOf(kWithoutPeriod);
    ClickCell(Visits(), kPeriod, 3);
    Key(Qt::Key_Return);
    QCOMPARE(Visit(kPeriod, 3), QStringLiteral("0"));
    QVERIFY(IsFlagged(kPeriod, 3));
    QVERIFY(!Visits()->ChangeMade());
}

void VisitsTest::APeriodAboveTheLimitIsRefused() {
    TypeVisit(kPeriod, 1, QStringLiteral("201"));
    QCOMPARE(Visit(kPeriod, 1), QStringLiteral("24"));
    TypeVisit(kPeriod, 1, QStringLiteral("200"));
    QCOMPARE(Visit(kPeriod, 1), QStringLiteral("200"));
    TypeVisit(kPeriod, 1, QStringLiteral("-99999999"));
    QCOMPARE(Visit(kPeriod, 1), QStringLiteral("-99999999"));
    TypeVisit(kPeriod, 1, QStringLiteral("-100000000"));
    QCOMPARE(Visit(kPeriod, 1), QStringLiteral("-99999999"));
}

void VisitsTest::AnEmptyDateBecomesToday() {
    Tabs()->SetTab(kListTab);
    OpenRecordOf(kWithoutDate);
    ClickCell(Visits(), kDate, 1);
    Key(Qt::Key_Down);
    QCOMPARE(Visit(kDate, 1), Today());
    QVERIFY(IsFlagged(kDate, 1));
    QVERIFY(!Visits()->ChangeMade());
}

void VisitsTest::ADateOutsideTheRangeIsRefused() {
    TypeVisit(kDate, 1, QStringLiteral("31/12/1989"));
    QCOMPARE(Visit(kDate, 1), QStringLiteral("14/01/2026"));
    TypeVisit(kDate, 1, QStringLiteral("01/01/2101"));
    QCOMPARE(Visit(kDate, 1), QStringLiteral("14/01/2026"));
    TypeVisit(kDate, 1, QStringLiteral("1/1/1990"));
    QCOMPARE(Visit(kDate, 1), QStringLiteral("01/01/1990"));
    TypeVisit(kDate, 1, QStringLiteral("31/12/2100"));
    QCOMPARE(Visit(kDate, 1), QStringLiteral("31/12/2100"));
}

void VisitsTest::AKnownCodeIsLeftInAnyCaseAndWithBlanks() {
    TypeVisit(kType, 1, QStringLiteral(" fre"));
    QVERIFY(!PickerIsShown());
    QCOMPARE(Cursor(), QPoint(kPeriod, 1));
    QCOMPARE(Visit(kType, 1), QStringLiteral(" fre"));
}

void VisitsTest::ABlankThatDoesNotBreakIsPartOfACode() {
    ClickCell(Visits(), kType, 1);
    Type(QStringLiteral("FRE"));
    QKeyEvent blank(QEvent::KeyPress, Qt::Key_nobreakspace, Qt::NoModifier, QString(QChar::Nbsp));
    QApplication::sendEvent(QApplication::focusWidget(), &blank);
    Key(Qt::Key_Return);
    QCOMPARE(Visit(kType, 1), QStringLiteral("FRE") + QChar(QChar::Nbsp));
    QVERIFY(PickerIsShown());
}

void VisitsTest::AnEmptyCodeIsNotChecked() {
    ClickCell(Visits(), kDate, 3);
    Key(Qt::Key_Return);
    Key(Qt::Key_Return);
    QVERIFY(!PickerIsShown());
    QCOMPARE(Cursor(), QPoint(kPeriod, 4));
}

void VisitsTest::AnApostropheInACodeIsTheUnhandledError() {
    support::BoxAnswerer boxes;
    const int before = forms::CatchEndOfProcess(true);
    TypeVisit(kType, 1, QStringLiteral("L'A"));
    QCOMPARE(forms::CatchEndOfProcess(true), before + 1);
    const QString text = boxes.Shown().at(0).text;
    QVERIFY2(text.startsWith(QStringLiteral("Erreur d'exécution 3077")), qPrintable(text));
}

// The picker.

void VisitsTest::AnUnknownCodeOpensThePickerOnTheNearestOne() {
    support::BoxAnswerer boxes;
    TypeVisit(kType, 1, QStringLiteral("CU"));
    QVERIFY(boxes.Shown().empty());
    QVERIFY(PickerIsShown());
    QCOMPARE(forms::Screen::ActiveControl(), Picker());
    QCOMPARE(Cursor(), QPoint(kType, 1));
    QCOMPARE(Visit(kType, 1), QStringLiteral("CU"));
    QCOMPARE(PickedCode(), QStringLiteral("DIS"));
}

void VisitsTest::EscapeFromThePickerLeavesTheCodeAndTheNextMoveOpensItAgain() {
    TypeVisit(kType, 1, QStringLiteral("ZZZ"));
    QVERIFY(PickerIsShown());
    Key(Qt::Key_Escape);
    QVERIFY(!PickerIsShown());
    QCOMPARE(forms::Screen::ActiveControl(), Visits());
    QCOMPARE(Visit(kType, 1), QStringLiteral("ZZZ"));
    QCOMPARE(Cursor(), QPoint(kType, 1));
    ClickCell(Visits(), kDate, 3);
    QVERIFY(PickerIsShown());
    QCOMPARE(forms::Screen::ActiveControl(), Picker());
    QCOMPARE(Cursor(), QPoint(kType, 1));
}

void VisitsTest::F4OpensThePickerInTheFirstColumnOnly() {
    ClickCell(Visits(), kPeriod, 1);
    Key(Qt::Key_F4);
    QVERIFY(!PickerIsShown());
    ClickCell(Visits(), kType, 1);
    // The desktop's key for the end of the program.
    Key(Qt::Key_F4, Qt::AltModifier);
    QVERIFY(!PickerIsShown());
    // Ctrl+F4 closes the child window before the grid can see it.
    for (const Qt::KeyboardModifier modifier : {Qt::NoModifier, Qt::ShiftModifier}) {
        Key(Qt::Key_F4, modifier);
        QVERIFY(PickerIsShown());
        QCOMPARE(forms::Screen::ActiveControl(), Picker());
        Key(Qt::Key_Escape);
        QVERIFY(!PickerIsShown());
    }
}

void VisitsTest::ADoubleClickChoosesTheCodeOfItsRow() {
    ClickCell(Visits(), kType, 2);
    Key(Qt::Key_F4);
    const QString code = Cell("DBG_TypTrav", 1, 3);
    DoubleClickCell(Picker(), 2, 3);
    QVERIFY(!PickerIsShown());
    QCOMPARE(Visit(kType, 2), code);
    QCOMPARE(forms::Screen::ActiveControl(), Visits());
}

void VisitsTest::EnterChoosesTheActiveCode() {
    TypeVisit(kType, 2, QStringLiteral("HB"));
    QCOMPARE(PickedCode(), QStringLiteral("LIM"));
    Key(Qt::Key_Down);
    const QString code = PickedCode();
    QVERIFY(code != QStringLiteral("LIM"));
    Key(Qt::Key_Return);
    QCOMPARE(Visit(kType, 2), code);
    QVERIFY(!PickerIsShown());
    Key(Qt::Key_Return);
    QCOMPARE(Cursor(), QPoint(kPeriod, 2));
}

void VisitsTest::AChoiceAloneIsNoChange() {
    ClickCell(Visits(), kType, 1);
    Key(Qt::Key_F4);
    Key(Qt::Key_Return);
    QVERIFY(!Visits()->ChangeMade());
    QVERIFY(!IsFlagged(kType, 1));
}

void VisitsTest::WithoutTypesOfWorkThereIsNothingToChoose() {
    ExecuteElsewhere(program_->DataFile(), QStringLiteral("delete from TTYP"));
    Data("DBD_TTYP")->Refresh();
    QCOMPARE(Picker()->MaxRows(), 0);
    const QString code = Visit(kType, 1);
    ClickCell(Visits(), kType, 1);
    Key(Qt::Key_F4);
    Key(Qt::Key_Return);
    QCOMPARE(Visit(kType, 1), code);
    Key(Qt::Key_Escape);
    QVERIFY(!PickerIsShown());
    QCOMPARE(Visit(kType, 1), code);
}

void VisitsTest::TheButtonClosesThePickerAsEscapeDoes() {
    TypeVisit(kType, 1, QStringLiteral("ZZZ"));
    QTest::mouseClick(Button("Cmd_Fermer_TypTrav"), Qt::LeftButton);
    QCoreApplication::processEvents();
    QVERIFY(!PickerIsShown());
    QCOMPARE(forms::Screen::ActiveControl(), Visits());
    QCOMPARE(Visit(kType, 1), QStringLiteral("ZZZ"));
}

void VisitsTest::EscapeOnTheButtonOfThePickerClosesItToo() {
    TypeVisit(kType, 1, QStringLiteral("ZZZ"));
    forms::SetFocus(Button("Cmd_Fermer_TypTrav"));
    PressKey(Qt::Key_Escape);
    QVERIFY(!PickerIsShown());
    QCOMPARE(forms::Screen::ActiveControl(), Visits());
}

// In the file.

void VisitsTest::TwoVisitsOfANewVehicleAreTypedAndSavedWithoutTheMouse() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    Key(Qt::Key_F8);
    support::BoxAnswerer boxes;
    Key(Qt::Key_N, Qt::ControlModifier);
    for (const QString& text : {kNew, QStringLiteral("LADA"), QStringLiteral("Niva"), QStringLiteral("C0000"),
                                QStringLiteral("CT"), QStringLiteral("24"), QStringLiteral("03/02/2026"),
                                QStringLiteral("VID"), QStringLiteral("12"), QStringLiteral("04/02/2026")}) {
        Type(text);
        Key(Qt::Key_Return);
    }
    Key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(boxes.Shown().empty());
    QCOMPARE(Visits()->MaxRows(), 2);
    Key(Qt::Key_F8);
    QCOMPARE(Tabs()->Tab(), kListTab);
    const std::vector<StoredRow> stored = Stored(kNew);
    QCOMPARE(stored.size(), std::size_t{2});
    QCOMPARE(stored[0].at(QStringLiteral("TVEH_DETAIL_TypTrav")), QStringLiteral("CT"));
    QCOMPARE(stored[0].at(QStringLiteral("TVEH_DETAIL_PERIOD")), QStringLiteral("24"));
    QCOMPARE(stored[0].at(QStringLiteral("TVEH_DETAIL_DATVIS")), QStringLiteral("02/03/26 00:00:00"));
    QCOMPARE(stored[1].at(QStringLiteral("TVEH_DETAIL_TypTrav")), QStringLiteral("VID"));
    QCOMPARE(stored[1].at(QStringLiteral("TVEH_DETAIL_DATVIS")), QStringLiteral("02/04/26 00:00:00"));
}

void VisitsTest::ChangedVisitsAreEditedAndNewOnesAppended() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    TypeVisit(kPeriod, 3, QStringLiteral("18"));
    TypeVisit(kDate, 3, QStringLiteral("05/02/2026"));
    Type(QStringLiteral("BAT"));
    Key(Qt::Key_Return);
    Type(QStringLiteral("48"));
    Key(Qt::Key_Return);
    Type(QStringLiteral("06/02/2026"));
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    QVERIFY(boxes.Shown().empty());
    const std::vector<StoredRow> stored = Stored(kToyota);
    QCOMPARE(stored.size(), std::size_t{4});
    QCOMPARE(stored[0].at(QStringLiteral("TVEH_DETAIL_DATVIS")), QStringLiteral("01/14/26 00:00:00"));
    QCOMPARE(stored[1].at(QStringLiteral("TVEH_DETAIL_PERIOD")), QStringLiteral("18"));
    QCOMPARE(stored[1].at(QStringLiteral("TVEH_DETAIL_DATVIS")), QStringLiteral("02/05/26 00:00:00"));
    QCOMPARE(stored[2].at(QStringLiteral("TVEH_DETAIL_DATVIS")), QStringLiteral("11/25/24 00:00:00"));
    QCOMPARE(stored[3].at(QStringLiteral("TVEH_DETAIL_TypTrav")), QStringLiteral("BAT"));
    QCOMPARE(stored[3].at(QStringLiteral("TVEH_DETAIL_DATVIS")), QStringLiteral("02/06/26 00:00:00"));
}

void VisitsTest::ARowNeverLeftThroughItsDateIsLinkedByTheSave() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    ClickCell(Visits(), kDate, 3);
    Key(Qt::Key_Return);
    Type(QStringLiteral("BAT"));
    Key(Qt::Key_Return);
    Type(QStringLiteral("48"));
    Key(Qt::Key_Return);
    QCOMPARE(Visit(kLink, 4), QString());
    Press("Cmd_Update");
    QCOMPARE(Visit(kLink, 4), kToyota);
    QCOMPARE(Stored(kToyota).size(), std::size_t{4});
    QCOMPARE(Stored(kToyota)[3].at(QStringLiteral("TVEH_DETAIL_DATVIS")), QString());
}

/// Cells are checked on the way to another cell, which the save does not go.
void VisitsTest::ACodeThatIsNotLeftForAnotherCellIsSavedUnchecked() {
    ClickCell(Visits(), kType, 1);
    Type(QStringLiteral("ZZZ"));
    Key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(!PickerIsShown());
    QStringList codes;
    for (const StoredRow& visit : Stored(kToyota)) {
        codes += visit.at(QStringLiteral("TVEH_DETAIL_TypTrav"));
    }
    codes.sort();
    QCOMPARE(codes, (QStringList{"LIM", "VID", "ZZZ"}));
}

void VisitsTest::APeriodOfZeroIsStored() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    TypeVisit(kPeriod, 1, QStringLiteral("jamais"));
    Press("Cmd_Update");
    QCOMPARE(Stored(kToyota)[0].at(QStringLiteral("TVEH_DETAIL_PERIOD")), QStringLiteral("0"));
}

void VisitsTest::ATypedVisitHoldsTheOperatorOnTheRecord() {
    TypeVisit(kPeriod, 1, QStringLiteral("36"));
    support::BoxAnswerer boxes;
    Key(Qt::Key_F8);
    CompareBoxes(boxes, {QStringLiteral("Enregistrez ou annulez d'abord votre saisie")});
    QCOMPARE(Tabs()->Tab(), kRecordTab);
    // Going back to the record has read the visits again; the entry is pending all the same.
    QCOMPARE(Visit(kPeriod, 1), QStringLiteral("24"));
    QVERIFY(Visits()->ChangeMade());
    PressKey(Qt::Key_F8);
    QCOMPARE(boxes.Shown().size(), std::size_t{2});
    QCOMPARE(Tabs()->Tab(), kRecordTab);
    Press("Cmd_Annul");
    PressKey(Qt::Key_F8);
    QCOMPARE(boxes.Shown().size(), std::size_t{2});
    QCOMPARE(Tabs()->Tab(), kListTab);
}

void VisitsTest::CancellingDropsTypedVisits() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    const std::vector<StoredRow> before = Stored(kToyota);
    TypeVisit(kDate, 3, QStringLiteral("05/02/2026"));
    Type(QStringLiteral("BAT"));
    Press("Cmd_Annul");
    QCOMPARE(Visits()->MaxRows(), 3);
    QCOMPARE(Visit(kDate, 3), QStringLiteral("30/08/2025"));
    QVERIFY(!shell::Saisie_En_Cours(Form()));
    QVERIFY(Stored(kToyota) == before);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    VisitsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "visits_test.moc"
