#include "print_sheet.h"

#include <QBuffer>
#include <QDir>
#include <QFileDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include <basic/runtime_error.h>
#include <forms/msg_box.h>
#include <forms/strings.h>
#include <print/print.h>

#include "save_file.h"

namespace quardele::forms {
namespace {

constexpr QSize kPreviewSize(1000, 720);

void SavePdf(const print::Sheet& sheet, const QString& path) {
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    print::WritePdf(sheet, buffer);
    SaveFile(path.toStdU16String(), path, [&](std::ostream& out) { out.write(pdf.constData(), pdf.size()); });
}

void OfferPdf(const print::Sheet& sheet, QWidget* parent) {
    QFileDialog dialog(parent, QStringLiteral("Enregistrer l'impression dans un fichier PDF"),
                       QDir::currentPath());
    dialog.setObjectName(QStringLiteral("PrintToPdf"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(QStringLiteral("Documents PDF (*.pdf)"));
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile((sheet.title.isEmpty() ? QStringLiteral("Impression") : sheet.title) +
                      QStringLiteral(".pdf"));
    if (dialog.exec() == QDialog::Rejected) {
        return;
    }
    try {
        SavePdf(sheet, dialog.selectedFiles().value(0));
    } catch (const basic::RuntimeError& error) {
        MsgBox(ToQString(error.Description()), BoxButtons::Ok, BoxIcon::Exclamation);
    }
}

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
        OfferPdf(sheet, parent);
    } else {
        Preview(sheet, parent);
    }
}

}  // namespace quardele::forms
