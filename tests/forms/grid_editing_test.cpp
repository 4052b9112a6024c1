// Typing into a grid in place: the cell that stands open, what cells take, what handlers see of it.
#include <QLineEdit>

#include <forms/controls.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <forms/msg_box.h>
#include <support/boxes.h>

#include "forms_test.h"
#include "memory_rows.h"

namespace quardele::forms {

class GridEditingTest : public QObject {
    Q_OBJECT

 private slots:
    void init();
    void cleanup() { stage_.reset(); }

    void TheActiveCellStandsOpenWhileTheGridHasTheFocus();
    void OutsidePermanentEditModeACellOpensWhenTyped();
    void TypingReplacesTheContent();
    void WithoutReplacingTheCaretStandsBehindTheContent();
    void EnterTakesTheEntryAndOpensTheNextCell();
    void EscapeShowsTheStoredValueAndStaysOpen();
    void TabAndBacktabLeaveTheGrid();
    void ArrowsToTheSideMoveOnFromTheEndsOfTheText();
    void ARefusedMoveOpensTheCellAgain();
    void AClickOpensTheCellClicked();
    void ALockedCellStaysClosed();
    void AMessageBoxGivesTheFocusBackToTheOpenCell();
    void RowsThatAreCutFireNoLeaveCellAndKeepTheFocus();
    void AProgramsValueShowsInTheOpenCell();
    void ANumberCellTakesWhatLiesInItsRange_data();
    void ANumberCellTakesWhatLiesInItsRange();
    void ADateCellTakesWhatLiesInItsRange_data();
    void ADateCellTakesWhatLiesInItsRange();
    void LateFillingLeavesTheAddressedCellAlone();

 private:
    [[nodiscard]] QLineEdit* Open() const {
        auto* const focus = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        return focus != nullptr && grid_->isAncestorOf(focus) ? focus : nullptr;
    }
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    static void Type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    void EditPermanently() {
        grid_->SetEditModePermanent(true);
        grid_->SetEditModeReplace(true);
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
    void ClickCell(int row, int col) {
        const QRect rect = grid_->visualRect(grid_->model()->index(row - 1, col - 1));
        QTest::mouseClick(grid_->viewport(), Qt::LeftButton, {}, rect.center());
    }
    [[nodiscard]] QPoint Cursor() const { return {grid_->ActiveCol(), grid_->ActiveRow()}; }

    std::unique_ptr<test::Stage> stage_;
    Grid* grid_ = nullptr;
    TextBox* before_ = nullptr;
    TextBox* after_ = nullptr;
};

void GridEditingTest::init() {
    stage_ = std::make_unique<test::Stage>();
    before_ = new TextBox(stage_.get());
    before_->setGeometry(10, 10, 100, 20);
    grid_ = new Grid(stage_.get());
    grid_->setGeometry(10, 50, 600, 300);
    after_ = new TextBox(stage_.get());
    after_->setGeometry(10, 400, 100, 20);
    grid_->SetColumnLines({QStringLiteral("Travaux||10|text"), QStringLiteral("Mois||8|number|||-50..200"),
                           QStringLiteral("Visite||10|date|||1990-01-01..2100-12-31"),
                           QStringLiteral("Caché||0|text"), QStringLiteral("Suite||10|date|locked")});
    grid_->SetCol(4);
    grid_->SetColHidden(true);
    grid_->SetMaxRows(3);
    Set(1, 1, QStringLiteral("CT"));
    stage_->Open();
    grid_->setFocus();
}

void GridEditingTest::TheActiveCellStandsOpenWhileTheGridHasTheFocus() {
    EditPermanently();
    QVERIFY(Open() != nullptr);
    QCOMPARE(Open()->text(), QStringLiteral("CT"));
    after_->setFocus();
    QVERIFY(Open() == nullptr);
    QVERIFY(grid_->viewport()->findChild<QLineEdit*>() == nullptr ||
            !grid_->viewport()->findChild<QLineEdit*>()->isVisible());
    grid_->setFocus();
    QVERIFY(Open() != nullptr);
    QVERIFY(!grid_->ChangeMade());
}

void GridEditingTest::OutsidePermanentEditModeACellOpensWhenTyped() {
    QVERIFY(Open() == nullptr);
    Type(QStringLiteral("r"));
    QVERIFY(Open() != nullptr);
    QCOMPARE(Open()->text(), QStringLiteral("r"));
}

void GridEditingTest::TypingReplacesTheContent() {
    EditPermanently();
    Type(QStringLiteral("REV"));
    QVERIFY(grid_->ChangeMade());
    Press(Qt::Key_Return);
    QCOMPARE(At(1, 1), QStringLiteral("REV"));
    QVERIFY(grid_->ChangedFlag());
}

void GridEditingTest::WithoutReplacingTheCaretStandsBehindTheContent() {
    grid_->SetEditModePermanent(true);
    Type(QStringLiteral("P"));
    Press(Qt::Key_Return);
    QCOMPARE(At(1, 1), QStringLiteral("CTP"));
}

void GridEditingTest::EnterTakesTheEntryAndOpensTheNextCell() {
    EditPermanently();
    for (const char16_t* entry : {u"REV", u"12", u"06/05/2026"}) {
        Type(QString::fromUtf16(entry));
        Press(Qt::Key_Return);
    }
    QCOMPARE(At(1, 1), QStringLiteral("REV"));
    QCOMPARE(At(1, 2), QStringLiteral("12"));
    QCOMPARE(At(1, 3), QStringLiteral("06/05/2026"));
    QCOMPARE(Cursor(), QPoint(5, 1));
    QVERIFY(Open() == nullptr);
    Press(Qt::Key_Return);
    QCOMPARE(Cursor(), QPoint(1, 2));
    QVERIFY(Open() != nullptr);
}

void GridEditingTest::EscapeShowsTheStoredValueAndStaysOpen() {
    EditPermanently();
    Type(QStringLiteral("x"));
    Press(Qt::Key_Escape);
    QVERIFY(Open() != nullptr);
    QCOMPARE(Open()->text(), QStringLiteral("CT"));
    QCOMPARE(Open()->selectedText(), QStringLiteral("CT"));
    QVERIFY(!grid_->ChangedFlag());
}

void GridEditingTest::TabAndBacktabLeaveTheGrid() {
    EditPermanently();
    Type(QStringLiteral("x"));
    Press(Qt::Key_Tab);
    QVERIFY(after_->hasFocus());
    QCOMPARE(At(1, 1), QStringLiteral("x"));
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(Open() != nullptr);
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(before_->hasFocus());
}

void GridEditingTest::ArrowsToTheSideMoveOnFromTheEndsOfTheText() {
    EditPermanently();
    Press(Qt::Key_Right);
    QCOMPARE(Cursor(), QPoint(2, 1));
    Type(QStringLiteral("12"));
    Press(Qt::Key_Left);
    QCOMPARE(Cursor(), QPoint(2, 1));  // the caret has moved before the 2
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    QCOMPARE(Cursor(), QPoint(3, 1));
    QCOMPARE(At(1, 2), QStringLiteral("12"));
    Press(Qt::Key_Right);
    QCOMPARE(Cursor(), QPoint(5, 1));  // the hidden column is passed over
    Press(Qt::Key_Left);
    QCOMPARE(Cursor(), QPoint(3, 1));
    QVERIFY(Open() != nullptr);
}

void GridEditingTest::ARefusedMoveOpensTheCellAgain() {
    EditPermanently();
    On(grid_, &Grid::LeaveCell, this, [](int, int, int, int, bool& cancel) { cancel = true; });
    Type(QStringLiteral("x"));
    Press(Qt::Key_Return);
    QCOMPARE(Cursor(), QPoint(1, 1));
    QVERIFY(Open() != nullptr);
    QCOMPARE(Open()->text(), QStringLiteral("x"));
}

void GridEditingTest::AClickOpensTheCellClicked() {
    EditPermanently();
    Type(QStringLiteral("x"));
    ClickCell(2, 3);
    QCOMPARE(At(1, 1), QStringLiteral("x"));
    QCOMPARE(Cursor(), QPoint(3, 2));
    QVERIFY(Open() != nullptr);
}

void GridEditingTest::ALockedCellStaysClosed() {
    EditPermanently();
    grid_->SetActiveCell(5, 1);
    QVERIFY(Open() == nullptr);
    Type(QStringLiteral("1"));
    QCOMPARE(At(1, 5), QString());
    QVERIFY(!grid_->ChangeMade());
}

void GridEditingTest::AMessageBoxGivesTheFocusBackToTheOpenCell() {
    EditPermanently();
    support::BoxAnswerer boxes;
    MsgBox(QStringLiteral("Vu ?"));
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    stage_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(stage_.get()));
    QVERIFY(Open() != nullptr);
}

void GridEditingTest::RowsThatAreCutFireNoLeaveCellAndKeepTheFocus() {
    EditPermanently();
    grid_->SetActiveCell(3, 3);
    int left = 0;
    On(grid_, &Grid::LeaveCell, this, [&](int, int, int, int, bool&) { ++left; });
    Type(QStringLiteral("1"));
    grid_->SetMaxRows(2);
    QCOMPARE(left, 0);
    QCOMPARE(grid_->ActiveRow(), 2);
    QVERIFY(Open() != nullptr);
    grid_->SetMaxRows(0);
    QVERIFY(grid_->hasFocus());
}

void GridEditingTest::AProgramsValueShowsInTheOpenCell() {
    EditPermanently();
    Set(1, 1, QStringLiteral("VID"));
    QCOMPARE(Open()->text(), QStringLiteral("VID"));
    QVERIFY(!grid_->ChangeMade());
    QVERIFY(!grid_->ChangedFlag());
}

void GridEditingTest::ANumberCellTakesWhatLiesInItsRange_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    QTest::newRow("highest") << QStringLiteral("200") << QStringLiteral("200");
    QTest::newRow("above") << QStringLiteral("201") << QStringLiteral("7");
    QTest::newRow("lowest") << QStringLiteral("-50") << QStringLiteral("-50");
    QTest::newRow("below") << QStringLiteral("-51") << QStringLiteral("7");
    QTest::newRow("letters") << QStringLiteral("abc") << QStringLiteral("abc");
}

void GridEditingTest::ANumberCellTakesWhatLiesInItsRange() {
    QFETCH(const QString, typed);
    QFETCH(const QString, taken);
    Set(1, 2, QStringLiteral("7"));
    EditPermanently();
    grid_->SetActiveCell(2, 1);
    Type(typed);
    Press(Qt::Key_Return);
    QCOMPARE(At(1, 2), taken);
}

void GridEditingTest::ADateCellTakesWhatLiesInItsRange_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    const QString before = QStringLiteral("06/05/2026");
    QTest::newRow("first day") << QStringLiteral("1/1/1990") << QStringLiteral("01/01/1990");
    QTest::newRow("the day before") << QStringLiteral("31/12/1989") << before;
    QTest::newRow("last day") << QStringLiteral("31/12/2100") << QStringLiteral("31/12/2100");
    QTest::newRow("the day after") << QStringLiteral("01/01/2101") << before;
    QTest::newRow("no date") << QStringLiteral("32/01/2026") << before;
}

void GridEditingTest::ADateCellTakesWhatLiesInItsRange() {
    QFETCH(const QString, typed);
    QFETCH(const QString, taken);
    Set(1, 3, QStringLiteral("06/05/2026"));
    EditPermanently();
    grid_->SetActiveCell(3, 1);
    Type(typed);
    Press(Qt::Key_Return);
    QCOMPARE(At(1, 3), taken);
}

void GridEditingTest::LateFillingLeavesTheAddressedCellAlone() {
    const auto rows = std::make_shared<test::MemoryRows>(std::vector{test::TextField(u"CODE")});
    rows->Add({u"V1"});
    rows->Add({u"V2"});
    auto* data = new DataControl(stage_.get());
    grid_->SetColumnLines({QStringLiteral("Code|CODE|10|text"), QStringLiteral("Libre||10|text")});
    On(grid_, &Grid::DataFill, this,
       [this](int, int row, int, bool, bool&) { Set(row, 2, QStringLiteral("fait %1").arg(row)); });
    grid_->hide();
    grid_->SetDataSource(data);
    data->SetRecordset(rows);
    grid_->SetRow(2);
    grid_->SetCol(1);
    QCOMPARE(grid_->Text(), QStringLiteral("V2"));
    QCOMPARE(grid_->Col(), 1);
    QCOMPARE(At(2, 2), QStringLiteral("fait 2"));
}

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::GridEditingTest>(argc, argv);
}
#include "grid_editing_test.moc"
