#include <print/print.h>

#include <vector>

#include <QPainter>
#include <QPdfWriter>

#include "paper_font.h"
#include "sheet_painter.h"

namespace quardele::print {

QPageLayout DefaultLayout(const Sheet& sheet) {
    constexpr qreal kMargin = 10;
    return {QPageSize(QPageSize::A4), sheet.orientation.value_or(QPageLayout::Portrait),
            QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter};
}

bool PaintPages(QPagedPaintDevice& device, int count, const std::function<void(QPainter&, int)>& paint) {
    std::vector<int> wanted;
    for (int page = 1; page <= count; ++page) {
        if (device.pageRanges().isEmpty() || device.pageRanges().contains(page)) {
            wanted.push_back(page);
        }
    }
    QPainter painter;
    if (wanted.empty() || !painter.begin(&device)) {
        return false;
    }
    painter.scale(device.logicalDpiX() / kTwipsPerInch, device.logicalDpiY() / kTwipsPerInch);
    for (const int page : wanted) {
        if (page != wanted.front() && !device.newPage()) {
            return false;
        }
        painter.save();
        paint(painter, page);
        painter.restore();
    }
    return painter.end();
}

bool Print(const Sheet& sheet, QPagedPaintDevice& device) {
    const QSizeF points = device.pageLayout().paintRect(QPageLayout::Point).size();
    const SheetPainter pages(sheet, (points * kTwipsPerPoint).toSize());
    return PaintPages(device, pages.Count(),
                      [&pages](QPainter& painter, int page) { pages.Paint(painter, page); });
}

bool WritePdf(const Sheet& sheet, QIODevice& out) {
    QPdfWriter writer(&out);
    writer.setPageLayout(DefaultLayout(sheet));
    writer.setTitle(sheet.title);
    return out.isWritable() && Print(sheet, writer);
}

}  // namespace quardele::print
