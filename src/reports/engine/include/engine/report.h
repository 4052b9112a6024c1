// A report: what its file says, what a caller changes in it, and its pages.
#pragma once

#include <memory>

#include <QPageLayout>
#include <QString>
#include <QWidget>

#include <engine/database.h>
#include <engine/document.h>
#include <engine/formula_field.h>
#include <engine/section.h>
#include <engine/sort_fields.h>

class QPrinter;

namespace quardele::engine {

struct ReportDefinition;

class Report {
 public:
    explicit Report(std::unique_ptr<ReportDefinition> definition);
    ~Report();
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    [[nodiscard]] const QString& Title() const;
    /// In the order of the report: report header, page header, group headers, details, group footers from the
    /// inner to the outer, report footer, page footer.
    [[nodiscard]] Collection<Section> Sections() const;
    [[nodiscard]] const Collection<FormulaField>& FormulaFields() const;
    [[nodiscard]] engine::Database& Database();
    /// A condition on records; empty for all.
    [[nodiscard]] const QString& RecordSelectionFormula() const;
    void SetRecordSelectionFormula(const QString& formula);
    [[nodiscard]] SortFields& RecordSortFields();
    /// Paper and margins.
    [[nodiscard]] const QPageLayout& PageLayout() const;
    void SetPageLayout(const QPageLayout& layout);

    /// Reads the records and makes the pages; the document needs neither the report nor its data any more.
    /// Throws RuntimeError: 3075, 3085, 3360, 13 ... for formulas, with their names; 3265 for unknown fields
    /// and formulas; the data engine's; 481 for pictures.
    [[nodiscard]] std::shared_ptr<const Document> Compose() const;

    /// Asks for paper, orientation and margins ("PrinterSetup"): the report's pages from then on. The printer
    /// itself is chosen in the print dialog; the paper set there goes before. Does nothing on a machine
    /// without a printer. The window is the dialog's parent.
    void PrinterSetup(QWidget* window);
    /// Prints, after the print dialog ("PrintDialog") with `prompt`. On a machine without a printer the
    /// operator is asked for a PDF file instead. Declining is no error. Throws what Compose throws, 482 when
    /// the printer fails.
    void PrintOut(bool prompt);

 private:
    bool AdoptPaper(const QPageLayout& chosen);

    std::unique_ptr<ReportDefinition> definition_;
    std::unique_ptr<QPrinter> printer_;  ///< chosen in the setup; null before
};

}  // namespace quardele::engine
