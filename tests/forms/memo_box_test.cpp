#include <QClipboard>
#include <QSignalSpy>

#include <forms/controls.h>

#include "forms_test.h"

namespace quardele::forms {

class MemoBoxTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        stage_ = std::make_unique<test::Stage>();
        box_ = new MemoBox(stage_.get());
        box_->setGeometry(10, 10, 200, 80);
        stage_->Open();
        box_->setFocus();
    }
    void cleanup() { stage_.reset(); }

    void EnterStaysInTheBoxAsCarriageReturnAndLineFeed() {
        QTest::keyClicks(box_, QStringLiteral("un"));
        QTest::keyClick(box_, Qt::Key_Return);
        QTest::keyClicks(box_, QStringLiteral("deux"));
        QCOMPARE(box_->Text(), QStringLiteral("un\r\ndeux"));
    }

    void LineEndsOfAllKindsComeBackAsStored() {
        box_->SetText(QStringLiteral("a\r\nb\nc\rd"));
        QCOMPARE(box_->Text(), QStringLiteral("a\r\nb\r\nc\r\nd"));
    }

    void MaxLengthCountsALineEndAsTwo() {
        box_->SetMaxLength(4);
        QTest::keyClicks(box_, QStringLiteral("abc"));
        QTest::keyClick(box_, Qt::Key_Return);
        QCOMPARE(box_->Text(), QStringLiteral("abc"));
        QTest::keyClicks(box_, QStringLiteral("de"));
        QCOMPARE(box_->Text(), QStringLiteral("abcd"));
    }

    void TypingOverASelectionIsAllowedAtTheLimit() {
        box_->SetMaxLength(3);
        box_->SetText(QStringLiteral("abc"));
        box_->selectAll();
        QTest::keyClicks(box_, QStringLiteral("xyz"));
        QCOMPARE(box_->Text(), QStringLiteral("xyz"));
    }

    void WhatIsPastedIsCutToTheLimit() {
        box_->SetMaxLength(6);
        QApplication::clipboard()->setText(QStringLiteral("ab\ncdefgh"));
        box_->paste();
        QCOMPARE(box_->Text(), QStringLiteral("ab\r\ncd"));
    }

    void TabLeavesTheBox() {
        auto* next = new TextBox(stage_.get());
        next->setGeometry(10, 100, 100, 20);
        next->show();
        QTest::keyClick(box_, Qt::Key_Tab);
        QVERIFY(next->hasFocus());
        QCOMPARE(box_->Text(), QString());
    }

    void AssigningTheSameTextIsNoChange() {
        box_->SetText(QStringLiteral("a\r\nb"));
        box_->SetDataChanged(false);
        const QSignalSpy changes(box_, &MemoBox::Change);
        box_->SetText(QStringLiteral("a\r\nb"));
        QCOMPARE(changes.count(), 0);
        QVERIFY(!box_->DataChanged());
    }

    void AKeyIsToldBeforeItActsAndMayBeSwallowed() {
        QList<int> codes;
        connect(box_, &MemoBox::KeyDown, [&codes](int& keyCode, int) {
            codes.append(keyCode);
            if (keyCode == 'B') {
                keyCode = 0;
            }
        });
        box_->SetText(QString());
        QTest::keyClicks(box_, QStringLiteral("abc"));
        QTest::keyClick(box_, Qt::Key_Escape);
        QCOMPARE(codes, (QList<int>{'A', 'B', 'C', 27}));
        QCOMPARE(box_->Text(), QStringLiteral("ac"));
    }

    void ALockedBoxIsGrey() {
        const QColor toTypeIn = box_->palette().color(QPalette::Base);
        box_->setReadOnly(true);
        QVERIFY(box_->palette().color(QPalette::Base) != toTypeIn);
        box_->setReadOnly(false);
        QCOMPARE(box_->palette().color(QPalette::Base), toTypeIn);
    }

 private:
    std::unique_ptr<test::Stage> stage_;
    MemoBox* box_ = nullptr;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::MemoBoxTest>(argc, argv);
}
#include "memo_box_test.moc"
