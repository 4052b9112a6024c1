#include <engine/report.h>

#include <QApplication>
#include <QPageSetupDialog>
#include <QPrinter>

#include <forms/printers.h>

#include "composer.h"
#include "definition.h"
#include "output.h"

namespace quardele::engine {

Report::Report(std::unique_ptr<ReportDefinition> definition) : definition_(std::move(definition)) {}

Report::~Report() = default;

const QString& Report::Title() const {
    return definition_->title;
}

Collection<Section> Report::Sections() const {
    Collection<Section> all;
    const auto add = [&all](const std::vector<std::shared_ptr<Section>>& sections) {
        for (const std::shared_ptr<Section>& section : sections) {
            all.Add(section);
        }
    };
    add(definition_->reportHeader);
    add(definition_->pageHeader);
    for (const Group& group : definition_->groups) {
        add(group.header);
    }
    add(definition_->details);
    for (auto group = definition_->groups.rbegin(); group != definition_->groups.rend(); ++group) {
        add(group->footer);
    }
    add(definition_->reportFooter);
    add(definition_->pageFooter);
    return all;
}

const Collection<FormulaField>& Report::FormulaFields() const {
    return definition_->formulas;
}

engine::Database& Report::Database() {
    return definition_->database;
}

const QString& Report::RecordSelectionFormula() const {
    return definition_->selection;
}

void Report::SetRecordSelectionFormula(const QString& formula) {
    definition_->selection = formula;
}

SortFields& Report::RecordSortFields() {
    return definition_->sort;
}

const QPageLayout& Report::PageLayout() const {
    return definition_->layout;
}

void Report::SetPageLayout(const QPageLayout& layout) {
    definition_->layout = layout;
}

std::shared_ptr<const Document> Report::Compose() const {
    return std::make_shared<Document>(definition_->title, definition_->layout, ComposeContent(*definition_));
}

void Report::PrinterSetup(QWidget* window) {
    if (!forms::HasPrinter()) {
        return;
    }
    printer_ = MakePrinter(Title(), PageLayout());
    QPageSetupDialog dialog(printer_.get(), window);
    dialog.setObjectName(QStringLiteral("PrinterSetup"));
    if (dialog.exec() == QDialog::Accepted) {
        SetPageLayout(printer_->pageLayout());
    }
}

void Report::PrintOut(bool prompt) {
    std::shared_ptr<const Document> document = Compose();
    QWidget* const window = QApplication::activeWindow();
    if (!forms::HasPrinter()) {
        OfferPdf(*document, window);
        return;
    }
    if (printer_ == nullptr) {
        printer_ = MakePrinter(Title(), PageLayout());
    }
    if (prompt && !ConfirmPrinting(*printer_, document->Pages(), window)) {
        return;
    }
    if (AdoptPaper(printer_->pageLayout())) {
        document = Compose();
    }
    PrintOn(*printer_, *document);
}

/// Paper and orientation; the print dialog asks for no margins, so they stay. True when the paper is another
/// one.
bool Report::AdoptPaper(const QPageLayout& chosen) {
    QPageLayout layout = PageLayout();
    layout.setPageSize(chosen.pageSize(), layout.minimumMargins());
    layout.setOrientation(chosen.orientation());
    const bool changed = !layout.isEquivalentTo(PageLayout());
    SetPageLayout(layout);
    return changed;
}

}  // namespace quardele::engine
