// An operator for the report form: looks at what it shows, answers the dialogs of printers and PDF files,
// closes it.
#pragma once

#include <functional>

#include <QFileDialog>
#include <QStringList>

#include <reports/f_rpt.h>

namespace quardele::reports::test {

class ReportWatcher {
 public:
    /// Calls an action that shows the form modally. Once the form stands there without a box in front, `look`
    /// sees it, and it is closed. Whether it came so far.
    bool Watch(const std::function<void()>& show, const std::function<void(F_RPT&)>& look = {});

    /// Answers dialogs for a PDF file by that file, or declines when it is empty.
    void AnswerPdf(const QString& path) { pdfPath_ = path; }
    /// What the operator does in the dialogs of printers, which he accepts otherwise.
    void OnPrintDialogs(std::function<void(QDialog&)> answer) { answerDialog_ = std::move(answer); }
    /// Those shown so far, by their names.
    [[nodiscard]] const QStringList& PrintDialogs() const { return dialogs_; }
    static void Accept(QDialog& dialog);
    /// How often a PDF file was asked for, and the name proposed last.
    [[nodiscard]] int PdfAsked() const { return pdfAsked_; }
    [[nodiscard]] const QString& ProposedPdf() const { return proposedPdf_; }

    /// The pages that the form shows, each on one line.
    static QStringList Pages(const F_RPT& form);

 private:
    void Glance(bool& seen, const std::function<void(F_RPT&)>& look);
    /// Whether a dialog is in front that was answered.
    [[nodiscard]] bool AnswerDialog(QWidget* front);
    void AnswerFileDialog(QFileDialog& dialog);

    QString pdfPath_;
    QString proposedPdf_;
    std::function<void(QDialog&)> answerDialog_ = Accept;
    QStringList dialogs_;
    int pdfAsked_ = 0;
    int inFront_ = 0;
};

}  // namespace quardele::reports::test
