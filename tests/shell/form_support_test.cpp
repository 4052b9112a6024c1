// What forms share: pending changes, binding to a database, selection on focus, emptying of lists.
#include <QTest>

#include <forms/combo.h>
#include <forms/controls.h>
#include <forms/data_control.h>
#include <forms/grid.h>
#include <forms/runtime.h>
#include <shell/form_support.h>

using namespace quardele;

namespace {

/// A dialog with one control of each kind.
class FormOfAllKinds : public forms::Form {
    Q_OBJECT
 public:
    FormOfAllKinds() : Form(QStringLiteral("TOUS"), forms::FormKind::Dialog) {
        Surface()->resize(400, 300);
        firstData = Add<forms::DataControl>("DBD_1");
        secondData = Add<forms::DataControl>("DBD_2");
        label = Add<forms::Label>("CTL_1");
        bound = Add<forms::TextBox>("CTX_1");
        bound->SetDataField(QStringLiteral("CHAMP"));
        unbound = Add<forms::TextBox>("CTX_2");
        memo = Add<forms::MemoBox>("CTX_3");
        memo->SetDataField(QStringLiteral("MEMO"));
        check = Add<forms::CheckBox>("CHK_1");
        check->SetDataField(QStringLiteral("COCHE"));
        grid = Add<forms::Grid>("DBG_1");
        combo = Add<forms::ListCombo>("DBC_1");
        button = Add<forms::Button>("Cmd_1");
    }

    forms::DataControl* firstData;
    forms::DataControl* secondData;
    forms::Label* label;
    forms::TextBox* bound;
    forms::TextBox* unbound;
    forms::MemoBox* memo;
    forms::CheckBox* check;
    forms::Grid* grid;
    forms::ListCombo* combo;
    forms::Button* button;

 private:
    template <class Control>
    Control* Add(const char* name) {
        auto* control = new Control(Surface());
        control->setObjectName(QString::fromLatin1(name));
        control->setGeometry(8, 8 + 26 * count_++, 200, 22);
        return control;
    }
    int count_ = 0;
};

FormOfAllKinds& TheForm() {
    return forms::Instance<FormOfAllKinds>();
}

}  // namespace

class FormSupportTest : public QObject {
    Q_OBJECT

 private slots:
    void cleanup();
    void NothingIsPendingAtFirst();
    void AChangedBoundControlIsPending();
    void AnUnboundBoxIsNeverPending();
    void AGridIsPendingBoundOrNot();
    void AChangePutBackByHandStillCounts();
    void EveryDataControlGetsTheDatabase();
    void FocusSelectsTheWholeText();
    void AnyOtherActiveControlIsLeftAlone();
    void EmptyingTakesTheRowsFromEveryList();
};

void FormSupportTest::cleanup() {
    if (forms::IsLoaded<FormOfAllKinds>()) {
        TheForm().Unload();
    }
}

void FormSupportTest::NothingIsPendingAtFirst() {
    QVERIFY(!shell::Saisie_En_Cours(TheForm()));
}

void FormSupportTest::AChangedBoundControlIsPending() {
    TheForm().bound->SetText(QStringLiteral("x"));
    QVERIFY(shell::Saisie_En_Cours(TheForm()));
    TheForm().bound->SetDataChanged(false);
    QVERIFY(!shell::Saisie_En_Cours(TheForm()));

    TheForm().memo->SetText(QStringLiteral("x"));
    QVERIFY(shell::Saisie_En_Cours(TheForm()));
    TheForm().memo->SetDataChanged(false);

    TheForm().check->SetValue(1);
    QVERIFY(shell::Saisie_En_Cours(TheForm()));
}

void FormSupportTest::AnUnboundBoxIsNeverPending() {
    TheForm().unbound->SetText(QStringLiteral("x"));
    QVERIFY(!shell::Saisie_En_Cours(TheForm()));
}

void FormSupportTest::AGridIsPendingBoundOrNot() {
    TheForm().grid->SetChangeMade(true);
    QVERIFY(shell::Saisie_En_Cours(TheForm()));
    TheForm().grid->SetChangeMade(false);
    QVERIFY(!shell::Saisie_En_Cours(TheForm()));
}

void FormSupportTest::AChangePutBackByHandStillCounts() {
    TheForm().bound->SetText(QStringLiteral("x"));
    TheForm().bound->SetText(QString());
    QVERIFY(shell::Saisie_En_Cours(TheForm()));
}

void FormSupportTest::EveryDataControlGetsTheDatabase() {
    const QString path = QStringLiteral("C:\\QUARDELE\\DATA\\talmeon.mdb");
    shell::Lier_Donnees_Form(TheForm(), path);
    QCOMPARE(TheForm().firstData->DatabaseName(), path);
    QCOMPARE(TheForm().secondData->DatabaseName(), path);
}

void FormSupportTest::FocusSelectsTheWholeText() {
    TheForm().Show();
    QVERIFY(QTest::qWaitForWindowActive(TheForm().Window()));
    TheForm().unbound->SetText(QStringLiteral("AB-123-CD"));
    TheForm().unbound->deselect();
    forms::SetFocus(TheForm().unbound);
    shell::Selection_Texte();
    QCOMPARE(TheForm().unbound->SelStart(), 0);
    QCOMPARE(TheForm().unbound->selectedText(), QStringLiteral("AB-123-CD"));
}

void FormSupportTest::AnyOtherActiveControlIsLeftAlone() {
    TheForm().Show();
    QVERIFY(QTest::qWaitForWindowActive(TheForm().Window()));
    TheForm().unbound->SetText(QStringLiteral("AB-123-CD"));
    TheForm().unbound->deselect();
    forms::SetFocus(TheForm().button);
    shell::Selection_Texte();
    QVERIFY(!TheForm().unbound->hasSelectedText());
}

void FormSupportTest::EmptyingTakesTheRowsFromEveryList() {
    TheForm().combo->SetRowSource(TheForm().firstData);
    shell::Vider_RowSource(TheForm());
    QCOMPARE(TheForm().combo->RowSource(), nullptr);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    FormSupportTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "form_support_test.moc"
