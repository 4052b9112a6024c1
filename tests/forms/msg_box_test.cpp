#include <QDialog>
#include <QLabel>
#include <QPushButton>

#include <forms/msg_box.h>
#include <support/boxes.h>

#include "forms_test.h"

namespace quardele::forms {
namespace {

QDialog* OpenBox() {
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

/// Does something with the box that is about to open.
template <class Act>
void InTheBox(Act act) {
    QMetaObject::invokeMethod(
        qApp,
        [act] {
            QVERIFY(QTest::qWaitForWindowActive(OpenBox()));
            act(*OpenBox());
        },
        Qt::QueuedConnection);
}

}  // namespace

class MsgBoxTest : public QObject {
    Q_OBJECT

 private slots:
    void TheBoxTellsTextTitleAndFrenchButtons() {
        support::BoxAnswerer boxes;
        QCOMPARE(MsgBox(QStringLiteral("Bonjour")), BoxAnswer::Ok);
        QCOMPARE(MsgBox(QStringLiteral("Supprimer ?"), BoxButtons::YesNo, BoxIcon::Question,
                        QStringLiteral("Titre")),
                 BoxAnswer::Yes);
        boxes.AnswerNo();
        QCOMPARE(MsgBox(QStringLiteral("Vraiment ?"), BoxButtons::YesNo), BoxAnswer::No);
        const std::vector<support::ShownBox>& shown = boxes.Shown();
        QCOMPARE(shown.size(), std::size_t{3});
        QCOMPARE(shown[0].title, QStringLiteral("Gestion des véhicules"));
        QCOMPARE(shown[0].button, QStringLiteral("OK"));
        QCOMPARE(shown[1].title, QStringLiteral("Titre"));
        QCOMPARE(shown[1].button, QStringLiteral("Oui"));
        QCOMPARE(shown[2].button, QStringLiteral("Non"));
        QCOMPARE(boxes.TakeTexts(),
                 (std::vector<QString>{QStringLiteral("Bonjour"), QStringLiteral("Supprimer ?"),
                                       QStringLiteral("Vraiment ?")}));
        QVERIFY(boxes.Shown().empty());
    }

    void EscapeAnswersTheOkBox() {
        InTheBox([](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
        QCOMPARE(MsgBox(QStringLiteral("Bonjour")), BoxAnswer::Ok);
    }

    void EscapeAndClosingDoNotAnswerTheYesNoBox() {
        bool open = false;
        InTheBox([&](QDialog& box) {
            QTest::keyClick(&box, Qt::Key_Escape);
            box.close();
            open = box.isVisible();
            QTest::keyClick(&box, Qt::Key_N, Qt::AltModifier);
        });
        QCOMPARE(MsgBox(QStringLiteral("Supprimer ?"), BoxButtons::YesNo), BoxAnswer::No);
        QVERIFY(open);
    }

    void TheYesNoBoxHasNoCloseButton() {
        Qt::WindowFlags yesNo;
        Qt::WindowFlags ok;
        InTheBox([&](QDialog& box) {
            yesNo = box.windowFlags();
            QTest::keyClick(&box, Qt::Key_Return);
        });
        QCOMPARE(MsgBox(QStringLiteral("Supprimer ?"), BoxButtons::YesNo), BoxAnswer::Yes);
        InTheBox([&](QDialog& box) {
            ok = box.windowFlags();
            QTest::keyClick(&box, Qt::Key_Return);
        });
        MsgBox(QStringLiteral("Bonjour"));
        QVERIFY(!yesNo.testFlag(Qt::WindowCloseButtonHint));
        QVERIFY(ok.testFlag(Qt::WindowCloseButtonHint));
    }

    void ArrowsAndSpaceReachTheOtherButton() {
        InTheBox([](QDialog&) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        });
        QCOMPARE(MsgBox(QStringLiteral("Supprimer ?"), BoxButtons::YesNo), BoxAnswer::No);
    }

    void AllLineEndsBreakTheLine() {
        QString text;
        InTheBox([&](QDialog& box) {
            text = box.findChild<QLabel*>(QStringLiteral("MsgBox_Text"))->text();
            box.accept();
        });
        MsgBox(QStringLiteral("un\r\ndeux\rtrois\nquatre"));
        QCOMPARE(text, QStringLiteral("un\ndeux\ntrois\nquatre"));
    }

    void MarkupIsText() {
        InTheBox([](QDialog& box) {
            QCOMPARE(box.findChild<QLabel*>(QStringLiteral("MsgBox_Text"))->textFormat(), Qt::PlainText);
            box.accept();
        });
        MsgBox(QStringLiteral("Le modèle WORD <> est introuvable."));
    }

    void ALongTextWrapsAndKeepsTheButtonsOnScreen() {
        QSize size;
        InTheBox([&](QDialog& box) {
            size = box.size();
            box.accept();
        });
        MsgBox(QString(60, u'x') + QStringLiteral(" mot").repeated(200));
        QVERIFY(size.width() < 800);
        QVERIFY(size.height() < 600);
    }
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::MsgBoxTest>(argc, argv);
}
#include "msg_box_test.moc"
