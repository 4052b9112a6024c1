// What an operator does in a grid, with real keys and a real mouse.
#include <functional>

#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QToolTip>

#include <basic/date.h>
#include <forms/controls.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <support/boxes.h>

#include "forms_test.h"
#include "memory_rows.h"

namespace quardele::forms {

class GridInputTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        stage_ = std::make_unique<test::Stage>();
        grid_ = new Grid(stage_.get());
        grid_->setGeometry(10, 10, 600, 300);
        grid_->SetColumnLines({QStringLiteral("Travaux||10|text"), QStringLiteral("Mois||8|number"),
                               QStringLiteral("Visite||10|date"), QStringLiteral("Caché||5|text"),
                               QStringLiteral("Suite||10|date|locked"), QStringLiteral("Editer ?||6|check"),
                               QStringLiteral("Suppr||6|check|locked"),
                               QStringLiteral("Détail||8|button||detail")});
        grid_->SetCol(4);
        grid_->SetColHidden(true);
        grid_->SetMaxRows(5);
        stage_->Open();
        grid_->setFocus();
        On(grid_, &Grid::LeaveCell, this, [this](int col, int row, int newCol, int newRow, bool& cancel) {
            journal_(QStringLiteral("cell%1/%2>%3/%4").arg(row).arg(col).arg(newRow).arg(newCol));
            cancel = refuseCell_;
        });
        On(grid_, &Grid::LeaveRow, this, [this](int row, int newRow, bool& cancel) {
            journal_(QStringLiteral("row%1>%2").arg(row).arg(newRow));
            cancel = refuseRow_;
        });
        On(grid_, &Grid::Click, this,
           [this](int col, int row) { journal_(QStringLiteral("click%1/%2").arg(row).arg(col)); });
        On(grid_, &Grid::DblClick, this,
           [this](int col, int row) { journal_(QStringLiteral("dbl%1/%2").arg(row).arg(col)); });
        On(grid_, &Grid::ButtonClicked, this, [this](int col, int row, int down) {
            journal_(QStringLiteral("button%1/%2=%3,%4").arg(row).arg(col).arg(down).arg(At(row, col)));
        });
        refuseCell_ = refuseRow_ = false;
    }
    void cleanup() {
        stage_.reset();
        journal_.Take();
    }

    // Moving.

    void LeaveCellAndLeaveRowComeBeforeTheCursorMoves() {
        QTest::keyClick(grid_, Qt::Key_Down);
        QCOMPARE(journal_.Take(), QStringLiteral("cell1/1>2/1 row1>2"));
        QTest::keyClick(grid_, Qt::Key_Right);
        QCOMPARE(journal_.Take(), QStringLiteral("cell2/1>2/2"));
        QCOMPARE(grid_->ActiveRow(), 2);
        QCOMPARE(grid_->ActiveCol(), 2);
    }

    void ARefusedMoveKeepsTheCursor() {
        refuseCell_ = true;
        QTest::keyClick(grid_, Qt::Key_Down);
        QCOMPARE(grid_->ActiveRow(), 1);
        ClickCell(3, 2);
        QCOMPARE(grid_->ActiveRow(), 1);
        QCOMPARE(grid_->ActiveCol(), 1);
        QCOMPARE(journal_.Take(), QStringLiteral("cell1/1>2/1 cell1/1>3/2"));
        refuseCell_ = false;
        refuseRow_ = true;
        ClickCell(3, 2);
        QCOMPARE(grid_->ActiveRow(), 1);
        QCOMPARE(journal_.Take(), QStringLiteral("cell1/1>3/2 row1>3"));
    }

    void AHandlerMayPutTheCursorBackByItself() {
        On(grid_, &Grid::LeaveCell, this, [this](int col, int row, int, int, bool& cancel) {
            grid_->SetActiveCell(col, row);
            cancel = true;
        });
        ClickCell(4, 1);
        QCOMPARE(grid_->ActiveRow(), 1);
        QCOMPARE(journal_.Take(), QStringLiteral("cell1/1>4/1"));
    }

    void AHandlerMayEmptyTheGrid() {
        On(grid_, &Grid::LeaveCell, this, [this](int, int, int, int, bool&) { grid_->SetMaxRows(0); });
        ClickCell(4, 1);
        QCOMPARE(grid_->MaxRows(), 0);
        QCOMPARE(grid_->ActiveRow(), 0);
    }

    void EnterMovesToTheNextCellThatIsShown() {
        grid_->SetActiveCell(3, 1);
        QTest::keyClick(grid_, Qt::Key_Return);
        QCOMPARE(grid_->ActiveCol(), 5);
        grid_->SetActiveCell(8, 1);
        grid_->SetRow(2);
        grid_->SetRowHidden(true);
        QTest::keyClick(grid_, Qt::Key_Return);
        QCOMPARE(grid_->ActiveRow(), 3);
        QCOMPARE(grid_->ActiveCol(), 1);
    }

    void EnterInTheLastCellStaysThere() {
        grid_->SetActiveCell(8, 5);
        QTest::keyClick(grid_, Qt::Key_Return);
        QCOMPARE(grid_->ActiveRow(), 5);
        QCOMPARE(grid_->ActiveCol(), 8);
    }

    void FromColumnZeroEnterGoesToTheFirstColumn() {
        // As a handler of Enter in the last cell does, which opens a new row.
        On(grid_, &Grid::KeyDown, this, [this](int& key, int) {
            if (key == 13 && grid_->ActiveCol() == 3 && grid_->ActiveRow() == grid_->MaxRows()) {
                grid_->SetMaxRows(grid_->MaxRows() + 1);
                grid_->SetRow(grid_->MaxRows());
                grid_->SetCol(0);
                grid_->Action(0);
            }
        });
        grid_->SetActiveCell(3, 5);
        QTest::keyClick(grid_, Qt::Key_Return);
        QCOMPARE(grid_->MaxRows(), 6);
        QCOMPARE(grid_->ActiveRow(), 6);
        QCOMPARE(grid_->ActiveCol(), 1);
    }

    void FromColumnZeroTheFirstCellIsEntered_data() {
        QTest::addColumn<std::function<void()>>("step");
        const auto row = [](const char* name, const std::function<void()>& step) {
            QTest::newRow(name) << step;
        };
        row("click", [this] { ClickCell(2, 1); });
        row("right click",
            [this] { QTest::mouseClick(grid_->viewport(), Qt::RightButton, {}, RectOf(2, 1).center()); });
        row("click on the heading", [this] { ClickHeading(1, Qt::LeftButton); });
        row("arrow to the right", [this] { QTest::keyClick(grid_, Qt::Key_Right); });
        row("Home", [this] { QTest::keyClick(grid_, Qt::Key_Home); });
    }

    void FromColumnZeroTheFirstCellIsEntered() {
        QFETCH(const std::function<void()>, step);
        grid_->SetActiveCell(0, 2);
        QCOMPARE(grid_->ActiveCol(), 0);
        step();
        QCOMPARE(grid_->ActiveCol(), 1);
        QCOMPARE(grid_->ActiveRow(), 2);
    }

    void AnArrowToTheLeftStaysInColumnZero() {
        grid_->SetActiveCell(0, 2);
        QTest::keyClick(grid_, Qt::Key_Left);
        QCOMPARE(grid_->ActiveCol(), 0);
    }

    void TheCellEnteredFromColumnZeroOpensWhereCellsStandOpen() {
        grid_->SetEditModePermanent(true);
        grid_->SetActiveCell(0, 2);
        QVERIFY(Editor() == nullptr);
        ClickCell(2, 1);
        QVERIFY(Editor() != nullptr);
    }

    void WithoutRowsAHeadingLeadsOutOfColumnZeroToo() {
        grid_->SetActiveCell(0, 2);
        grid_->SetMaxRows(0);
        ClickHeading(2, Qt::LeftButton);
        QCOMPARE(grid_->ActiveCol(), 2);
        QCOMPARE(journal_.Take(), QStringLiteral("click0/2"));
        grid_->SetActiveCell(0, 1);
        grid_->SetActiveCell(3, 1);
        QCOMPARE(grid_->ActiveCol(), 3);
    }

    void EnterLeavesAListAsItIs() {
        grid_->SetColumnLines(
            {QStringLiteral("Immat.||10|text|locked"), QStringLiteral("Editer ?||5|check")});
        grid_->SetMaxRows(5);
        QVERIFY(!grid_->IsEntryGrid());
        QTest::keyClick(grid_, Qt::Key_Return);
        QCOMPARE(grid_->ActiveRow(), 1);
        QCOMPARE(grid_->ActiveCol(), 1);
    }

    void KeyDownMaySwallowTheKey() {
        On(grid_, &Grid::KeyDown, this, [](int& key, int) { key = 0; });
        QTest::keyClick(grid_, Qt::Key_Down);
        QTest::keyClick(grid_, Qt::Key_X);
        QCOMPARE(grid_->ActiveRow(), 1);
        QVERIFY(Editor() == nullptr);
    }

    void TabLeavesTheGrid() {
        auto* next = new TextBox(stage_.get());
        next->setGeometry(10, 400, 100, 20);
        next->show();
        QTest::keyClick(grid_, Qt::Key_Tab);
        QVERIFY(next->hasFocus());
        QCOMPARE(grid_->ActiveCol(), 1);
    }

    void LettersDoNotSearchTheList() {
        Set(5, 5, QStringLiteral("zèbre"));
        grid_->SetActiveCell(5, 1);
        QTest::keyClick(grid_, Qt::Key_Z);
        QCOMPARE(grid_->ActiveRow(), 1);
    }

    // Typing.

    void TypingReplacesTheCellAndCountsAsTheOperatorsChange() {
        Set(1, 1, QStringLiteral("ancien"));
        QTest::keyClick(grid_, Qt::Key_C);
        QVERIFY(grid_->ChangeMade());
        QTest::keyClicks(Editor(), QStringLiteral("t"));
        QTest::keyClick(Editor(), Qt::Key_Return);
        QVERIFY(Editor() == nullptr);
        QCOMPARE(At(1, 1), QStringLiteral("ct"));
        QVERIFY(grid_->ChangedFlag());
        QCOMPARE(grid_->ActiveCol(), 2);
    }

    void EscapeTakesTheTypingBack() {
        Set(1, 1, QStringLiteral("ancien"));
        QTest::keyClick(grid_, Qt::Key_X);
        QTest::keyClick(Editor(), Qt::Key_Escape);
        QVERIFY(Editor() == nullptr);
        QCOMPARE(At(1, 1), QStringLiteral("ancien"));
        QVERIFY(!grid_->ChangedFlag());
    }

    void ArrowsUpAndDownEndTheEntry() {
        QTest::keyClick(grid_, Qt::Key_X);
        QTest::keyClick(Editor(), Qt::Key_Down);
        QCOMPARE(At(1, 1), QStringLiteral("x"));
        QCOMPARE(grid_->ActiveRow(), 2);
    }

    void TabLeavesTheGridFromAnOpenCellToo() {
        auto* next = new TextBox(stage_.get());
        next->setGeometry(10, 400, 100, 20);
        next->show();
        QTest::keyClick(grid_, Qt::Key_X);
        QTest::keyClick(Editor(), Qt::Key_Tab);
        QCOMPARE(At(1, 1), QStringLiteral("x"));
        QVERIFY(next->hasFocus());
        QCOMPARE(journal_.Take(), QString());
    }

    void HandlersReadWhatWasTypedWhenTheCellIsLeft() {
        QString seen;
        On(grid_, &Grid::LeaveCell, this, [&](int col, int row, int, int, bool&) { seen = At(row, col); });
        QTest::keyClick(grid_, Qt::Key_X);
        ClickCell(2, 2);
        QCOMPARE(seen, QStringLiteral("x"));
    }

    void KeysInTheOpenCellAreTheGridsKeys() {
        std::vector<int> keys;
        On(grid_, &Grid::KeyDown, this, [&](int& key, int) { keys.push_back(key); });
        QTest::keyClick(grid_, Qt::Key_X);
        QTest::keyClick(Editor(), Qt::Key_F4);
        QTest::keyClick(Editor(), Qt::Key_Return);
        QCOMPARE(keys, (std::vector<int>{'X', 115, 13}));
    }

    void LeavingTheGridEndsTheEntry() {
        auto* box = new TextBox(stage_.get());
        box->setGeometry(10, 400, 100, 20);
        box->show();
        QTest::keyClick(grid_, Qt::Key_X);
        QTest::mouseClick(box, Qt::LeftButton);
        QCOMPARE(At(1, 1), QStringLiteral("x"));
        QVERIFY(box->hasFocus());
    }

    void EmptyingTheGridDropsTheOpenCell() {
        QTest::keyClick(grid_, Qt::Key_X);
        grid_->SetMaxRows(0);
        grid_->SetMaxRows(1);
        QCOMPARE(At(1, 1), QString());
    }

    void ALockedCellCannotBeTyped() {
        grid_->SetActiveCell(5, 1);
        QTest::keyClick(grid_, Qt::Key_1);
        QVERIFY(Editor() == nullptr);
        QVERIFY(!grid_->ChangeMade());
    }

    void ADateCellTakesDatesInAnySpellingAndNothingElse() {
        grid_->SetActiveCell(3, 1);
        TypeDate(QStringLiteral("6/5/26"));
        QCOMPARE(At(1, 3), QStringLiteral("06/05/2026"));
        TypeDate(QStringLiteral("33/13"));
        QCOMPARE(At(1, 3), QStringLiteral("06/05/2026"));
        TypeDate(QString());
        QCOMPARE(At(1, 3), QString());
    }

    void ADoubleClickOpensAnEntryCell() {
        DoubleClickCell(2, 1);
        QVERIFY(Editor() != nullptr);
        QCOMPARE(grid_->ActiveRow(), 2);
    }

    // Ticks and buttons.

    void AClickOnTheBoxTicksItAndTellsAfterTheValueChanged() {
        ClickCell(2, 6);
        QCOMPARE(journal_.Take(), QStringLiteral("cell1/1>2/6 row1>2 button2/6=1,1 click2/6"));
        QVERIFY(grid_->ChangeMade());
        ClickCell(2, 6);
        QCOMPARE(journal_.Take(), QStringLiteral("button2/6=0,0 click2/6"));
    }

    void AClickBesideTheBoxOnlyMovesTheCursor() {
        const QRect cell = RectOf(2, 6);
        QTest::mouseClick(grid_->viewport(), Qt::LeftButton, {}, cell.topLeft() + QPoint(2, 2));
        QCOMPARE(At(2, 6), QString());
        QCOMPARE(grid_->ActiveCol(), 6);
    }

    void SpaceTicksTheActiveCell() {
        grid_->SetActiveCell(6, 3);
        QTest::keyClick(grid_, Qt::Key_Space);
        QCOMPARE(journal_.Take(), QStringLiteral("button3/6=1,1"));
    }

    void ALockedBoxStaysAsItIs() {
        ClickCell(1, 7);
        grid_->SetActiveCell(7, 1);
        QTest::keyClick(grid_, Qt::Key_Space);
        QVERIFY(!journal_.Take().contains(QStringLiteral("button")));
        QVERIFY(!grid_->ChangeMade());
    }

    void TwoQuickClicksTickTwice() {
        DoubleClickCell(1, 6);
        const QString told = journal_.Take();
        QVERIFY2(told.contains(QStringLiteral("=1,1")) && told.contains(QStringLiteral("=0,0")),
                 qPrintable(told));
    }

    void AButtonCellIsPressedByMouseAndSpace() {
        ClickCell(1, 8);
        QVERIFY(journal_.Take().contains(QStringLiteral("button1/8=1")));
        QTest::keyClick(grid_, Qt::Key_Space);
        QCOMPARE(journal_.Take(), QStringLiteral("button1/8=1,"));
        QVERIFY(!grid_->ChangeMade());
    }

    void AHandlerMayTakeTheTickBack() {
        On(grid_, &Grid::ButtonClicked, this, [this](int col, int row, int) {
            grid_->SetCol(col);
            grid_->SetRow(row);
            grid_->SetValue(0);
        });
        ClickCell(2, 6);
        QCOMPARE(At(2, 6), QStringLiteral("0"));
    }

    // Clicks.

    void ClickAndDoubleClickTellTheCell() {
        ClickCell(3, 5);
        QCOMPARE(journal_.Take(), QStringLiteral("cell1/1>3/5 row1>3 click3/5"));
        DoubleClickCell(3, 5);
        QCOMPARE(journal_.Take(), QStringLiteral("click3/5 dbl3/5"));
    }

    void AClickBelowTheRowsTellsNothing() {
        QTest::mouseClick(grid_->viewport(), Qt::LeftButton, {}, QPoint(20, 250));
        QCOMPARE(journal_.Take(), QString());
    }

    void AClickOnAHeadingMakesItsColumnActiveAndKeepsTheRow() {
        grid_->SetActiveCell(1, 3);
        ClickHeading(5, Qt::LeftButton);
        QCOMPARE(journal_.Take(), QStringLiteral("cell3/1>3/5 click0/5"));
        QCOMPARE(grid_->ActiveRow(), 3);
        QCOMPARE(grid_->ActiveCol(), 5);
        grid_->SetMaxRows(0);
        ClickHeading(2, Qt::LeftButton);
        QCOMPARE(grid_->ActiveCol(), 2);
    }

    void RightClickTellsColumnRowAndPositionInTwips() {
        std::vector<int> told;
        On(grid_, &Grid::RightClick, this, [&](int, int col, int row, int x, int y) {
            told = {col, row, x, y};
        });
        const QPoint place = RectOf(3, 2).center();
        QTest::mouseClick(grid_->viewport(), Qt::RightButton, {}, place);
        const QPoint inside = grid_->viewport()->mapTo(grid_, place);
        QCOMPARE(told, (std::vector<int>{2, 3, inside.x() * 15, inside.y() * 15}));
        ClickHeading(2, Qt::RightButton);
        QCOMPARE(told[0], 2);
        QCOMPARE(told[1], 0);
        QTest::mouseClick(grid_->viewport(), Qt::RightButton, {}, QPoint(20, 250));
        QCOMPARE(told[1], -1);
    }

    void TheMenuKeyBringsACellOutOfViewBackFirst() {
        grid_->SetMaxRows(200);
        grid_->SetActiveCell(1, 3);
        grid_->scrollToBottom();
        QVERIFY(grid_->rowViewportPosition(2) < 0);
        QPoint place;
        On(grid_, &Grid::RightClick, this,
           [&](int, int, int row, int x, int y) { place = row == 3 ? QPoint(x, y) / 15 : QPoint(); });
        QTest::keyClick(grid_, Qt::Key_Menu);
        QVERIFY2(grid_->rect().contains(place) && !place.isNull(), qPrintable(QString::number(place.y())));
        QVERIFY(grid_->rowViewportPosition(2) >= 0);
    }

    void TheMenuKeysAreARightClickOnTheActiveCell() {
        std::vector<std::pair<int, int>> told;
        On(grid_, &Grid::RightClick, this,
           [&](int, int col, int row, int, int) { told.emplace_back(col, row); });
        grid_->SetActiveCell(2, 4);
        QTest::keyClick(grid_, Qt::Key_Menu);
        QTest::keyClick(grid_, Qt::Key_F10, Qt::ShiftModifier);
        QCOMPARE(told, (std::vector<std::pair<int, int>>{{2, 4}, {2, 4}}));
    }

    void ATextThatDoesNotFitShowsWholeInATip() {
        const QString text = QStringLiteral("Contrôle technique et contre-visite éclairage");
        Set(2, 1, text);
        Set(3, 1, QStringLiteral("CT"));
        ShowTip(RectOf(2, 1).center());
        QCOMPARE(QToolTip::text(), text);
        ShowTip(RectOf(3, 1).center());
        QTRY_VERIFY(!QToolTip::isVisible());
        ShowTip(QPoint(20, 250));
        QVERIFY(!QToolTip::isVisible());
    }

    // The current record.

    void TheOperatorsMoveTakesTheCurrentRecordAlong() {
        const auto rows = BindThree();
        ClickCell(3, 1);
        QCOMPARE(rows->AbsolutePosition(), 2L);
        QTest::keyClick(grid_, Qt::Key_Up);
        QCOMPARE(rows->AbsolutePosition(), 1L);
        QTest::keyClick(grid_, Qt::Key_Right);
        QCOMPARE(rows->calls, (std::vector<std::string>{"move 2", "move 1"}));
    }

    void ARowThatCannotBeSavedKeepsTheOperatorAndIsTheUnhandledError() {
        support::BoxAnswerer boxes;
        const auto rows = BindThree();
        TextBox box(stage_.get());
        box.SetDataField(QStringLiteral("CODE"));
        box.SetDataSource(grid_->DataSource());
        box.SetText(QStringLiteral("double"));
        rows->refusal = basic::error::kDuplicateKey;
        ClickCell(3, 1);
        QCOMPARE(grid_->ActiveRow(), 1);
        QCOMPARE(rows->AbsolutePosition(), 0L);
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QVERIFY(boxes.Shown().front().text.contains(QStringLiteral("3022")));
    }

    void ALeftRowIsSavedBeforeTheMove() {
        const auto rows = BindThree();
        TextBox box(stage_.get());
        box.SetDataField(QStringLiteral("CODE"));
        box.SetDataSource(grid_->DataSource());
        box.SetText(QStringLiteral("neuf"));
        ClickCell(2, 1);
        QCOMPARE(rows->Stored(0)[0], dao::Variant(u"neuf"));
        QCOMPARE(box.Text(), QStringLiteral("V2"));
        QCOMPARE(At(1, 1), QStringLiteral("neuf"));
    }

 private:
    /// The open cell; one that was closed is destroyed a little later.
    [[nodiscard]] QLineEdit* Editor() const {
        const QList<QLineEdit*> editors = grid_->viewport()->findChildren<QLineEdit*>();
        const auto open = std::find_if(editors.begin(), editors.end(),
                                       [](const QLineEdit* editor) { return editor->isVisible(); });
        return open == editors.end() ? nullptr : *open;
    }
    [[nodiscard]] QRect RectOf(int row, int col) const {
        return grid_->visualRect(grid_->model()->index(row - 1, col - 1));
    }
    void ClickCell(int row, int col) {
        QTest::mouseClick(grid_->viewport(), Qt::LeftButton, {}, RectOf(row, col).center());
    }
    void DoubleClickCell(int row, int col) {
        ClickCell(row, col);
        QTest::mouseDClick(grid_->viewport(), Qt::LeftButton, {}, RectOf(row, col).center());
        QTest::mouseRelease(grid_->viewport(), Qt::LeftButton, {}, RectOf(row, col).center());
    }
    void ShowTip(const QPoint& place) {
        QHelpEvent event(QEvent::ToolTip, place, grid_->viewport()->mapToGlobal(place));
        QApplication::sendEvent(grid_->viewport(), &event);
    }
    void ClickHeading(int col, Qt::MouseButton button) {
        QHeaderView* header = grid_->horizontalHeader();
        const QPoint place(header->sectionViewportPosition(col - 1) + header->sectionSize(col - 1) / 2, 8);
        QTest::mouseClick(header->viewport(), button, {}, place);
    }
    void TypeDate(const QString& text) {
        grid_->SetActiveCell(3, 1);
        QTest::keyClick(grid_, Qt::Key_F2);
        Editor()->selectAll();
        QTest::keyClick(Editor(), Qt::Key_Delete);
        QTest::keyClicks(Editor(), text);
        QTest::keyClick(Editor(), Qt::Key_Return);
    }
    std::shared_ptr<test::MemoryRows> BindThree() {
        auto rows = std::make_shared<test::MemoryRows>(std::vector{test::TextField(u"CODE")});
        for (const char16_t* code : {u"V1", u"V2", u"V3"}) {
            rows->Add({code});
        }
        auto* data = new DataControl(stage_.get());
        grid_->SetColumnLines({QStringLiteral("Code|CODE|10|text"), QStringLiteral("Libre||10|text")});
        grid_->SetDataSource(data);
        data->SetRecordset(rows);
        rows->calls.clear();
        return rows;
    }
    QString At(int row, int col) {
        grid_->SetRow(row);
        grid_->SetCol(col);
        return grid_->Text();
    }
    void Set(int row, int col, const QString& text) {
        grid_->SetRow(row);
        grid_->SetCol(col);
        grid_->SetText(text);
    }

    std::unique_ptr<test::Stage> stage_;
    Grid* grid_ = nullptr;
    test::Journal journal_;
    bool refuseCell_ = false;
    bool refuseRow_ = false;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::GridInputTest>(argc, argv);
}
#include "grid_input_test.moc"
