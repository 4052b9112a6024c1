#include "output.h"

#include <QPrintDialog>

#include <forms/pdf_offer.h>
#include <forms/printers.h>

namespace quardele::engine {

std::unique_ptr<QPrinter> MakePrinter(const QString& title, const QPageLayout& layout) {
    std::unique_ptr<QPrinter> printer = forms::MakePrinter();
    printer->setDocName(title);
    printer->setPageLayout(layout);
    return printer;
}

bool ConfirmPrinting(QPrinter& printer, int pages, QWidget* window) {
    QPrintDialog dialog(&printer, window);
    dialog.setObjectName(QStringLiteral("PrintDialog"));
    dialog.setMinMax(1, pages);
    return dialog.exec() == QDialog::Accepted;
}

void PrintOn(QPrinter& printer, const Document& document) {
    if (!document.Print(printer) || printer.printerState() == QPrinter::Error) {
        throw forms::PrinterError();
    }
}

void OfferPdf(const Document& document, QWidget* window) {
    const auto write = [&document](QIODevice& out) {
        if (!document.WritePdf(out)) {
            throw forms::PrinterError();
        }
    };
    forms::OfferPdf(document.Title(), write, window);
}

}  // namespace quardele::engine
