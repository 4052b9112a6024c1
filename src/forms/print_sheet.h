// Sheets on their way to the operator's printer.
#pragma once

#include <QWidget>

#include <print/sheet.h>

namespace quardele::forms {

/// Shows the pages in a preview that prints them ("PrintPreview"). On a machine without a printer the
/// operator is asked for a PDF file instead ("PrintToPdf"), named after the sheet; a file that cannot be
/// written is told in a box. Returns when the dialog is closed.
void OfferSheet(const print::Sheet& sheet, QWidget* parent);

}  // namespace quardele::forms
