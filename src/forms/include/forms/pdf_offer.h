// Pages for an operator whose machine has no printer.
#pragma once

#include <functional>

#include <QIODevice>
#include <QString>
#include <QWidget>

namespace quardele::forms {

/// Asks for a PDF file ("PrintToPdf"), named after the document unless the operator chooses another name, and
/// lets `write` fill it. A file that cannot be written is told in a box. Throws what `write` throws.
void OfferPdf(const QString& document, const std::function<void(QIODevice&)>& write, QWidget* parent);

}  // namespace quardele::forms
