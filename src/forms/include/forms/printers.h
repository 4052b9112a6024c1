// The printers that the operator's pages go to.
#pragma once

#include <functional>
#include <memory>

#include <QPrinter>

#include <basic/runtime_error.h>

namespace quardele::forms {

/// Whether there is a printer. Without one, pages are offered as a PDF file (forms/pdf_offer.h).
[[nodiscard]] bool HasPrinter();
/// The default printer, or the first there is.
[[nodiscard]] std::unique_ptr<QPrinter> MakePrinter();
/// What is thrown or told when a printer, or a PDF file in its place, takes no pages: 482.
[[nodiscard]] basic::RuntimeError PrinterError();

/// Tests print on printers of their own instead of this machine's, until an empty function is given.
void SetPrinterForTests(std::function<std::unique_ptr<QPrinter>()> make);

}  // namespace quardele::forms
