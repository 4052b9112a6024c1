// The viewer's tools: pages, zoom, search, printing, by mouse and by keys.
#include <cmath>

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStandardPaths>

#include <support/translation.h>

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
            viewer.ShowPage(4);
            Press(viewer, Qt::Key_F, Qt::ControlModifier);
            auto* box = viewer.findChild<QLineEdit*>(QStringLiteral("CTX_Recherche"));
            QVERIFY(box->hasFocus());
            QTest::keyClicks(box, QStringLiteral("-"));
            QTest::keyClicks(box, QStringLiteral("dd"));
            QTest::keyClick(box, Qt::Key_Backspace);
            QTest::keyClick(box, Qt::Key_Backspace);
            QTest::keyClick(box, Qt::Key_Return);
            QCOMPARE(viewer.CurrentPage(), 4);
            Press(viewer, Qt::Key_F3, Qt::NoModifier);
            QCOMPARE(viewer.CurrentPage(), 4);
            Press(viewer, Qt::Key_F3, Qt::NoModifier);
            QCOMPARE(viewer.CurrentPage(), 5);
            Press(viewer, Qt::Key_F3, Qt::NoModifier);
            Press(viewer, Qt::Key_F3, Qt::NoModifier);
            QVERIFY2(viewer.CurrentPage() == 1, "the first place follows the last");
            box->setText(QStringLiteral("ee-555"));
            Click(viewer, "Cmd_Recherche");
            QCOMPARE(viewer.CurrentPage(), 5);
            Click(viewer, "Cmd_Recherche");
            QCOMPARE(viewer.CurrentPage(), 5);
        });
    }

    void APlaceThatWasFoundIsInView() {
        form_->Place(QStringLiteral(
            "<page size=\"A4\" orientation=\"landscape\"/><reportHeader><section height=\"9000\">"
            "<text width=\"2000\">mot</text><text x=\"13000\" y=\"8500\" width=\"2000\">mot</text>"
            "</section></reportHeader>"));
        Try([](engine::ReportViewer& viewer) {
            Choose(viewer, QStringLiteral("400 %"));
            auto* view = qobject_cast<QAbstractScrollArea*>(viewer.focusProxy());
            QVERIFY(viewer.FindNext(QStringLiteral("mot")));
            const bool firstInView = HasMark(*view);
            QVERIFY(viewer.FindNext(QStringLiteral("mot")));
            const bool secondInView = HasMark(*view);
            QVERIFY(viewer.FindNext(QStringLiteral("mot")));
            QVERIFY(firstInView && secondInView && HasMark(*view));
        });
    }

    void PagesAreShownAsTheyArePrinted() {
        Try([](engine::ReportViewer& viewer) {
            auto* view = qobject_cast<QAbstractScrollArea*>(viewer.focusProxy());
            const QImage shown = view->viewport()->grab().toImage();
            QCOMPARE(shown.pixelColor(shown.width() / 2, shown.height() / 2), QColor(Qt::white));
            QVERIFY2(shown.pixelColor(2, 2) != QColor(Qt::white), "the desk");
            QVERIFY2(Inked(shown), "the text of the first page");
            QVERIFY(!HasMark(*view));
        });
    }

    void ZoomKeepsWhatIsInTheMiddle() {
        Try([](engine::ReportViewer& viewer) {
            auto* view = qobject_cast<QAbstractScrollArea*>(viewer.focusProxy());
            Choose(viewer, QStringLiteral("200 %"));
            viewer.ShowPage(3);
            view->verticalScrollBar()->setValue(view->verticalScrollBar()->value() + 150);
            const double before = MiddleOf(*view);
            const int page = viewer.CurrentPage();
            Press(viewer, Qt::Key_Plus, Qt::ControlModifier);
            QCOMPARE(viewer.CurrentPage(), page);
            QVERIFY2(std::abs(MiddleOf(*view) - before) < 0.005, "elsewhere");
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

    void ItIsToldInTheLanguageOfTheProgram() {
        support::RaiseTranslation(
            {{u"« %1 » ne se trouve pas dans l'état.", u"The report does not hold %1."}},
            form_->MakeTranslations());
        Try([this](engine::ReportViewer& viewer) {
            form_->boxes.TakeTexts();
            viewer.findChild<QLineEdit*>(QStringLiteral("CTX_Recherche"))->setText(QStringLiteral("absent"));
            Click(viewer, "Cmd_Recherche");
            QCOMPARE(form_->boxes.TakeTexts(),
                     std::vector<QString>{QStringLiteral("The report does not hold absent.")});
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
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
            QSKIP("pdftotext is not installed");
        }
        for (const QString& file : {printed, saved}) {
            QProcess reader;
            reader.start(QStringLiteral("pdftotext"), {file, QStringLiteral("-")});
            QVERIFY(reader.waitForFinished());
            QCOMPARE(QString::fromUtf8(reader.readAllStandardOutput()).simplified(),
                     QStringLiteral("AA-111-AA BB-222-BB CC-333-CC DD-444-DD EE-555-EE"));
        }
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
            int tools = 0;
            for (const QWidget* tool :
                 viewer.findChildren<QWidget*>(QRegularExpression(QStringLiteral("^(Cmd|CTX|CTL|BXC)_")))) {
                ++tools;
                QVERIFY2(tool->isVisible(), qPrintable(tool->objectName()));
                const QRect place(tool->mapTo(&viewer, QPoint()), tool->size());
                QVERIFY2(viewer.rect().contains(place), qPrintable(tool->objectName()));
            }
            QCOMPARE(tools, 14);
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
        zoom.setFocus();
        zoom.showPopup();
        zoom.view()->setCurrentIndex(zoom.model()->index(zoom.findText(entry), 0));
        QTest::keyClick(zoom.view(), Qt::Key_Return);
        viewer.focusProxy()->setFocus();
    }
    static void TypePage(engine::ReportViewer& viewer, const QString& text) {
        auto* page = viewer.findChild<QLineEdit*>(QStringLiteral("CTX_Page"));
        page->setFocus();
        page->selectAll();
        QTest::keyClicks(page, text);
        QTest::keyClick(page, Qt::Key_Return);
    }
    static bool Inked(const QImage& image) {
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                if (image.pixelColor(x, y).lightness() < 40) {
                    return true;
                }
            }
        }
        return false;
    }
    /// Whether the blue frame around a place that was found is to be seen.
    static bool HasMark(QAbstractScrollArea& view) {
        const QImage image = view.viewport()->grab().toImage();
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                const QColor color = image.pixelColor(x, y);
                if (color.blue() - color.red() > 100) {
                    return true;
                }
            }
        }
        return false;
    }
    /// What is in the middle of the view, as a part of all pages.
    static double MiddleOf(const QAbstractScrollArea& view) {
        const QScrollBar& bar = *view.verticalScrollBar();
        const double length = view.viewport()->height();
        return (bar.value() + length / 2) / (bar.maximum() + length);
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
