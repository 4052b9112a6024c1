// Printing of sheets and other pages: one painter for preview, printer and PDF.
#pragma once

#include <functional>

#include <QIODevice>
#include <QPagedPaintDevice>
#include <QPainter>

#include <print/sheet.h>

namespace quardele::print {

/// A4 with margins of 10 mm, in the sheet's orientation or else portrait.
[[nodiscard]] QPageLayout DefaultLayout(const Sheet& sheet);

/// Paints pages 1 to `count`, those of the device's page ranges only where it has some, with one unit of the
/// painter to a twip. False when the device cannot be painted on, and when its ranges hold none of the pages:
/// nothing is begun then, since a device that was begun puts out a sheet.
bool PaintPages(QPagedPaintDevice& device, int count, const std::function<void(QPainter&, int page)>& paint);

/// Paints the pages of a sheet, those of the device's page ranges only where it has some. The layout of the
/// device's pages is taken as it is. False when the device cannot be painted on, takes no
/// further page, or wants none of the pages.
bool Print(const Sheet& sheet, QPagedPaintDevice& device);

/// Writes a PDF; false when it could not be made. Whether the device has taken all bytes is the device's to
/// tell.
bool WritePdf(const Sheet& sheet, QIODevice& out);

}  // namespace quardele::print
