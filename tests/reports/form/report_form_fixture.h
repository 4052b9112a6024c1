// The report form with a report beside the program and a data file.
#pragma once

#include <functional>

#include <QApplication>
#include <QTest>

#include <forms/runtime.h>
#include <reports/f_rpt.h>
#include <reports/report_request.h>
#include <support/boxes.h>

#include "report_folder.h"
#include "report_watcher.h"

namespace quardele::reports::test {

/// Elements of a report with TVEH: a heading, two formulas, one line a vehicle.
extern const char16_t* const kVehicles;

class ReportForm {
 public:
    ReportForm();
    ~ReportForm();

    engine::test::ReportFolder folder;
    support::BoxAnswerer boxes;

    /// Puts a report beside the program and its name into the request.
    void Place(const QString& elements);
    void PlaceBytes(const QByteArray& bytes);

    /// The Windows path of a table of translations without rows. One lies beside the program.
    [[nodiscard]] basic::Text MakeTranslations() const;

    /// Shows the form as a caller does; once it stands there without a box in front, `look` sees it, and it
    /// is closed. Whether it came so far.
    bool Show(const std::function<void(F_RPT&)>& look = {});
    /// Answers the next dialog for a PDF file by that file, or declines when it is empty.
    void AnswerPdf(const QString& path) { watcher_.AnswerPdf(path); }
    /// What the operator does in the dialogs of printers, which he accepts otherwise.
    void OnPrintDialogs(std::function<void(QDialog&)> answer) { watcher_.OnPrintDialogs(std::move(answer)); }
    /// Those shown so far, by their names.
    [[nodiscard]] const QStringList& PrintDialogs() const { return watcher_.PrintDialogs(); }
    /// How often a PDF file was asked for, and the name proposed last.
    [[nodiscard]] int PdfAsked() const { return watcher_.PdfAsked(); }
    [[nodiscard]] const QString& ProposedPdf() const { return watcher_.ProposedPdf(); }

    /// The pages that the form shows, each on one line.
    static QStringList Pages(const F_RPT& form) { return ReportWatcher::Pages(form); }

 private:
    QString reportPath_;
    ReportWatcher watcher_;
};

template <class Tests>
int Run(int argc, char* argv[]) {
    // Printers of this machine are none of the tests' business: nobody answers there.
    qputenv("CUPS_SERVER", "127.0.0.1:9");
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    forms::CatchEndOfProcess(true);
    Tests tests;
    return QTest::qExec(&tests, argc, argv);
}

}  // namespace quardele::reports::test
