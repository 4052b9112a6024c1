// The preview of a sheet, on a printer that writes its pages into a file.
#include <QFile>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

#include <support/boxes.h>

#include "forms_test.h"
#include "print_sheet.h"

namespace quardele::forms {
namespace {

print::Sheet Vehicles(int rows) {
    print::Sheet sheet;
    sheet.title = QStringLiteral("Liste des véhicules");
    sheet.orientation = QPageLayout::Landscape;
    sheet.columns = {{QStringLiteral("Immat."), 2000, Qt::AlignLeft}};
    sheet.rows = rows;
    sheet.cell = [](int row, int /*column*/) {
        print::SheetCell cell;
        cell.text = QStringLiteral("AB%1CD").arg(row);
        return cell;
    };
    return sheet;
}

}  // namespace

class PrintSheetTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        stage_ = std::make_unique<test::Stage>();
        stage_->Open();
        printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
        printer_->setOutputFormat(QPrinter::PdfFormat);
        printer_->setOutputFileName(folder_->filePath(QStringLiteral("pages.pdf")));
    }
    void cleanup() {
        printer_.reset();
        stage_.reset();
    }

    void ThePreviewShowsThePagesThatArePrinted() {
        int shown = 0;
        Preview(200, [&](QPrintPreviewDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), QStringLiteral("Aperçu avant impression"));
            auto* const pages = dialog.findChild<QPrintPreviewWidget*>();
            shown = pages->pageCount();
            QVERIFY(!QFile::exists(printer_->outputFileName()));
            pages->print();
        });
        QVERIFY(shown > 1);
        QVERIFY(boxes_.Shown().empty());
        QCOMPARE(printer_->docName(), QStringLiteral("Liste des véhicules"));
        QCOMPARE(printer_->pageLayout().orientation(), QPageLayout::Landscape);
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
            QSKIP("pdftotext is not installed");
        }
        const QString text = PrintedText();
        QCOMPARE(text.count(u'\f'), shown);
        for (int row = 0; row < 200; ++row) {
            QCOMPARE(text.count(QStringLiteral("AB%1CD").arg(row)), 1);
        }
    }

    void AClosedPreviewPrintsNothing() {
        Preview(3, [](QPrintPreviewDialog& /*dialog*/) {});
        QVERIFY(!QFile::exists(printer_->outputFileName()));
        QVERIFY(boxes_.Shown().empty());
    }

    void PagesThatCannotBePrintedAreToldBehindThePreview() {
        printer_->setOutputFileName(folder_->filePath(QStringLiteral("absent/pages.pdf")));
        Preview(3, [](QPrintPreviewDialog& dialog) {
            dialog.findChild<QPrintPreviewWidget*>()->print();
            dialog.findChild<QPrintPreviewWidget*>()->print();
        });
        QCOMPARE(boxes_.Shown().size(), std::size_t{1});
        QVERIFY(boxes_.Shown().front().text.startsWith(QStringLiteral("Erreur d'imprimante")));
        QCOMPARE(boxes_.Shown().front().icon, QStringLiteral("avertissement"));
    }

 private:
    void Preview(int rows, const std::function<void(QPrintPreviewDialog&)>& look) {
        bool opened = false;
        QTimer::singleShot(0, stage_.get(), [&] {
            auto* const dialog = stage_->findChild<QPrintPreviewDialog*>(QStringLiteral("PrintPreview"));
            opened = dialog != nullptr && QTest::qWaitForWindowExposed(dialog);
            if (opened) {
                look(*dialog);
                dialog->close();
            }
        });
        ShowPreview(Vehicles(rows), *printer_, stage_.get());
        QVERIFY(opened);
    }

    [[nodiscard]] QString PrintedText() const {
        QProcess process;
        process.start(QStringLiteral("pdftotext"), {printer_->outputFileName(), QStringLiteral("-")});
        return process.waitForFinished() ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<test::Stage> stage_;
    std::unique_ptr<QPrinter> printer_;
    support::BoxAnswerer boxes_;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    // Printers of this machine are none of the tests' business: nobody answers there.
    qputenv("CUPS_SERVER", "127.0.0.1:9");
    return quardele::forms::test::Run<quardele::forms::PrintSheetTest>(argc, argv);
}

#include "print_sheet_test.moc"
