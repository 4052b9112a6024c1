// Reports on their way to the operator's printer.
#pragma once

#include <memory>

#include <QPrinter>

#include <engine/report.h>

namespace quardele::engine {

[[nodiscard]] bool HasPrinter();
/// The default printer, or the first there is.
[[nodiscard]] std::unique_ptr<QPrinter> MakePrinter(const Document& document);
/// The print dialog ("PrintDialog"); false when the operator declines.
[[nodiscard]] bool ConfirmPrinting(QPrinter& printer, QWidget* window);
/// Throws RuntimeError 482 when the printer fails.
void PrintOn(QPrinter& printer, const Document& document);
/// Asks for a file.
void OfferPdf(const Document& document, QWidget* window);

}  // namespace quardele::engine
