// LostFocus and GotFocus, and what handlers may do in them.
#include <QMenuBar>

#include <forms/combo.h>
#include <forms/controls.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <forms/msg_box.h>
#include <support/boxes.h>

#include "forms_test.h"

namespace quardele::forms {

class FocusTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        stage_ = std::make_unique<test::Stage>();
        a_ = Add<TextBox>(QStringLiteral("A"), 10);
        b_ = Add<TextBox>(QStringLiteral("B"), 40);
        stage_->Open();
        a_->setFocus();
        journal_.Take();
    }
    void cleanup() { stage_.reset(); }

    void LostFocusComesBeforeGotFocusOfTheNext() {
        QTest::keyClick(a_, Qt::Key_Tab);
        QCOMPARE(journal_.Take(), QStringLiteral("A- B+"));
        QTest::mouseClick(a_, Qt::LeftButton);
        QCOMPARE(journal_.Take(), QStringLiteral("B- A+"));
    }

    void SetFocusTellsBothControlsBeforeItReturns() {
        SetFocus(b_);
        QCOMPARE(journal_.Take(), QStringLiteral("A- B+"));
        SetFocus(b_);
        QCOMPARE(journal_.Take(), QString());
    }

    void SetFocusInLostFocusTakesTheFocusBackAndTheOtherGetsItsPair() {
        const auto back = On(a_, &TextBox::LostFocus, this, [this] { SetFocus(a_); });
        QTest::keyClick(a_, Qt::Key_Tab);
        QCOMPARE(journal_.Take(), QStringLiteral("A- B+ B- A+"));
        QVERIFY(a_->hasFocus());
        disconnect(back);
    }

    void AMessageBoxInLostFocusDisturbsNothing() {
        const support::BoxAnswerer boxes;
        On(a_, &TextBox::LostFocus, this, [this] {
            SetFocus(a_);
            MsgBox(QStringLiteral("Ce véhicule existe déjà !!! "));
        });
        QTest::keyClick(a_, Qt::Key_Tab);
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QCOMPARE(journal_.Take(), QStringLiteral("A- B+ B- A+"));
        QCOMPARE(Screen::ActiveControl(), a_);
    }

    void AMenuMovesNoFocus() {
        auto* menu = new QMenuBar(stage_.get());
        menu->setObjectName(QStringLiteral("menu"));
        menu->addAction(QStringLiteral("&Quitter"));
        menu->show();
        menu->setFocus();
        QCOMPARE(journal_.Take(), QString());
        QCOMPARE(Screen::ActiveControl(), a_);
        a_->setFocus();
        QCOMPARE(journal_.Take(), QString());
    }

    void AnOpenCellBelongsToItsGrid() {
        auto* grid = Add<Grid>(QStringLiteral("G"), 80);
        grid->resize(300, 200);
        grid->SetColumnLines({QStringLiteral("Texte||10|text")});
        grid->SetMaxRows(2);
        SetFocus(grid);
        QCOMPARE(journal_.Take(), QStringLiteral("A- G+"));
        QTest::keyClick(grid, Qt::Key_X);
        QVERIFY(QApplication::focusWidget() != grid);
        QCOMPARE(Screen::ActiveControl(), grid);
        QCOMPARE(journal_.Take(), QString());
        SetFocus(b_);
        QCOMPARE(journal_.Take(), QStringLiteral("G- B+"));
        QCOMPARE(grid->Text(), QStringLiteral("x"));
    }

    void TheTextOfAComboBelongsToTheCombo() {
        auto* combo = Add<ListCombo>(QStringLiteral("C"), 80);
        combo->lineEdit()->setFocus();
        QCOMPARE(journal_.Take(), QStringLiteral("A- C+"));
        QCOMPARE(Screen::ActiveControl(), combo);
    }

    void AControlThatIsGoneIsToldNothing() {
        delete a_;
        b_->setFocus();
        QVERIFY(!journal_.Take().contains(QStringLiteral("A-")));
    }

    void TabsTakeTheFocusWhenTheirPageGoes() {
        auto* tabs = Add<TabControl>(QStringLiteral("T"), 80);
        tabs->resize(300, 200);
        auto* page = new QWidget;
        auto* inside = new TextBox(page);
        tabs->addTab(page, QStringLiteral("un"));
        auto* other = new QWidget;
        auto* first = new TextBox(other);
        Listen(first, QStringLiteral("F"));
        tabs->addTab(other, QStringLiteral("deux"));
        Listen(inside, QStringLiteral("I"));
        SetFocus(inside);
        journal_.Take();
        On(tabs, &TabControl::Click, this, [this](int) { journal_(QStringLiteral("Click")); });
        // The program sets the tab: its Click comes first, since that may yet set the tab back.
        tabs->SetTab(1);
        QCOMPARE(journal_.Take(), QStringLiteral("Click I- T+"));
    }

 private:
    template <class Control>
    void Listen(Control* control, const QString& name) {
        control->setObjectName(name);
        On(control, &Control::GotFocus, this, [this, name] { journal_(name + u'+'); });
        On(control, &Control::LostFocus, this, [this, name] { journal_(name + u'-'); });
    }
    template <class Control>
    Control* Add(const QString& name, int top) {
        auto* control = new Control(stage_.get());
        control->setGeometry(10, top, 100, 20);
        control->show();
        Listen(control, name);
        return control;
    }

    test::Journal journal_;
    std::unique_ptr<test::Stage> stage_;
    TextBox* a_ = nullptr;
    TextBox* b_ = nullptr;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::FocusTest>(argc, argv);
}
#include "focus_test.moc"
