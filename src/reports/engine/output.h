// Reports on their way to the operator's printer.
#pragma once

#include <memory>

#include <QPrinter>

#include <engine/report.h>

namespace quardele::engine {

/// A printer for a print job of a title on a paper.
[[nodiscard]] std::unique_ptr<QPrinter> MakePrinter(const QString& title, const QPageLayout& layout);
/// The print dialog ("PrintDialog") for so many pages; false when the operator declines.
[[nodiscard]] bool ConfirmPrinting(QPrinter& printer, int pages, QWidget* window);
/// Throws RuntimeError 482 when the printer fails or is to print none of the pages.
void PrintOn(QPrinter& printer, const Document& document);
/// Asks for a file. Throws RuntimeError 482 when the pages cannot be made.
void OfferPdf(const Document& document, QWidget* window);

}  // namespace quardele::engine
