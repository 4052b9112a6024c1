#include <QDialogButtonBox>
#include <QPushButton>
#include <QSignalSpy>

#include <basic/paths.h>
#include <forms/controls.h>
#include <forms/events.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <forms/twips.h>
#include <support/boxes.h>

#include "forms_test.h"

namespace quardele::forms {

class RuntimeTest : public QObject {
    Q_OBJECT

 private slots:
    void TheVersionComesFromTheApplication() {
        QCOMPARE(App::Major(), 9);
        QCOMPARE(App::Minor(), 5);
        QCOMPARE(App::Revision(), 5);
        QCOMPARE(App::Title(), QStringLiteral("Gestion des véhicules"));
    }

    void ThePathIsAWindowsPathWithoutATrailingBackslash() {
        const QString path = App::Path();
        QVERIFY(!path.endsWith(u'\\'));
        QCOMPARE(basic::NativePath(ToText(path)),
                 std::filesystem::path(QCoreApplication::applicationDirPath().toStdU16String()));
    }

    void TheCommandIsWhatFollowsTheProgramsName() {
        QCOMPARE(Command(), QCoreApplication::arguments().mid(1).join(u' '));
    }

    void TheScreenIsCountedInTwipsAndMayBeGiven() {
        const QSize real = QGuiApplication::primaryScreen()->geometry().size() * kTwipsPerPixel;
        QCOMPARE(QSize(Screen::Width(), Screen::Height()), real);
        Screen::SetSizeForTests(12000, 9000);
        QCOMPARE(QSize(Screen::Width(), Screen::Height()), QSize(12000, 9000));
        Screen::SetSizeForTests(0, 0);
        QCOMPARE(QSize(Screen::Width(), Screen::Height()), real);
    }

    void TwipsRoundToTheNearestPixel() {
        QCOMPARE(ToPixels(8490), 566);
        QCOMPARE(ToPixels(8497), 566);
        QCOMPARE(ToPixels(8498), 567);
        QCOMPARE(ToPixels(-8490), -566);
        QCOMPARE(ToTwips(566), 8490);
    }

    void TheHourglassComesAtOnceAndGoes() {
        QVERIFY(QGuiApplication::overrideCursor() == nullptr);
        Screen::SetMousePointer(11);
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        Screen::SetMousePointer(11);
        QCOMPARE(Screen::MousePointer(), 11);
        Screen::SetMousePointer(0);
        QVERIFY(QGuiApplication::overrideCursor() == nullptr);
    }

    void AHandlersErrorShowsNumberAndDescriptionAndEndsTheProcess() {
        support::BoxAnswerer boxes;
        const int before = CatchEndOfProcess(true);
        RunHandler([] { throw basic::RuntimeError(basic::error::kTypeMismatch); });
        QCOMPARE(CatchEndOfProcess(true), before + 1);
        const QString text = boxes.TakeTexts().front();
        QVERIFY(text.contains(QStringLiteral("13")));
        QVERIFY(text.contains(ToQString(basic::DescriptionOf(basic::error::kTypeMismatch))));
    }

    void TheEndStatementEndsTheHandlerAndLeavesDirectCalls() {
        bool after = false;
        RunHandler([&] {
            EndProcess(0);
            after = true;
        });
        QVERIFY(!after);
        QVERIFY_THROWS_EXCEPTION(ProcessEnded, EndProcess(3));
        try {
            EndProcess(3);
        } catch (const ProcessEnded& end) {
            QCOMPARE(end.exitCode, 3);
        }
    }

    void SignalsReachHandlersByReferenceBehindTheWall() {
        TextBox box;
        support::BoxAnswerer boxes;
        On(&box, &TextBox::KeyDown, this, [](int& key, int) { key = 7; });
        On(&box, &TextBox::Change, this, [] { throw basic::RuntimeError(basic::error::kInvalidCall); });
        int key = 1;
        emit box.KeyDown(key, 0);
        QCOMPARE(key, 7);
        box.SetText(QStringLiteral("x"));
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
    }

    void QtsOwnTextsAreFrench() {
        const QDialogButtonBox box(QDialogButtonBox::Cancel | QDialogButtonBox::Close);
        QCOMPARE(box.button(QDialogButtonBox::Cancel)->text().remove(u'&'), QStringLiteral("Annuler"));
        QCOMPARE(box.button(QDialogButtonBox::Close)->text().remove(u'&'), QStringLiteral("Fermer"));
        QCOMPARE(QLocale().decimalPoint(), QStringLiteral(","));
    }

    void TextIsTwelvePixelsHighAndKeepsTheSizeThatTheProgramSets() {
        QCOMPARE(QFontInfo(QApplication::font()).pixelSize(), 12);
        TextBox box;
        QFont font = box.font();
        font.setPointSizeF(font.pointSizeF() * 1.5);
        box.setFont(font);
        box.ensurePolished();
        QCOMPARE(box.font().pointSizeF(), 13.5);
    }
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::RuntimeTest>(argc, argv);
}
#include "runtime_test.moc"
