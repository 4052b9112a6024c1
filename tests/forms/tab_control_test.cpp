#include <QMainWindow>
#include <QTabBar>

#include <forms/controls.h>
#include <forms/events.h>
#include <forms/form.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <support/boxes.h>

#include "forms_test.h"

namespace quardele::forms {

namespace {

class TABS : public Form {
 public:
    TabControl* tabs;
    Button* tool;
    TextBox* entry;

    TABS() : Form(QStringLiteral("TABS"), FormKind::Dialog) {
        Surface()->resize(400, 300);
        tabs = new TabControl(Surface());
        tabs->setObjectName(QStringLiteral("SST_ONGLET"));
        tabs->setGeometry(0, 0, 400, 250);
        for (const char* caption : {"Liste", "Fiche"}) {
            tabs->addTab(new QWidget, QLatin1String(caption));
        }
        tool = new Button(tabs->widget(1));
        tool->setObjectName(QStringLiteral("Cmd_Images"));
        tool->setGeometry(360, 1, 28, 28);
        tool->setProperty("inStrip", true);
        entry = new TextBox(tabs->widget(1));
        entry->setObjectName(QStringLiteral("CTX_IMMAT"));
    }
};

}  // namespace

class TabControlTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        form_ = &Instance<TABS>();
        form_->Show();
        QVERIFY(QTest::qWaitForWindowActive(form_->Window()));
        tabs_ = form_->tabs;
    }
    void cleanup() {
        form_->Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void SettingTheTabFiresClickWithThePreviousOneBeforeTheNextStatement() {
        test::Journal journal;
        On(tabs_, &TabControl::Click, this,
           [&](int previous) { journal(QStringLiteral("%1>%2").arg(previous).arg(tabs_->Tab())); });
        tabs_->SetTab(1);
        QCOMPARE(journal.Take(), QStringLiteral("0>1"));
        tabs_->SetTab(1);
        QCOMPARE(journal.Take(), QString());
        tabs_->SetTab(0);
        QCOMPARE(journal.Take(), QStringLiteral("1>0"));
    }

    void AHandlerThatSetsTheTabBackEntersItselfAgainFirst() {
        const support::BoxAnswerer boxes;
        test::Journal journal;
        tabs_->SetTab(1);
        On(tabs_, &TabControl::Click, this, [&](int previous) {
            if (tabs_->Tab() == 1) {
                journal(QStringLiteral("reload"));
                return;
            }
            tabs_->SetTab(previous);
            MsgBox(QStringLiteral("Enregistrez"));
            journal(QStringLiteral("box"));
        });
        tabs_->SetTab(0);
        QCOMPARE(journal.Take(), QStringLiteral("reload box"));
        QCOMPARE(tabs_->Tab(), 1);
    }

    void AControlIsNotLeftByATabThatComesBackAtOnce() {
        tabs_->SetTab(1);
        SetFocus(form_->entry);
        test::Journal journal;
        On(form_->entry, &TextBox::LostFocus, this, [&] { journal(QStringLiteral("lost")); });
        On(tabs_, &TabControl::Click, this, [&](int previous) {
            if (tabs_->Tab() == 0) {
                tabs_->SetTab(previous);
            } else {
                SetFocus(form_->entry);
            }
        });
        tabs_->SetTab(0);
        QCOMPARE(journal.Take(), QString());
        QCOMPARE(Screen::ActiveControl(), form_->entry);
    }

    void AControlThatGoesWithItsTabIsLeft() {
        tabs_->SetTab(1);
        SetFocus(form_->entry);
        test::Journal journal;
        On(form_->entry, &TextBox::LostFocus, this, [&] { journal(QStringLiteral("lost")); });
        tabs_->SetTab(0);
        QCOMPARE(journal.Take(), QStringLiteral("lost"));
        QCOMPARE(Screen::ActiveControl(), tabs_);
    }

    void ClickingATabIsAChangeOfTab() {
        int previous = -1;
        On(tabs_, &TabControl::Click, this, [&](int tab) { previous = tab; });
        QTest::mouseClick(tabs_->tabBar(), Qt::LeftButton, {}, tabs_->tabBar()->tabRect(1).center());
        QCOMPARE(tabs_->Tab(), 1);
        QCOMPARE(previous, 0);
    }

    void CtrlTabChangesTheTab() {
        QTest::keyClick(tabs_, Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(tabs_->Tab(), 1);
        QTest::keyClick(tabs_, Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(tabs_->Tab(), 0);
    }

    void PagesBeginBelowTheStrip() {
        QCOMPARE(tabs_->TabHeight(), 32 * 15);
        const QWidget* page = tabs_->widget(0);
        QCOMPARE(page->mapTo(tabs_, QPoint(0, 0)), QPoint(0, 32));
        QCOMPARE(page->size(), QSize(400, 250 - 32));
    }

    void AControlInTheStripIsSeenWithItsPageOnly() {
        QCOMPARE(form_->tool->parentWidget(), tabs_);
        QCOMPARE(form_->tool->pos(), QPoint(360, 1));
        QVERIFY(!form_->tool->isVisible());
        tabs_->SetTab(1);
        QVERIFY(form_->tool->isVisible());
        QCOMPARE(tabs_->childAt(370, 10), form_->tool);
        tabs_->SetTab(0);
        QVERIFY(!form_->tool->isVisible());
    }

    void CaptionsCanBeReadAndSet() {
        tabs_->SetTabCaption(1, QStringLiteral(" Détail véhicule"));
        QCOMPARE(tabs_->TabCaption(1), QStringLiteral(" Détail véhicule"));
    }

 private:
    TABS* form_ = nullptr;
    TabControl* tabs_ = nullptr;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::TabControlTest>(argc, argv);
}
#include "tab_control_test.moc"
