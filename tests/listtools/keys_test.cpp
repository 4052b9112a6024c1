// The keys of the toolbars, and what the text tips tell of them.
#include <QAbstractButton>
#include <QAction>
#include <QHelpEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QToolTip>

#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

constexpr int kMake = 2;
constexpr int kRemindedRegistration = 2;

QString OpenDialogName() {
    return forms::Forms::Item(forms::Forms::Count() - 1).Name();
}

forms::Button& Tool(const List& list, int index) {
    return *forms::ControlArray<forms::Button>(list.form->Surface(), QStringLiteral("Cmd_ToolBar"))(index);
}

/// What the operator reads under the mouse.
QString TipOf(forms::Button& button) {
    QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), button.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&button, &asked);
    return QToolTip::text();
}

/// All keys that do something with a form in front: of its visible buttons, of the menu, of the forms' own.
QStringList KeysInForce(const QWidget& surface) {
    QStringList keys{QStringLiteral("F4"), QStringLiteral("F8"), QStringLiteral("Shift+F10"),
                     QStringLiteral("Ctrl+F4")};
    for (const QAbstractButton* button : surface.findChildren<QAbstractButton*>()) {
        if (button->isVisible() && !button->shortcut().isEmpty()) {
            keys.append(button->shortcut().toString());
        }
    }
    for (const QAction* menu : MainWindow().MainWindow()->menuBar()->actions()) {
        for (const QKeySequence& key : {menu->shortcut(), QKeySequence::mnemonic(menu->text())}) {
            if (!key.isEmpty()) {
                keys.append(key.toString());
            }
        }
    }
    return keys;
}

void CheckKeysDiffer(const List& list) {
    QStringList keys = KeysInForce(*list.form->Surface());
    keys.removeDuplicates();
    QCOMPARE(keys, KeysInForce(*list.form->Surface()));
}

}  // namespace

class KeysTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void EveryToolOfTheRemindersHasItsKey_data();
    void EveryToolOfTheRemindersHasItsKey();
    void TheExportOfTheRemindersHasItsKey();
    void TheTextTipsOfTheVehiclesShowTheKeys();
    void TheTextTipsOfTheRemindersShowTheKeys();
    void NoKeyOfTheListIsTakenTwice();
    void NoKeyOfTheRecordIsTakenTwice();
    void NoKeyOfTheRemindersIsTakenTwice();

 private:
    std::unique_ptr<ListProgram> program_;
};

void KeysTest::init() {
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
}

void KeysTest::EveryToolOfTheRemindersHasItsKey_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("dialog");
    QTest::newRow("selection") << Qt::Key_L << QStringLiteral("FSELECT");
    QTest::newRow("search") << Qt::Key_F << QStringLiteral("FCHERCHE");
    QTest::newRow("sort") << Qt::Key_T << QStringLiteral("FCLASSE");
    QTest::newRow("print") << Qt::Key_P << QStringLiteral("PrintToPdf");
}

void KeysTest::EveryToolOfTheRemindersHasItsKey() {
    QFETCH(Qt::Key, key);
    QFETCH(QString, dialog);
    program_->OpenReminders();
    forms::SetFocus(Reminders().grid);
    GoToColumn(*Reminders().grid, kRemindedRegistration);
    QString opened;
    QVERIFY(InDialog([=] { PressKey(key, Qt::ControlModifier); },
                     [&] {
                         const QString name = QApplication::activeModalWidget()->objectName();
                         opened = name == QLatin1String("PrintToPdf") ? name : OpenDialogName();
                     }));
    QCOMPARE(opened, dialog);
}

void KeysTest::TheExportOfTheRemindersHasItsKey() {
    program_->OpenReminders();
    forms::SetFocus(Reminders().grid);
    program_->boxes.AnswerNo();
    PressKey(Qt::Key_E, Qt::ControlModifier);
    CompareBoxes(program_->boxes, {QStringLiteral("Confirmez-vous la création du fichier Excel ?")});
}

void KeysTest::TheTextTipsOfTheVehiclesShowTheKeys() {
    QCOMPARE(TipOf(Tool(Vehicles(), kSelectionTool)), QStringLiteral("Sélection\nCtrl+L"));
    // Its button does nothing there: the tip tells where the search is found.
    QCOMPARE(TipOf(Tool(Vehicles(), kSearchTool)),
             QStringLiteral("Recherche\nClic droit ou Maj+F10 dans la liste"));
    QCOMPARE(TipOf(Tool(Vehicles(), kSortTool)), QStringLiteral("Classement\nCtrl+T"));
    QCOMPARE(TipOf(Tool(Vehicles(), kPrintTool)), QStringLiteral("Imprimer la liste\nCtrl+P"));
    QCOMPARE(TipOf(Tool(Vehicles(), kExcelTool)), QStringLiteral("Exporter vers Excel\nCtrl+E"));
}

void KeysTest::TheTextTipsOfTheRemindersShowTheKeys() {
    program_->OpenReminders();
    const QStringList tips{QStringLiteral("Sélection\nCtrl+L"), QStringLiteral("Recherche\nCtrl+F"),
                           QStringLiteral("Classement\nCtrl+T"), QStringLiteral("Imprimer la liste\nCtrl+P"),
                           QStringLiteral("Exporter vers Excel\nCtrl+E")};
    for (int index = 0; index < 5; ++index) {
        QCOMPARE(TipOf(Tool(Reminders(), index)), tips[index]);
    }
    auto& form = forms::Instance<reminders::FRELANCES>();
    QCOMPARE(TipOf(*form.Cmd_SelectAll), QStringLiteral("Tout sélectionner\nCtrl+B"));
    QVERIFY(TipOf(*form.Cmd_DeSelectAll).startsWith(QStringLiteral("Ne rien sélectionner\n")));
    QCOMPARE(TipOf(*form.Cmd_Editer), QStringLiteral("Editer les relances\nCtrl+R"));
}

void KeysTest::NoKeyOfTheListIsTakenTwice() {
    QVERIFY(KeysInForce(*Form().Surface()).contains(QStringLiteral("Ctrl+L")));
    CheckKeysDiffer(Vehicles());
}

void KeysTest::NoKeyOfTheRecordIsTakenTwice() {
    Tabs()->SetTab(kRecordTab);
    QVERIFY(KeysInForce(*Form().Surface()).contains(QStringLiteral("Ctrl+S")));
    CheckKeysDiffer(Vehicles());
}

void KeysTest::NoKeyOfTheRemindersIsTakenTwice() {
    program_->OpenReminders();
    QVERIFY(KeysInForce(*Reminders().form->Surface()).contains(QStringLiteral("Alt+R")));
    CheckKeysDiffer(Reminders());
}

int main(int argc, char* argv[]) {
    // Printers of this machine are none of the tests' business: nobody answers there.
    qputenv("CUPS_SERVER", "127.0.0.1:9");
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    KeysTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "keys_test.moc"
