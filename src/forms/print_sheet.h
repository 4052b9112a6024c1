// Sheets on their way to the operator's printer.
#pragma once

#include <QPrinter>
#include <QWidget>

#include <print/sheet.h>

namespace quardele::forms {

/// Shows the pages in a preview of the machine's printer. On a machine without one the operator is asked for
/// a PDF file instead ("PrintToPdf"), named after the sheet; a file that cannot be written is told in a box.
/// Returns when the dialog is closed.
void OfferSheet(const print::Sheet& sheet, QWidget* parent);

/// A preview that prints on a printer ("PrintPreview"). Pages that could not be made are told in a box (error
/// 482) behind it.
void ShowPreview(const print::Sheet& sheet, QPrinter& printer, QWidget* parent);

}  // namespace quardele::forms
