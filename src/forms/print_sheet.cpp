#include "print_sheet.h"

#include <QPrintPreviewDialog>

#include <forms/msg_box.h>
#include <forms/pdf_offer.h>
#include <forms/printers.h>
#include <forms/strings.h>
#include <print/print.h>

namespace quardele::forms {
namespace {

constexpr QSize kPreviewSize(1000, 720);

void Tell(const basic::RuntimeError& error) {
    MsgBox(ToQString(error.Description()), BoxButtons::Ok, BoxIcon::Exclamation);
}

void AskForPdf(const print::Sheet& sheet, QWidget* parent) {
    const auto write = [&sheet](QIODevice& out) {
        if (!print::WritePdf(sheet, out)) {
            throw PrinterError();
        }
    };
    try {
        OfferPdf(sheet.title, write, parent);
    } catch (const basic::RuntimeError& error) {
        Tell(error);
    }
}

}  // namespace

void ShowPreview(const print::Sheet& sheet, QPrinter& printer, QWidget* parent) {
    printer.setDocName(sheet.title);
    QPageLayout layout = print::DefaultLayout(sheet);
    layout.setPageSize(printer.pageLayout().pageSize());
    layout.setOrientation(sheet.orientation.value_or(printer.pageLayout().orientation()));
    printer.setPageLayout(layout);
    QPrintPreviewDialog dialog(&printer, parent);
    dialog.setObjectName(QStringLiteral("PrintPreview"));
    dialog.setWindowTitle(QStringLiteral("Aperçu avant impression"));
    dialog.resize(kPreviewSize);
    bool failed = false;
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested,
                     [&](QPrinter* pages) { failed = !print::Print(sheet, *pages) || failed; });
    dialog.exec();
    if (failed) {
        Tell(PrinterError());
    }
}

void OfferSheet(const print::Sheet& sheet, QWidget* parent) {
    if (!HasPrinter()) {
        AskForPdf(sheet, parent);
    } else {
        ShowPreview(sheet, *MakePrinter(), parent);
    }
}

}  // namespace quardele::forms
