// Options of a group, drop-down lists, and what buttons show.
#include <QApplication>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

#include <forms/controls.h>
#include <forms/drop_down.h>
#include <forms/events.h>
#include <forms/option_button.h>
#include <forms/runtime.h>

using namespace quardele::forms;

class ChoicesTest : public QObject {
    Q_OBJECT

 private slots:
    void OneOptionOfAGroupIsSet();
    void AProgramCanLeaveAGroupWithoutOne();
    void AnOptionTellsItsSetting();
    void AnOptionCanSwallowACharacter();
    void ADropDownTellsItsChoice();
    void ADropDownCanHaveNoChoice();
    void ADropDownCanSwallowACharacter();
    void AButtonTakesTheColoursOfTheProgram();
    void ATextTipShowsTheKey();
    void ATextTipWithoutAKeyIsTheTextAlone();
};

void ChoicesTest::OneOptionOfAGroupIsSet() {
    QWidget group;
    OptionButton first(&group);
    OptionButton second(&group);
    QVERIFY(!first.Value() && !second.Value());
    first.SetValue(true);
    second.SetValue(true);
    QVERIFY(!first.Value());
    QVERIFY(second.Value());
}

void ChoicesTest::AProgramCanLeaveAGroupWithoutOne() {
    QWidget group;
    OptionButton first(&group);
    OptionButton second(&group);
    first.SetValue(true);
    first.SetValue(false);
    QVERIFY(!first.Value() && !second.Value());
    second.SetValue(true);
    first.SetValue(true);
    QVERIFY(!second.Value());
}

void ChoicesTest::AnOptionTellsItsSetting() {
    QWidget group;
    OptionButton first(&group);
    OptionButton second(&group);
    int clicks = 0;
    On(&first, &OptionButton::Click, &group, [&clicks] { ++clicks; });
    first.SetValue(true);
    second.SetValue(true);
    QTest::mouseClick(&first, Qt::LeftButton, {}, QPoint(5, first.height() / 2));
    QCOMPARE(clicks, 2);
}

void ChoicesTest::AnOptionCanSwallowACharacter() {
    QWidget group;
    OptionButton option(&group);
    int typed = 0;
    On(&option, &OptionButton::KeyPress, &group, [&typed](int& character) {
        typed = character;
        character = 0;
    });
    QTest::keyClick(&option, Qt::Key_Space);
    QCOMPARE(typed, 32);
    QVERIFY(!option.Value());
    QTest::keyClick(&option, Qt::Key_Return);
    QCOMPARE(typed, 13);
}

void ChoicesTest::ADropDownTellsItsChoice() {
    DropDown list;
    list.addItems({QStringLiteral("un"), QStringLiteral("deux"), QStringLiteral("trois")});
    QStringList chosen;
    On(&list, &DropDown::Click, &list, [&] { chosen.append(list.Text()); });
    QTest::keyClick(&list, Qt::Key_Down);
    list.SetListIndex(2);
    QCOMPARE(chosen, (QStringList{QStringLiteral("deux"), QStringLiteral("trois")}));
    QCOMPARE(list.ListIndex(), 2);
}

void ChoicesTest::ADropDownCanHaveNoChoice() {
    DropDown list;
    list.addItems({QStringLiteral("un"), QStringLiteral("deux")});
    list.SetListIndex(-1);
    QCOMPARE(list.ListIndex(), -1);
    QCOMPARE(list.Text(), QString());
}

void ChoicesTest::ADropDownCanSwallowACharacter() {
    DropDown list;
    list.addItems({QStringLiteral("un"), QStringLiteral("deux")});
    bool swallow = true;
    On(&list, &DropDown::KeyPress, &list,
       [&swallow](int& character) { character = swallow ? 0 : character; });
    QTest::keyClicks(&list, QStringLiteral("d"));
    QCOMPARE(list.ListIndex(), 0);
    swallow = false;
    QTest::keyClicks(&list, QStringLiteral("d"));
    QCOMPARE(list.ListIndex(), 1);
}

void ChoicesTest::AButtonTakesTheColoursOfTheProgram() {
    Button button;
    button.resize(40, 40);
    button.SetFaceColor(0xFF0000);
    button.SetRimColor(0x0000FF);
    const QImage picture = button.grab().toImage();
    QCOMPARE(picture.pixelColor(20, 20), QColor(0, 0, 255));
    QCOMPARE(picture.pixelColor(1, 20), QColor(255, 0, 0));
    button.SetFaceColor(-1);
    QVERIFY(button.grab().toImage().pixelColor(20, 20) != QColor(0, 0, 255));
}

void ChoicesTest::ATextTipShowsTheKey() {
    Button button;
    button.setToolTip(QStringLiteral("Ne rien sélectionner"));
    button.setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+B")));
    button.show();
    QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), button.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&button, &asked);
    QCOMPARE(QToolTip::text(), QStringLiteral("Ne rien sélectionner\nCtrl+Maj+B"));
    QCOMPARE(button.toolTip(), QStringLiteral("Ne rien sélectionner"));
    QCOMPARE(button.accessibleName(), QStringLiteral("Ne rien sélectionner"));
}

void ChoicesTest::ATextTipWithoutAKeyIsTheTextAlone() {
    Button button;
    button.setToolTip(QStringLiteral("Fermer la fenêtre"));
    button.show();
    QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), button.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&button, &asked);
    QCOMPARE(QToolTip::text(), QStringLiteral("Fermer la fenêtre"));
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    SetUpApplication(application);
    ChoicesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "choices_test.moc"
