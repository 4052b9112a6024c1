// Printing on a printer, one that writes its pages into a file.
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QPrintDialog>
#include <QProcess>
#include <QRadioButton>
#include <QSpinBox>
#include <QStandardPaths>

#include <forms/printers.h>
#include <support/translation.h>

#include "report_form_fixture.h"

namespace quardele::reports {

using test::ReportForm;
using test::ReportWatcher;

namespace {

const QString kSetup = QStringLiteral("PrinterSetup");
const QString kPrint = QStringLiteral("PrintDialog");
const QString kPrinterFailure = QStringLiteral("Erreur d'imprimante : les pages n'ont pas pu être faites.");

/// Five pages of A5, one vehicle on each.
const QString kFivePages = QStringLiteral(
    "<page size=\"A5\" orientation=\"landscape\"/><sort><by field=\"{TVEH.IMMAT}\"/></sort><details>"
    "<section height=\"4000\"><field width=\"4000\" height=\"300\" "
    "value=\"Left({TVEH.IMMAT}, 2)\"/></section></details>");

}  // namespace

class PrintingTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() {
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
            QSKIP("pdftotext is not installed");
        }
    }
    void init() {
        form_ = std::make_unique<ReportForm>();
        form_->Place(kFivePages);
        PrintInto(form_->folder.NativePath(QStringLiteral("papier.pdf")));
    }
    void cleanup() {
        forms::SetPrinterForTests({});
        form_.reset();
    }

    void PrintingAtOnceShowsNoDialog() {
        Print(1);
        QCOMPARE(form_->PrintDialogs(), QStringList());
        QCOMPARE(form_->PdfAsked(), 0);
        QCOMPARE(Printed(), QStringList({"AA", "BB", "CC", "DD", "EE"}));
        QCOMPARE(Info("Title"), QStringLiteral("Essai"));
        QCOMPARE(Info("Page size"), QStringLiteral("595 x 420 pts (A5)"));
    }

    void TheSetupComesBeforeThePrintDialog() {
        Print(2);
        QCOMPARE(form_->PrintDialogs(), QStringList({kSetup, kPrint}));
        QCOMPARE(Printed(), QStringList({"AA", "BB", "CC", "DD", "EE"}));
    }

    void DecliningThePrintDialogPrintsNothingAndIsNoFailure() {
        form_->OnPrintDialogs([](QDialog& dialog) { dialog.reject(); });
        Print(2);
        QCOMPARE(form_->PrintDialogs(), QStringList({kSetup, kPrint}));
        QVERIFY(!QFile::exists(path_));
    }

    void AnotherPaperInTheSetupMakesOtherPages() {
        form_->OnPrintDialogs([](QDialog& dialog) {
            if (dialog.objectName() == kSetup) {
                Choose(*dialog.findChild<QComboBox*>(QStringLiteral("pageSizeCombo")), QPageSize::A4);
                dialog.findChild<QRadioButton*>(QStringLiteral("portrait"))->click();
            }
            ReportWatcher::Accept(dialog);
        });
        Print(2);
        QCOMPARE(Printed(), QStringList({"AA BB CC", "DD EE"}));
        QCOMPARE(Info("Page size"), QStringLiteral("595 x 842 pts (A4)"));
    }

    void MarginsOfTheSetupAreThoseOfThePages() {
        form_->OnPrintDialogs([](QDialog& dialog) {
            if (dialog.objectName() == kSetup) {
                Choose(*dialog.findChild<QComboBox*>(QStringLiteral("pageSizeCombo")), QPageSize::A4);
                dialog.findChild<QRadioButton*>(QStringLiteral("portrait"))->click();
                auto* const top = dialog.findChild<QDoubleSpinBox*>(QStringLiteral("topMargin"));
                top->setValue(top->value() * 8);
            }
            ReportWatcher::Accept(dialog);
        });
        Print(2);
        QCOMPARE(Printed(), QStringList({"AA BB", "CC DD", "EE"}));
    }

    void ADeclinedSetupLeavesThePaperAsItIs() {
        form_->OnPrintDialogs([](QDialog& dialog) {
            if (dialog.objectName() == kSetup) {
                Choose(*dialog.findChild<QComboBox*>(QStringLiteral("pageSizeCombo")), QPageSize::A4);
                dialog.reject();
            } else {
                ReportWatcher::Accept(dialog);
            }
        });
        Print(2);
        QCOMPARE(Printed().size(), 5);
    }

    void ThePrintDialogKnowsHowManyPagesThereAreAndPrintsThoseAskedFor() {
        std::pair<int, int> pages;
        form_->OnPrintDialogs([&](QDialog& dialog) {
            if (auto* const print = qobject_cast<QPrintDialog*>(&dialog)) {
                pages = {print->minPage(), print->maxPage()};
                dialog.findChild<QRadioButton*>(QStringLiteral("printRange"))->click();
                dialog.findChild<QSpinBox*>(QStringLiteral("to"))->setValue(3);
                dialog.findChild<QSpinBox*>(QStringLiteral("from"))->setValue(2);
            }
            ReportWatcher::Accept(dialog);
        });
        Print(2);
        QCOMPARE(pages, std::pair(1, 5));
        QCOMPARE(Printed(), QStringList({"BB", "CC"}));
    }

    void APrinterThatFailsIsTheCallersError_data() {
        QTest::addColumn<int>("mode");
        QTest::newRow("at once") << 1;
        QTest::newRow("after the dialogs") << 2;
    }
    void APrinterThatFailsIsTheCallersError() {
        QFETCH(int, mode);
        BreakThePrinter();
        TheReportRequest().OutputMode = static_cast<std::int16_t>(mode);
        QCOMPARE(engine::test::ErrorOf([&] { form_->Show(); }),
                 std::string("482 Erreur d'imprimante : les pages n'ont pas pu être faites."));
        QVERIFY(!forms::IsLoaded<F_RPT>());
        QVERIFY(TheReportRequest().ReportFile.isEmpty());
    }

    void TheViewerPrintsWhatItShows() {
        QVERIFY(form_->Show([&](F_RPT& form) {
            QFile::remove(form_->folder.NativePath(QStringLiteral("DONNEES.MDB")));
            QTest::keyClick(form.CRViewer91->focusProxy(), Qt::Key_P, Qt::ControlModifier);
            QVERIFY2(forms::IsLoaded<F_RPT>(), "the form stays");
        }));
        QCOMPARE(form_->PrintDialogs(), QStringList(kPrint));
        QCOMPARE(Printed(), QStringList({"AA", "BB", "CC", "DD", "EE"}));
    }

    void TheViewerTellsThatThePrinterFails() { PrintFromTheViewerOnABrokenPrinter(); }

    void WhatTheViewerTellsOfAFailureIsNotTranslated() {
        support::RaiseMarksFor({kPrinterFailure}, form_->MakeTranslations());
        PrintFromTheViewerOnABrokenPrinter();
    }

 private:
    void PrintFromTheViewerOnABrokenPrinter() {
        BreakThePrinter();
        QVERIFY(form_->Show([&](F_RPT& form) {
            form_->boxes.TakeTexts();
            QTest::keyClick(form.CRViewer91->focusProxy(), Qt::Key_P, Qt::ControlModifier);
        }));
        QCOMPARE(form_->boxes.TakeTexts(), std::vector<QString>{kPrinterFailure});
    }
    void PrintInto(const QString& path) {
        path_ = path;
        forms::SetPrinterForTests([path] {
            auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
            printer->setOutputFormat(QPrinter::PdfFormat);
            printer->setOutputFileName(path);
            return printer;
        });
    }
    /// Its pages are to go where they cannot, which the dialog would see beforehand.
    void BreakThePrinter() {
        PrintInto(form_->folder.NativePath(QStringLiteral("absent/papier.pdf")));
        form_->OnPrintDialogs([](QDialog& dialog) { dialog.done(QDialog::Accepted); });
    }
    void Print(int mode) {
        TheReportRequest().OutputMode = static_cast<std::int16_t>(mode);
        QVERIFY2(!form_->Show(), "the form stays");
        QVERIFY(!forms::IsLoaded<F_RPT>());
        QVERIFY(TheReportRequest().ReportFile.isEmpty());
        QCOMPARE(form_->boxes.Shown().size(), std::size_t{1});
    }
    static void Choose(QComboBox& papers, QPageSize::PageSizeId paper) {
        const int index = papers.findText(QPageSize::name(paper));
        QVERIFY2(index >= 0, "the dialog does not know the paper");
        papers.setCurrentIndex(index);
    }
    static QString Output(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        return process.waitForFinished() ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
    }
    /// The pages in the file, each on one line.
    [[nodiscard]] QStringList Printed() const {
        QStringList pages = Output(QStringLiteral("pdftotext"), {path_, QStringLiteral("-")}).split(u'\f');
        pages.removeLast();
        for (QString& page : pages) {
            page = page.simplified();
        }
        return pages;
    }
    [[nodiscard]] QString Info(const char* name) const {
        for (const QString& line : Output(QStringLiteral("pdfinfo"), {path_}).split(u'\n')) {
            if (line.startsWith(QLatin1StringView(name) + u':')) {
                return line.section(u':', 1).trimmed();
            }
        }
        return {};
    }

    std::unique_ptr<ReportForm> form_;
    QString path_;
};

}  // namespace quardele::reports

int main(int argc, char* argv[]) {
    return quardele::reports::test::Run<quardele::reports::PrintingTest>(argc, argv);
}

#include "printing_test.moc"
