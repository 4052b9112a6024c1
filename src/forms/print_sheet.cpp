#include "print_sheet.h"

#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include <forms/pdf_offer.h>
#include <print/print.h>

namespace quardele::forms {
namespace {

constexpr QSize kPreviewSize(1000, 720);

void Preview(const print::Sheet& sheet, QWidget* parent) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(sheet.title);
    QPageLayout layout = print::DefaultLayout(sheet);
    layout.setPageSize(printer.pageLayout().pageSize());
    layout.setOrientation(sheet.orientation.value_or(printer.pageLayout().orientation()));
    printer.setPageLayout(layout);
    QPrintPreviewDialog dialog(&printer, parent);
    dialog.setObjectName(QStringLiteral("PrintPreview"));
    dialog.setWindowTitle(QStringLiteral("Aperçu avant impression"));
    dialog.resize(kPreviewSize);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested,
                     [&](QPrinter* pages) { print::Print(sheet, *pages); });
    dialog.exec();
}

}  // namespace

void OfferSheet(const print::Sheet& sheet, QWidget* parent) {
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        OfferPdf(
            sheet.title, [&sheet](QIODevice& out) { print::WritePdf(sheet, out); }, parent);
    } else {
        Preview(sheet, parent);
    }
}

}  // namespace quardele::forms
