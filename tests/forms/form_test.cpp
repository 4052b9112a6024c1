#include <QDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QSignalSpy>
#include <QTimer>

#include <forms/controls.h>
#include <forms/events.h>
#include <forms/form.h>
#include <forms/mdi_form.h>
#include <forms/msg_box.h>
#include <forms/status_bar.h>
#include <support/boxes.h>

#include "forms_test.h"

namespace quardele::forms {
namespace {

test::Journal& TheJournal() {
    static test::Journal journal;
    return journal;
}

/// A form that writes down what happens to it and to its two boxes.
class Recorder : public Form {
 public:
    TextBox* first;
    TextBox* second;
    bool cancelUnload = false;
    bool cancelQuery = false;
    bool focusSecondOnActivate = false;
    bool unloadOnKey = false;
    int swallow = 0;

 protected:
    Recorder(const QString& name, FormKind kind) : Form(name, kind) {
        Surface()->setObjectName(name);
        Surface()->resize(300, 200);
        Surface()->setWindowTitle(QStringLiteral("Titre"));
        first = AddBox(QStringLiteral("First"), 10);
        second = AddBox(QStringLiteral("Second"), 40);
    }

    void Form_Load() override { Write("Load"); }
    void Form_Activate() override {
        Write("Activate");
        if (focusSecondOnActivate) {
            SetFocus(second);
        }
    }
    void Form_Resize() override { Write("Resize"); }
    void Form_QueryUnload(bool& cancel) override {
        Write("QueryUnload");
        cancel = cancelQuery;
    }
    void Form_Unload(bool& cancel) override {
        Write("Unload");
        cancel = cancelUnload;
    }
    void Form_KeyDown(int& keyCode, int shift) override {
        Write(QStringLiteral("Key%1/%2").arg(keyCode).arg(shift));
        if (keyCode == swallow) {
            keyCode = 0;
        }
        if (unloadOnKey) {
            Unload();
        }
    }
    void Write(const QString& event) { TheJournal()(Name() + u'.' + event); }

 private:
    TextBox* AddBox(const QString& name, int top) {
        auto* box = new TextBox(Surface());
        box->setObjectName(name);
        box->setGeometry(10, top, 100, 20);
        On(box, &TextBox::GotFocus, this, [this, name] { Write(name + QStringLiteral("+")); });
        On(box, &TextBox::LostFocus, this, [this, name] { Write(name + QStringLiteral("-")); });
        On(box, &TextBox::KeyDown, this, [this, name](int& key, int) { Write(name + QString::number(key)); });
        return box;
    }
};

class MAIN : public MdiForm {
 public:
    MAIN() : MdiForm(QStringLiteral("MAIN")) {
        MainWindow()->setWindowTitle(QStringLiteral("Gestion"));
        MainWindow()->resize(800, 500);
        AdoptLayout();
    }
    void Form_QueryUnload(bool& cancel) override {
        TheJournal()(QStringLiteral("MAIN.QueryUnload"));
        cancel = false;
    }
};

class CHILD : public Recorder {
 public:
    CHILD() : Recorder(QStringLiteral("CHILD"), FormKind::MdiChild) {}
};
class OTHER : public Recorder {
 public:
    OTHER() : Recorder(QStringLiteral("OTHER"), FormKind::MdiChild) {}
};
class DIALOG : public Recorder {
 public:
    DIALOG() : Recorder(QStringLiteral("DIALOG"), FormKind::Dialog) {}
};
class BROKEN : public Form {
 public:
    BROKEN() : Form(QStringLiteral("BROKEN"), FormKind::Dialog) {}
    void Form_Load() override { throw basic::RuntimeError(basic::error::kObjectNotSet); }
};
class FAILING : public Form {
 public:
    FAILING() : Form(QStringLiteral("FAILING"), FormKind::Dialog) {}
    void Form_Activate() override { throw basic::RuntimeError(basic::error::kNoCurrentRecord); }
};

/// Runs something once the modal loop that is about to start is running.
template <class Act>
void Later(Act act) {
    QMetaObject::invokeMethod(qApp, act, Qt::QueuedConnection);
}

}  // namespace

class FormTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        Instance<MAIN>().Show();
        QVERIFY(QTest::qWaitForWindowActive(Instance<MAIN>().Window()));
        TheJournal().Take();
    }
    void cleanup() {
        Instance<MAIN>().Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        TheJournal().Take();
        QCOMPARE(Forms::Count(), 0);
    }

    void FirstTouchLoadsAndFirstShowRunsResizeActivateAndGotFocusInThisOrder() {
        QVERIFY(!IsLoaded<CHILD>());
        Form& child = Instance<CHILD>();
        QVERIFY(IsLoaded<CHILD>());
        QVERIFY(!child.Visible());
        child.Show();
        QCOMPARE(TheJournal().Take(), QStringLiteral("CHILD.Load CHILD.Resize CHILD.Activate CHILD.First+"));
    }

    void ActivateMayGiveTheFocusAway() {
        auto& child = Instance<CHILD>();
        child.focusSecondOnActivate = true;
        child.Show();
        QCOMPARE(TheJournal().Take(), QStringLiteral("CHILD.Load CHILD.Resize CHILD.Activate CHILD.Second+"));
        QCOMPARE(Screen::ActiveControl(), child.second);
    }

    void AHiddenFormStaysLoadedAndKeepsItsValues() {
        auto& child = Instance<CHILD>();
        child.Show();
        child.first->SetText(QStringLiteral("gardé"));
        child.Hide();
        QVERIFY(!child.Visible());
        QCOMPARE(Forms::Count(), 2);
        QCOMPARE(Instance<CHILD>().first->Text(), QStringLiteral("gardé"));
        TheJournal().Take();
        child.Show();
        QCOMPARE(TheJournal().Take(), QStringLiteral("CHILD.Activate"));
    }

    void FormsAreListedInTheOrderOfLoadingHiddenOnesIncluded() {
        Instance<CHILD>();
        Instance<OTHER>().Show();
        QCOMPARE(Forms::Count(), 3);
        QCOMPARE(&Forms::Item(0), &Instance<MAIN>());
        QCOMPARE(&Forms::Item(1), &Instance<CHILD>());
        QCOMPARE(&Forms::Item(2), &Instance<OTHER>());
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, static_cast<void>(Forms::Item(3)));
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, static_cast<void>(Forms::Item(-1)));
    }

    void AfterUnloadTheNextTouchStartsAnew() {
        auto& child = Instance<CHILD>();
        child.Show();
        child.first->SetText(QStringLiteral("perdu"));
        TheJournal().Take();
        QVERIFY(child.Unload());
        QCOMPARE(TheJournal().Take(), QStringLiteral("CHILD.QueryUnload CHILD.Unload"));
        QVERIFY(!IsLoaded<CHILD>());
        QCOMPARE(Instance<CHILD>().first->Text(), QString());
        QCOMPARE(TheJournal().Take(), QStringLiteral("CHILD.Load"));
    }

    void AHandlerMayUnloadItsOwnForm() {
        auto& child = Instance<CHILD>();
        child.unloadOnKey = true;
        child.Show();
        const QPointer<Form> watched = &child;
        QTest::keyClick(child.first, Qt::Key_F8);
        QVERIFY(!IsLoaded<CHILD>());
        QTRY_VERIFY(watched.isNull());
    }

    void QueryUnloadAndUnloadMayRefuse() {
        auto& child = Instance<CHILD>();
        child.Show();
        child.cancelQuery = true;
        TheJournal().Take();
        QVERIFY(!child.Unload());
        QCOMPARE(TheJournal().Take(), QStringLiteral("CHILD.QueryUnload"));
        child.cancelQuery = false;
        child.cancelUnload = true;
        QVERIFY(!child.Unload());
        QCOMPARE(TheJournal().Take(), QStringLiteral("CHILD.QueryUnload CHILD.Unload"));
        QVERIFY(IsLoaded<CHILD>());
        QVERIFY(child.Visible());
        child.cancelUnload = false;
    }

    void ClosingAChildWindowUnloadsItsForm() {
        auto& child = Instance<CHILD>();
        child.Show();
        child.cancelUnload = true;
        child.Window()->close();
        QVERIFY(child.Visible());
        child.cancelUnload = false;
        child.Window()->close();
        QVERIFY(!IsLoaded<CHILD>());
    }

    void ClosingTheMainWindowUnloadsTheChildrenInTheOrderOfLoading() {
        Instance<OTHER>().Show();
        Instance<CHILD>().Show();
        TheJournal().Take();
        Instance<MAIN>().Window()->close();
        QCOMPARE(
            TheJournal().Take(),
            QStringLiteral("OTHER.QueryUnload OTHER.Unload CHILD.QueryUnload CHILD.Unload MAIN.QueryUnload"));
        QCOMPARE(Forms::Count(), 0);
    }

    void AChildThatRefusesKeepsTheMainWindowOpen() {
        Instance<OTHER>().Show();
        Instance<CHILD>().Show();
        Instance<CHILD>().cancelUnload = true;
        QVERIFY(!Instance<MAIN>().Unload());
        QVERIFY(!IsLoaded<OTHER>());
        QVERIFY(Instance<MAIN>().Visible());
        Instance<CHILD>().cancelUnload = false;
    }

    void AModalShowReturnsWhenTheFormHides() {
        auto& dialog = Instance<DIALOG>();
        bool wasVisible = false;
        Later([&] {
            wasVisible = dialog.Visible();
            dialog.first->SetText(QStringLiteral("réponse"));
            dialog.Hide();
        });
        dialog.Show(ShowMode::Modal);
        QVERIFY(wasVisible);
        QVERIFY(!dialog.Visible());
        QVERIFY(IsLoaded<DIALOG>());
        QCOMPARE(dialog.first->Text(), QStringLiteral("réponse"));
        dialog.Unload();
    }

    void AModalShowReturnsWhenTheFormUnloads() {
        Later([] { Instance<DIALOG>().Window()->close(); });
        Instance<DIALOG>().Show(ShowMode::Modal);
        QVERIFY(!IsLoaded<DIALOG>());
    }

    void EscapeDoesNotCloseADialogByItself() {
        auto& dialog = Instance<DIALOG>();
        bool open = false;
        Later([&] {
            TheJournal().Take();
            QTest::keyClick(dialog.first, Qt::Key_Escape);
            QTest::keyClick(dialog.first, Qt::Key_Return);
            open = dialog.Visible();
            dialog.Hide();
        });
        dialog.Show(ShowMode::Modal);
        QVERIFY(open);
        QCOMPARE(TheJournal().Take(),
                 QStringLiteral("DIALOG.Key27/0 DIALOG.First27 DIALOG.Key13/0 DIALOG.First13"));
        dialog.Unload();
    }

    void ComingBackFromADialogActivatesTheChildAgainButFiresNoLoadOrResize() {
        Instance<CHILD>().Show();
        TheJournal().Take();
        Later([] { Instance<DIALOG>().Hide(); });
        Instance<DIALOG>().Show(ShowMode::Modal);
        QCOMPARE(TheJournal().Take(),
                 QStringLiteral("DIALOG.Load DIALOG.Resize DIALOG.Activate CHILD.First- DIALOG.First+ "
                                "CHILD.Activate DIALOG.First- CHILD.First+"));
        Instance<DIALOG>().Unload();
    }

    void TheFormSeesKeysBeforeTheControlAndMaySwallowThem() {
        auto& child = Instance<CHILD>();
        child.Show();
        TheJournal().Take();
        QTest::keyClick(child.first, Qt::Key_F8);
        QCOMPARE(TheJournal().Take(), QStringLiteral("CHILD.Key119/0 CHILD.First119"));
        child.swallow = 119;
        QTest::keyClick(child.first, Qt::Key_F8, Qt::ControlModifier);
        QCOMPARE(TheJournal().Take(), QStringLiteral("CHILD.Key17/2 CHILD.First17 CHILD.Key119/2"));
    }

    void SettingTheSizeOfAFormOnScreenFiresResizeAtOnce() {
        auto& child = Instance<CHILD>();
        child.SetHeight(4500);
        QCOMPARE(TheJournal().Take(), QStringLiteral("CHILD.Load"));
        child.Show();
        TheJournal().Take();
        child.SetHeight(4650);
        QCOMPARE(TheJournal().Take(), QStringLiteral("CHILD.Resize"));
        QCOMPARE(child.Height(), 4650);
        child.SetHeight(4650);
        QCOMPARE(TheJournal().Take(), QString());
    }

    void GeometryIsInTwipsWithTheFrameIncluded() {
        auto& child = Instance<CHILD>();
        QCOMPARE(child.Surface()->size(), QSize(300, 200));
        child.Show();
        QCOMPARE(child.Surface()->size(), QSize(300, 200));
        QCOMPARE(child.ScaleWidth(), 300 * 15);
        QVERIFY(child.Width() > child.ScaleWidth());
        QVERIFY(child.Height() > child.ScaleHeight() + 15 * 15);  // the title bar
        child.SetLeft(150);
        child.SetTop(300);
        child.SetWidth(6000);
        QCOMPARE(child.Window()->geometry().topLeft(), QPoint(10, 20));
        QCOMPARE(child.Window()->width(), 400);
        QCOMPARE(child.Left(), 150);
        QCOMPARE(child.Top(), 300);
        QCOMPARE(child.Width(), 6000);
    }

    void ANewChildOpensAtTheCornerOfTheMainWindow() {
        Instance<CHILD>().Show();
        Instance<OTHER>().Show();
        QCOMPARE(Instance<CHILD>().Left(), 0);
        QCOMPARE(Instance<OTHER>().Left(), 0);
        QCOMPARE(Instance<OTHER>().Top(), 0);
    }

    void TheWindowStateCanBeSetAndRead() {
        auto& child = Instance<CHILD>();
        child.Show();
        QCOMPARE(child.WindowState(), WindowState::Normal);
        child.SetWindowState(WindowState::Minimized);
        QCOMPARE(child.WindowState(), WindowState::Minimized);
        child.ZOrder(0);
        QCOMPARE(child.WindowState(), WindowState::Minimized);
        child.SetWindowState(WindowState::Normal);
        QCOMPARE(child.WindowState(), WindowState::Normal);
        child.SetWindowState(WindowState::Maximized);
        QCOMPARE(child.WindowState(), WindowState::Maximized);
    }

    void ZOrderBringsAChildToTheFrontAndActivatesIt() {
        Instance<CHILD>().Show();
        Instance<OTHER>().Show();
        QCOMPARE(Screen::ActiveForm(), &Instance<OTHER>());
        TheJournal().Take();
        Instance<CHILD>().ZOrder(0);
        QCOMPARE(Screen::ActiveForm(), &Instance<CHILD>());
        QCOMPARE(Instance<MAIN>().Client()->activeSubWindow(), Instance<CHILD>().Window());
        QCOMPARE(TheJournal().Take(), QStringLiteral("CHILD.Activate OTHER.First- CHILD.First+"));
    }

    void AMessageBoxIsNoFormAndTakesNoFocus() {
        Instance<CHILD>().Show();
        TheJournal().Take();
        const support::BoxAnswerer boxes;
        MsgBox(QStringLiteral("Bonjour"));
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QCOMPARE(TheJournal().Take(), QString());
        QCOMPARE(Screen::ActiveForm(), &Instance<CHILD>());
        QCOMPARE(Screen::ActiveControl(), Instance<CHILD>().first);
    }

    void AnErrorInLoadReachesTheStatementThatTouchedTheForm() {
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, Instance<BROKEN>());
        QVERIFY(!IsLoaded<BROKEN>());
        QCOMPARE(Forms::Count(), 1);
    }

    void AnErrorInAnotherHandlerIsShownAndEndsTheProcess() {
        const support::BoxAnswerer boxes;
        const int before = CatchEndOfProcess(true);
        Instance<FAILING>().Show();
        QCOMPARE(CatchEndOfProcess(true), before + 1);
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
        QCOMPARE(boxes.Shown().front().title, QStringLiteral("Gestion des véhicules"));
        QVERIFY(boxes.Shown().front().text.contains(QStringLiteral("3021")));
        Instance<FAILING>().Unload();
    }

    void AnErrorInActivateReachesTheStatementThatShowedTheFormModally() {
        const support::BoxAnswerer boxes;
        const int before = CatchEndOfProcess(true);
        int number = 0;
        try {
            Instance<FAILING>().Show(ShowMode::Modal);
        } catch (const basic::RuntimeError& error) {
            number = error.Number();
        }
        QCOMPARE(number, basic::error::kNoCurrentRecord);
        QVERIFY(boxes.Shown().empty());
        QCOMPARE(CatchEndOfProcess(true), before);
        QVERIFY(!IsLoaded<FAILING>());
        QCOMPARE(Screen::ActiveForm(), &Instance<MAIN>());
    }

    void CtrlF4ClosesAChildAndCtrlWDoesNot() {
        auto& child = Instance<CHILD>();
        auto* window = qobject_cast<QMdiSubWindow*>(child.Window());
        QList<QKeySequence> keys;
        for (const QAction* action : window->systemMenu()->actions()) {
            keys += action->shortcuts();
        }
        QCOMPARE(keys, QList<QKeySequence>{QKeySequence(Qt::CTRL | Qt::Key_F4)});
    }

    void ADialogCannotBeShownModallyTwice() {
        auto& dialog = Instance<DIALOG>();
        dialog.Show();
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, dialog.Show(ShowMode::Modal));
        dialog.Unload();
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, Instance<CHILD>().Show(ShowMode::Modal));
    }

    void ControlsAreListedInTheOrderOfTheLayoutWhateverStandsInFront() {
        auto& child = Instance<CHILD>();
        child.first->raise();
        const std::vector<QWidget*> expected{child.first, child.second};
        QCOMPARE(child.Controls(), expected);
    }
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::FormTest>(argc, argv);
}
#include "form_test.moc"
