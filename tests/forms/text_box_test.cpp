#include <QClipboard>
#include <QInputMethodEvent>
#include <QSignalSpy>

#include <forms/controls.h>
#include <forms/events.h>

#include "forms_test.h"

namespace quardele::forms {

class TextBoxTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        stage_ = std::make_unique<test::Stage>();
        box_ = new TextBox(stage_.get());
        box_->setGeometry(10, 10, 200, 20);
        stage_->Open();
        box_->setFocus();
    }
    void cleanup() { stage_.reset(); }

    void AKeyRunsKeyDownThenKeyPressThenChange() {
        test::Journal journal;
        On(box_, &TextBox::KeyDown, this,
           [&](int& key, int shift) { journal(QStringLiteral("down%1/%2").arg(key).arg(shift)); });
        On(box_, &TextBox::KeyPress, this,
           [&](int& character) { journal(QStringLiteral("press%1").arg(character)); });
        On(box_, &TextBox::Change, this, [&] { journal(QStringLiteral("change:") + box_->Text()); });
        QTest::keyClick(box_, Qt::Key_A);
        QCOMPARE(journal.Take(), QStringLiteral("down65/0 press97 change:a"));
        QTest::keyClick(box_, Qt::Key_F4);
        QCOMPARE(journal.Take(), QStringLiteral("down115/0"));
        QTest::keyClick(box_, Qt::Key_Return);
        QCOMPARE(journal.Take(), QStringLiteral("down13/0 press13"));
        QTest::keyClick(box_, Qt::Key_Backspace);
        QCOMPARE(journal.Take(), QStringLiteral("down8/0 press8 change:"));
    }

    void ZeroSwallowsTheKey() {
        On(box_, &TextBox::KeyDown, this, [](int& key, int) { key = key == 'A' ? 0 : key; });
        On(box_, &TextBox::KeyPress, this,
           [](int& character) { character = character == 'b' ? 0 : character; });
        QTest::keyClicks(box_, QStringLiteral("abc"));
        QCOMPARE(box_->Text(), QStringLiteral("c"));
    }

    void AHandlerMayTypeAnotherCharacter() {
        On(box_, &TextBox::KeyPress, this,
           [](int& character) { character = QChar(character).toUpper().unicode(); });
        QTest::keyClicks(box_, QStringLiteral("ab"));
        QTest::sendKeyEvent(QTest::Click, box_, Qt::Key_Eacute, QStringLiteral("é"), Qt::NoModifier);
        QCOMPARE(box_->Text(), QStringLiteral("ABÉ"));
    }

    void CharactersMadeOfTwoKeysPassKeyPressAsWell() {
        On(box_, &TextBox::KeyPress, this,
           [](int& character) { character = character == u'ê' ? u'Ê' : character; });
        QInputMethodEvent typed;
        typed.setCommitString(QStringLiteral("ê"));
        QApplication::sendEvent(box_, &typed);
        QCOMPARE(box_->Text(), QStringLiteral("Ê"));
    }

    void MaxLengthLimitsTypingOnly() {
        box_->SetMaxLength(3);
        QTest::keyClicks(box_, QStringLiteral("abcdef"));
        QCOMPARE(box_->Text(), QStringLiteral("abc"));
        box_->SetText(QStringLiteral("programme"));
        QCOMPARE(box_->Text(), QStringLiteral("programme"));
    }

    void ATextThatIsTooLongAlreadyCanBeShortened() {
        box_->SetMaxLength(3);
        box_->SetText(QStringLiteral("abcdef"));
        QTest::keyClick(box_, Qt::Key_End);
        QTest::keyClicks(box_, QStringLiteral("x"));
        QCOMPARE(box_->Text(), QStringLiteral("abcdef"));
        QTest::keyClick(box_, Qt::Key_Backspace);
        QCOMPARE(box_->Text(), QStringLiteral("abcde"));
    }

    void TypingInTheMiddleKeepsWhatFollows() {
        box_->SetMaxLength(4);
        box_->SetText(QStringLiteral("abd"));
        box_->SetSelStart(2);
        QTest::keyClicks(box_, QStringLiteral("cxx"));
        QCOMPARE(box_->Text(), QStringLiteral("abcd"));
        QCOMPARE(box_->SelStart(), 3);
    }

    void PastingIsTyping() {
        box_->SetMaxLength(5);
        box_->SetText(QStringLiteral("ab"));
        QTest::keyClick(box_, Qt::Key_End);
        QApplication::clipboard()->setText(QStringLiteral("123456"));
        box_->paste();
        QCOMPARE(box_->Text(), QStringLiteral("ab123"));
    }

    void LengthCountsUnits() {
        box_->SetMaxLength(2);
        QApplication::clipboard()->setText(QStringLiteral("😀x"));
        box_->paste();
        QCOMPARE(box_->Text(), QStringLiteral("😀"));
    }

    void ZeroIsNoLimit() {
        box_->SetMaxLength(0);
        QTest::keyClicks(box_, QString(300, u'x'));
        QCOMPARE(box_->Text().size(), 300);
    }

    void SelectionIsSetByStartAndLength() {
        box_->SetText(QStringLiteral("abcdef"));
        box_->SetSelStart(0);
        box_->SetSelLength(6);
        QCOMPARE(box_->selectedText(), QStringLiteral("abcdef"));
        QCOMPARE(box_->SelStart(), 0);
        box_->SetSelStart(2);
        QCOMPARE(box_->SelStart(), 2);
        QVERIFY(!box_->hasSelectedText());
    }

    void ALockedBoxTakesNoText() {
        box_->setReadOnly(true);
        QVERIFY(box_->Locked());
        QTest::keyClicks(box_, QStringLiteral("abc"));
        QCOMPARE(box_->Text(), QString());
    }

    void AssigningFiresChangeOnceAndOnlyForAnotherText() {
        const QSignalSpy changes(box_, &TextBox::Change);
        box_->SetText(QStringLiteral("un"));
        box_->SetText(QStringLiteral("un"));
        box_->SetText(QString());
        QCOMPARE(changes.count(), 2);
    }

 private:
    std::unique_ptr<test::Stage> stage_;
    TextBox* box_ = nullptr;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::TextBoxTest>(argc, argv);
}
#include "text_box_test.moc"
