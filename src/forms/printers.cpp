#include <forms/printers.h>

#include <QPrinterInfo>

namespace quardele::forms {
namespace {

std::function<std::unique_ptr<QPrinter>()>& PrinterOfTests() {
    static std::function<std::unique_ptr<QPrinter>()> make;
    return make;
}

}  // namespace

bool HasPrinter() {
    return PrinterOfTests() != nullptr || !QPrinterInfo::availablePrinterNames().isEmpty();
}

std::unique_ptr<QPrinter> MakePrinter() {
    if (PrinterOfTests() != nullptr) {
        return PrinterOfTests()();
    }
    QPrinterInfo chosen = QPrinterInfo::defaultPrinter();
    if (chosen.isNull()) {
        chosen = QPrinterInfo::printerInfo(QPrinterInfo::availablePrinterNames().value(0));
    }
    return std::make_unique<QPrinter>(chosen, QPrinter::HighResolution);
}

basic::RuntimeError PrinterError() {
    return {basic::error::kPrinterError, u"Erreur d'imprimante : les pages n'ont pas pu être faites."};
}

void SetPrinterForTests(std::function<std::unique_ptr<QPrinter>()> make) {
    PrinterOfTests() = std::move(make);
}

}  // namespace quardele::forms
