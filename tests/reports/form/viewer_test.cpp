// The viewer's tools: pages, zoom, search, printing, by mouse and by keys.
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

#include "report_form_fixture.h"

namespace quardele::reports {

using test::ReportForm;

class ViewerTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        form_ = std::make_unique<ReportForm>();
        form_->Place(QStringLiteral(
            "<page size=\"A5\" orientation=\"landscape\"/><sort><by field=\"{TVEH.IMMAT}\"/></sort><details>"
            "<section height=\"4000\"><field width=\"4000\" height=\"300\" "
            "value=\"{TVEH.IMMAT}\"/></section></details>"));
    }
    void cleanup() { form_.reset(); }

    void PagesAreTurnedByButtons() {
        Try([](engine::ReportViewer& viewer) {
            QCOMPARE(viewer.Shown()->Pages(), 5);
            QCOMPARE(Said(viewer), QStringLiteral("1 / 5"));
            QVERIFY(!ButtonOf(viewer, "Cmd_Premiere").isEnabled() &&
                    !ButtonOf(viewer, "Cmd_Precedente").isEnabled());
            Click(viewer, "Cmd_Suivante");
            QCOMPARE(Said(viewer), QStringLiteral("2 / 5"));
            Click(viewer, "Cmd_Derniere");
            QCOMPARE(Said(viewer), QStringLiteral("5 / 5"));
            QVERIFY(!ButtonOf(viewer, "Cmd_Suivante").isEnabled() &&
                    !ButtonOf(viewer, "Cmd_Derniere").isEnabled());
            Click(viewer, "Cmd_Precedente");
            QCOMPARE(Said(viewer), QStringLiteral("4 / 5"));
            Click(viewer, "Cmd_Premiere");
            QCOMPARE(Said(viewer), QStringLiteral("1 / 5"));
        });
    }

    void PagesAreTurnedByKeys() {
        Try([](engine::ReportViewer& viewer) {
            Press(viewer, Qt::Key_PageDown, Qt::ControlModifier);
            QCOMPARE(viewer.CurrentPage(), 2);
            Press(viewer, Qt::Key_End, Qt::ControlModifier);
            QCOMPARE(viewer.CurrentPage(), 5);
            Press(viewer, Qt::Key_PageUp, Qt::ControlModifier);
            QCOMPARE(viewer.CurrentPage(), 4);
            Press(viewer, Qt::Key_Home, Qt::ControlModifier);
            QCOMPARE(viewer.CurrentPage(), 1);
            QVERIFY(viewer.focusProxy()->hasFocus());
            Press(viewer, Qt::Key_End, Qt::NoModifier);
            QCOMPARE(viewer.CurrentPage(), 5);
            Press(viewer, Qt::Key_Home, Qt::NoModifier);
            QCOMPARE(viewer.CurrentPage(), 1);
        });
    }

    void APageIsReachedByItsNumber() {
        Try([](engine::ReportViewer& viewer) {
            TypePage(viewer, QStringLiteral("3"));
            QCOMPARE(Said(viewer), QStringLiteral("3 / 5"));
            TypePage(viewer, QStringLiteral("99"));
            QCOMPARE(Said(viewer), QStringLiteral("5 / 5"));
            TypePage(viewer, QStringLiteral("x"));
            QCOMPARE(Said(viewer), QStringLiteral("5 / 5"));
        });
    }

    void TheWidthOfAPageFitsAtFirst() {
        Try([](engine::ReportViewer& viewer) {
            auto* view = qobject_cast<QAbstractScrollArea*>(viewer.focusProxy());
            QCOMPARE(viewer.ZoomLevel(), 1);
            QCOMPARE(view->horizontalScrollBar()->maximum(), 0);
            QCOMPARE(ZoomBox(viewer).currentText(), QStringLiteral("Largeur de page"));
        });
    }

    void ZoomIsChangedByButtonsKeysAndTheList() {
        Try([](engine::ReportViewer& viewer) {
            auto* view = qobject_cast<QAbstractScrollArea*>(viewer.focusProxy());
            Choose(viewer, QStringLiteral("100 %"));
            QCOMPARE(viewer.ZoomLevel(), 100);
            Click(viewer, "Cmd_ZoomPlus");
            QCOMPARE(viewer.ZoomLevel(), 125);
            Press(viewer, Qt::Key_Plus, Qt::ControlModifier);
            Press(viewer, Qt::Key_Plus, Qt::ControlModifier);
            QCOMPARE(viewer.ZoomLevel(), 200);
            QVERIFY(view->horizontalScrollBar()->maximum() > 0);
            Press(viewer, Qt::Key_Minus, Qt::ControlModifier);
            Click(viewer, "Cmd_ZoomMoins");
            QCOMPARE(viewer.ZoomLevel(), 125);
            Choose(viewer, QStringLiteral("Page entière"));
            QCOMPARE(viewer.ZoomLevel(), 2);
            Press(viewer, Qt::Key_0, Qt::ControlModifier);
            QCOMPARE(viewer.ZoomLevel(), 1);
        });
    }

    void ZoomKeepsThePage() {
        Try([](engine::ReportViewer& viewer) {
            viewer.ShowPage(3);
            Choose(viewer, QStringLiteral("200 %"));
            QCOMPARE(viewer.CurrentPage(), 3);
            Choose(viewer, QStringLiteral("50 %"));
            QCOMPARE(viewer.CurrentPage(), 3);
        });
    }

    void AZoomThatThereIsNotIsRefused() {
        Try([](engine::ReportViewer& viewer) {
            for (const int level : {0, 3, 24, 401, -1}) {
                QCOMPARE(engine::test::ErrorOf([&] { viewer.Zoom(level); }).substr(0, 2), std::string("5 "));
            }
            viewer.Zoom(110);
            QCOMPARE(viewer.ZoomLevel(), 110);
        });
    }

    void ATextIsSoughtFromPlaceToPlace() {
        Try([](engine::ReportViewer& viewer) {
            Press(viewer, Qt::Key_F, Qt::ControlModifier);
            auto* box = viewer.findChild<QLineEdit*>(QStringLiteral("CTX_Recherche"));
            QVERIFY(box->hasFocus());
            QTest::keyClicks(box, QStringLiteral("-"));
            QTest::keyClicks(box, QStringLiteral("dd"));
            QTest::keyClick(box, Qt::Key_Backspace);
            QTest::keyClick(box, Qt::Key_Backspace);
            QTest::keyClick(box, Qt::Key_Return);
            QCOMPARE(viewer.CurrentPage(), 1);
            Press(viewer, Qt::Key_F3, Qt::NoModifier);
            QCOMPARE(viewer.CurrentPage(), 1);
            Press(viewer, Qt::Key_F3, Qt::NoModifier);
            QCOMPARE(viewer.CurrentPage(), 2);
            box->setText(QStringLiteral("ee-555"));
            Click(viewer, "Cmd_Recherche");
            QCOMPARE(viewer.CurrentPage(), 5);
            Click(viewer, "Cmd_Recherche");
            QCOMPARE(viewer.CurrentPage(), 5);
        });
    }

    void ATextThatIsNowhereIsTold() {
        Try([this](engine::ReportViewer& viewer) {
            form_->boxes.TakeTexts();
            viewer.findChild<QLineEdit*>(QStringLiteral("CTX_Recherche"))->setText(QStringLiteral("absent"));
            Click(viewer, "Cmd_Recherche");
            QCOMPARE(form_->boxes.TakeTexts(),
                     std::vector<QString>{QStringLiteral("« absent » ne se trouve pas dans l'état.")});
        });
    }

    void WhatIsShownIsPrintedAndSaved() {
        const QString printed = form_->folder.NativePath(QStringLiteral("imprime.pdf"));
        const QString saved = form_->folder.NativePath(QStringLiteral("enregistre.pdf"));
        Try([&](engine::ReportViewer& viewer) {
            QFile::remove(form_->folder.NativePath(QStringLiteral("DONNEES.MDB")));
            form_->AnswerPdf(saved);
            Press(viewer, Qt::Key_S, Qt::ControlModifier);
            form_->AnswerPdf(printed);
            Click(viewer, "Cmd_Imprimer");
        });
        QCOMPARE(form_->PdfAsked(), 2);
        QVERIFY(QFile::exists(printed) && QFile::exists(saved));
    }

    void EveryToolHasANameAndATipWithItsKey() {
        Try([](engine::ReportViewer& viewer) {
            for (const QPushButton* button : viewer.findChildren<QPushButton*>()) {
                QVERIFY2(!button->accessibleName().isEmpty(), qPrintable(button->objectName()));
                QVERIFY2(button->toolTip().contains(u'\n'), qPrintable(button->objectName()));
                QVERIFY2(!button->icon().pixmap(20).isNull(), qPrintable(button->objectName()));
            }
        });
    }

    void TheToolsFitIntoTheForm() {
        Try([](engine::ReportViewer& viewer) {
            for (const QWidget* tool : viewer.findChildren<QWidget*>()) {
                if (!tool->objectName().startsWith(QStringLiteral("C")) || !tool->isVisible()) {
                    continue;
                }
                const QRect place(tool->mapTo(&viewer, QPoint()), tool->size());
                QVERIFY2(viewer.rect().contains(place), qPrintable(tool->objectName()));
            }
        });
    }

 private:
    void Try(const std::function<void(engine::ReportViewer&)>& look) {
        QVERIFY(form_->Show([&](F_RPT& form) { look(*form.CRViewer91); }));
    }
    static QPushButton& ButtonOf(engine::ReportViewer& viewer, const char* name) {
        return *viewer.findChild<QPushButton*>(QLatin1StringView(name));
    }
    static QComboBox& ZoomBox(engine::ReportViewer& viewer) {
        return *viewer.findChild<QComboBox*>(QStringLiteral("BXC_Zoom"));
    }
    static void Click(engine::ReportViewer& viewer, const char* name) {
        QTest::mouseClick(&ButtonOf(viewer, name), Qt::LeftButton);
    }
    static void Press(engine::ReportViewer& viewer, Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(viewer.focusProxy(), key, modifiers);
    }
    static void Choose(engine::ReportViewer& viewer, const QString& entry) {
        QComboBox& zoom = ZoomBox(viewer);
        zoom.setCurrentIndex(zoom.findText(entry));
        emit zoom.activated(zoom.currentIndex());
    }
    static void TypePage(engine::ReportViewer& viewer, const QString& text) {
        auto* page = viewer.findChild<QLineEdit*>(QStringLiteral("CTX_Page"));
        page->setFocus();
        page->selectAll();
        QTest::keyClicks(page, text);
        QTest::keyClick(page, Qt::Key_Return);
    }
    /// "n / m" as the bar has it.
    static QString Said(engine::ReportViewer& viewer) {
        return viewer.findChild<QLineEdit*>(QStringLiteral("CTX_Page"))->text() + u' ' +
               viewer.findChild<QLabel*>(QStringLiteral("CTL_Pages"))->text();
    }

    std::unique_ptr<ReportForm> form_;
};

}  // namespace quardele::reports

int main(int argc, char* argv[]) {
    return quardele::reports::test::Run<quardele::reports::ViewerTest>(argc, argv);
}

#include "viewer_test.moc"
