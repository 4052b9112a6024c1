// Printing: on a machine without a printer a PDF file is offered.
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>

#include "report_form_fixture.h"

namespace quardele::reports {

using test::ReportForm;

class OutputTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() {
        QVERIFY2(QPrinterInfo::availablePrinterNames().isEmpty(), "there is a printer nevertheless");
    }
    void init() {
        form_ = std::make_unique<ReportForm>();
        form_->Place(QString::fromUtf16(test::kVehicles));
        TheReportRequest().SelectionFormula = QStringLiteral("{TVEH.IMMAT}='CC-333-CC'");
        pdf_ = form_->folder.NativePath(QStringLiteral("fiche.pdf"));
    }
    void cleanup() { form_.reset(); }

    void PrintingOffersAFileNamedAfterTheReportAndUnloads_data() {
        QTest::addColumn<int>("mode");
        QTest::newRow("at once") << 1;
        QTest::newRow("after the setup") << 2;
    }
    void PrintingOffersAFileNamedAfterTheReportAndUnloads() {
        QFETCH(int, mode);
        TheReportRequest().OutputMode = static_cast<std::int16_t>(mode);
        form_->AnswerPdf(pdf_);
        QVERIFY2(!form_->Show(), "the form stays");
        QCOMPARE(form_->PdfAsked(), 1);
        QCOMPARE(form_->ProposedPdf(), QStringLiteral("Essai.pdf"));
        QVERIFY(!forms::IsLoaded<F_RPT>());
        QVERIFY(TheReportRequest().ReportFile.isEmpty());
        QCOMPARE(TheReportRequest().OutputMode, mode);
        QVERIFY(QFile::exists(pdf_));
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
            QSKIP("pdftotext is not installed");
        }
        QProcess reader;
        reader.start(QStringLiteral("pdftotext"), {pdf_, QStringLiteral("-")});
        QVERIFY(reader.waitForFinished());
        QCOMPARE(QString::fromUtf8(reader.readAllStandardOutput()).simplified(),
                 QStringLiteral("Parc Liste Liste suite CC-333-CC"));
    }

    void DecliningTheFileIsNoFailure() {
        TheReportRequest().OutputMode = 1;
        QVERIFY(!form_->Show());
        QCOMPARE(form_->PdfAsked(), 1);
        QVERIFY(!QFile::exists(pdf_));
        QVERIFY(!forms::IsLoaded<F_RPT>());
        QCOMPARE(form_->boxes.Shown().size(), std::size_t{1});
    }

    void AFileThatCannotBeWrittenIsToldAndIsNoFailureOfTheCaller() {
        TheReportRequest().OutputMode = 1;
        form_->AnswerPdf(form_->folder.NativePath(QStringLiteral("absent/fiche.pdf")));
        QVERIFY(!form_->Show());
        QCOMPARE(form_->boxes.Shown().size(), std::size_t{2});
        QCOMPARE(form_->boxes.Shown()[1].icon, QStringLiteral("avertissement"));
        QVERIFY(!forms::IsLoaded<F_RPT>());
        QVERIFY(TheReportRequest().ReportFile.isEmpty());
    }

    void ATitleIsProposedWithoutWhatNoFileNameHolds() {
        form_->PlaceBytes(form_->folder.Xml({})
                              .replace(QStringLiteral("\"Essai\""), QStringLiteral("\"Parc 1/2 : A\""))
                              .toUtf8());
        TheReportRequest().SelectionFormula.clear();
        TheReportRequest().OutputMode = 1;
        QVERIFY(!form_->Show());
        QCOMPARE(form_->ProposedPdf(), QStringLiteral("Parc 1-2 - A.pdf"));
    }

    void AnyOtherModeLeavesTheFormWithAnEmptyViewer() {
        TheReportRequest().OutputMode = 3;
        QVERIFY(form_->Show([](F_RPT& form) {
            QVERIFY(form.CRViewer91->Shown() == nullptr);
            QVERIFY(form.CRViewer91->ReportSource() != nullptr);
            QCOMPARE(form.CRViewer91->CurrentPage(), 0);
        }));
        QCOMPARE(form_->PdfAsked(), 0);
    }

 private:
    std::unique_ptr<ReportForm> form_;
    QString pdf_;
};

}  // namespace quardele::reports

int main(int argc, char* argv[]) {
    return quardele::reports::test::Run<quardele::reports::OutputTest>(argc, argv);
}

#include "output_test.moc"
