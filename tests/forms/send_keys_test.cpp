#include <QSignalSpy>

#include <basic/runtime_error.h>
#include <forms/controls.h>
#include <forms/events.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>

#include "forms_test.h"

namespace quardele::forms {

class SendKeysTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        stage_ = std::make_unique<test::Stage>();
        first_ = Add(10);
        second_ = Add(40);
        stage_->Open();
        first_->setFocus();
    }
    void cleanup() { stage_.reset(); }

    void KeysArriveAfterTheHandlerHasReturned() {
        test::Journal journal;
        On(first_, &TextBox::KeyPress, this, [&](int& character) {
            if (character == 13) {
                character = 0;
                SendKeys(QStringLiteral("{TAB}"));
                journal(first_->hasFocus() ? QStringLiteral("still") : QStringLiteral("moved"));
            }
        });
        On(second_, &TextBox::GotFocus, this, [&] { journal(QStringLiteral("second")); });
        QTest::keyClick(first_, Qt::Key_Return);
        QCOMPARE(journal.Take(), QStringLiteral("still"));
        DoEvents();
        QCOMPARE(journal.Take(), QStringLiteral("second"));
        QVERIFY(second_->hasFocus());
    }

    void KeysGoWhereTheFocusIsWhenTheyArrive() {
        SendKeys(QStringLiteral("a{TAB}b"));
        DoEvents();
        QCOMPARE(first_->Text(), QStringLiteral("a"));
        QCOMPARE(second_->Text(), QStringLiteral("b"));
    }

    void LettersStandAsTheyAre() {
        SendKeys(QStringLiteral("Été 2026"));
        DoEvents();
        QCOMPARE(first_->Text(), QStringLiteral("Été 2026"));
    }

    void NamedKeysHaveThePlatformsCodes_data() {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("code");
        QTest::newRow("ESC") << QStringLiteral("{ESC}") << 27;
        QTest::newRow("ENTER") << QStringLiteral("{ENTER}") << 13;
        QTest::newRow("F1") << QStringLiteral("{F1}") << 112;
        QTest::newRow("F4") << QStringLiteral("{F4}") << 115;
        QTest::newRow("F12") << QStringLiteral("{F12}") << 123;
        QTest::newRow("small letters") << QStringLiteral("{f8}") << 119;
    }
    void NamedKeysHaveThePlatformsCodes() {
        QFETCH(QString, keys);
        QFETCH(int, code);
        std::vector<int> seen;
        On(first_, &TextBox::KeyDown, this, [&](int& key, int) { seen.push_back(key); });
        SendKeys(keys);
        DoEvents();
        QCOMPARE(seen, std::vector<int>{code});
    }

    void UnknownNamesAreRefusedAndNothingIsSent() {
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, SendKeys(QStringLiteral("a{HELP}")));
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, SendKeys(QStringLiteral("a{F13}")));
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, SendKeys(QStringLiteral("a{TAB")));
        DoEvents();
        QCOMPARE(first_->Text(), QString());
    }

    void ABoxThatOpensFirstGetsTheKeys() {
        SendKeys(QStringLiteral("{ESC}"));
        QCOMPARE(MsgBox(QStringLiteral("Bonjour")), BoxAnswer::Ok);
    }

 private:
    TextBox* Add(int top) {
        auto* box = new TextBox(stage_.get());
        box->setGeometry(10, top, 100, 20);
        return box;
    }

    std::unique_ptr<test::Stage> stage_;
    TextBox* first_ = nullptr;
    TextBox* second_ = nullptr;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::SendKeysTest>(argc, argv);
}
#include "send_keys_test.moc"
