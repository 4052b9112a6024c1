#include "output.h"

#include <QPrintDialog>
#include <QPrinterInfo>

#include <basic/runtime_error.h>
#include <forms/pdf_offer.h>

namespace quardele::engine {

bool HasPrinter() {
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

std::unique_ptr<QPrinter> MakePrinter(const Document& document) {
    QPrinterInfo chosen = QPrinterInfo::defaultPrinter();
    if (chosen.isNull()) {
        chosen = QPrinterInfo::printerInfo(QPrinterInfo::availablePrinterNames().value(0));
    }
    auto printer = std::make_unique<QPrinter>(chosen, QPrinter::HighResolution);
    printer->setDocName(document.Title());
    printer->setPageLayout(document.Layout());
    return printer;
}

bool ConfirmPrinting(QPrinter& printer, QWidget* window) {
    QPrintDialog dialog(&printer, window);
    dialog.setObjectName(QStringLiteral("PrintDialog"));
    return dialog.exec() == QDialog::Accepted;
}

void PrintOn(QPrinter& printer, const Document& document) {
    if (!document.Print(printer) || printer.printerState() == QPrinter::Error) {
        throw basic::RuntimeError(basic::error::kPrinterError);
    }
}

void OfferPdf(const Document& document, QWidget* window) {
    forms::OfferPdf(
        document.Title(), [&document](QIODevice& out) { document.WritePdf(out); }, window);
}

}  // namespace quardele::engine
