#include <forms/pdf_offer.h>

#include <QBuffer>
#include <QDir>
#include <QFileDialog>
#include <QRegularExpression>

#include <basic/runtime_error.h>
#include <forms/msg_box.h>
#include <forms/strings.h>

#include "save_file.h"

namespace quardele::forms {
namespace {

void SavePdf(const QByteArray& pdf, const QString& path) {
    try {
        SaveFile(path.toStdU16String(), path,
                 [&pdf](std::ostream& out) { out.write(pdf.constData(), pdf.size()); });
    } catch (const basic::RuntimeError& error) {
        MsgBox(ToQString(error.Description()), BoxButtons::Ok, BoxIcon::Exclamation);
    }
}

/// A document's title as the name of a file, without what would name a folder or is refused by Windows.
QString FileNameOf(const QString& document) {
    static const QRegularExpression refused(QStringLiteral("[\\\\/:*?\"<>|]"));
    const QString name = QString(document).replace(refused, QStringLiteral("-")).trimmed();
    return (name.isEmpty() ? QStringLiteral("Impression") : name) + QStringLiteral(".pdf");
}

}  // namespace

void OfferPdf(const QString& document, const std::function<void(QIODevice&)>& write, QWidget* parent) {
    QFileDialog dialog(parent, QStringLiteral("Enregistrer l'impression dans un fichier PDF"),
                       QDir::currentPath());
    dialog.setObjectName(QStringLiteral("PrintToPdf"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(QStringLiteral("Documents PDF (*.pdf)"));
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(FileNameOf(document));
    if (dialog.exec() == QDialog::Rejected) {
        return;
    }
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    write(buffer);
    SavePdf(pdf, dialog.selectedFiles().value(0));
}

}  // namespace quardele::forms
