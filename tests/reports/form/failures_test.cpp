// Failures of the report engine: they reach the statement that showed the form.
#include "report_form_fixture.h"

namespace quardele::reports {

using test::ReportForm;

class FailuresTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        form_ = std::make_unique<ReportForm>();
        form_->Place(QString::fromUtf16(test::kVehicles));
    }
    void cleanup() { form_.reset(); }

    void AMissingReportFile() {
        TheReportRequest().ReportFile = QStringLiteral("ABSENT.RPT");
        Expect("53 Fichier introuvable : « " + forms::App::Path().toStdString() + "\\ABSENT.RPT »");
    }

    void ADamagedReportFile() {
        form_->PlaceBytes("<report xmlns=\"urn:quardele:report\" version=\"1\"><details>");
        Expect("321 ");
    }

    void ABadSelectionFormulaAsARegistrationWithAnApostropheMakesIt() {
        TheReportRequest().SelectionFormula = QStringLiteral("{TVEH.IMMAT}='AB'12'");
        Expect("3075 ");
    }

    void ABadFormulaFromTheCaller() {
        TheReportRequest().FormulaName(1) = QStringLiteral("{@SUITE}");
        TheReportRequest().FormulaText(1) = QStringLiteral("'3 - Date d'achat'");
        Expect("3075 ");
    }

    void AFormulaByPositionThatTheReportLacks() {
        TheReportRequest().FormulaText(3) = QStringLiteral("'x'");
        Expect("9 ");
    }

    void ADataFileThatIsNotThere() {
        TheReportRequest().TableLocation(1) = form_->folder.WindowsPath(QStringLiteral("ABSENT.MDB"));
        Expect("3024 ");
    }

    void AnUnknownFieldInTheSelection() {
        TheReportRequest().SelectionFormula = QStringLiteral("{TVEH.ABSENT}='x'");
        Expect("3265 ");
    }

    void AFailureWhilePrinting() {
        TheReportRequest().OutputMode = 1;
        TheReportRequest().SelectionFormula = QStringLiteral("1 +");
        Expect("3075 ");
        QCOMPARE(form_->PdfAsked(), 0);
    }

    void TheNextCallerFindsTheFormAsNew() {
        TheReportRequest().ReportFile = QStringLiteral("ABSENT.RPT");
        TheReportRequest().SelectionFormula = QStringLiteral("1 +");
        Expect("53 ");
        form_->Place(QString::fromUtf16(test::kVehicles));
        QVERIFY(form_->Show([](F_RPT& form) { QCOMPARE(ReportForm::Pages(form).size(), 1); }));
    }

 private:
    /// The error begins so, no other box is shown, the form is gone and the request empty.
    void Expect(const std::string& error) {
        bool seen = false;
        const std::string thrown = engine::test::ErrorOf([&] { seen = form_->Show(); });
        QCOMPARE(thrown.substr(0, error.size()), error);
        QVERIFY2(!seen, "the form stood there without its report");
        QCOMPARE(form_->boxes.Shown().size(), std::size_t{1});
        QVERIFY(!forms::IsLoaded<F_RPT>());
        QVERIFY(TheReportRequest().ReportFile.isEmpty() && TheReportRequest().SelectionFormula.isEmpty());
    }

    std::unique_ptr<ReportForm> form_;
};

}  // namespace quardele::reports

int main(int argc, char* argv[]) {
    return quardele::reports::test::Run<quardele::reports::FailuresTest>(argc, argv);
}

#include "failures_test.moc"
