#include "sheet_painter.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QFontMetricsF>

#include <print/cell_font.h>
#include <print/wrapped_text.h>

#include "column_widths.h"
#include "paper_font.h"

namespace quardele::print {
namespace {

constexpr int kFootPoints = 8;
constexpr int kVerticalPadding = 20;  ///< above and below a text
constexpr int kFootGap = 100;
constexpr int kMostHeadingLines = 4;
constexpr int kRowHeadingWidth = 800;
constexpr int kLineWidth = 5;
constexpr int kBorderWidth = 15;
constexpr int kMarkSize = 160;
constexpr int kMarkLineWidth = 8;
constexpr int kCutMarkSize = 120;
constexpr QColor kLineColor(0x80, 0x80, 0x80);
constexpr QColor kShadow(0xE0, 0xE0, 0xE0);

QRect Inside(const QRect& area) {
    return area.adjusted(kCellPadding, 0, -kCellPadding, 0);
}

QRect Centred(const QRect& area, int size) {
    return {area.center().x() - size / 2, area.center().y() - size / 2, size, size};
}

void PaintMark(QPainter& painter, const QRect& area, Mark mark) {
    const QRect box = Centred(area, kMarkSize);
    painter.setPen(QPen(Qt::black, mark == Mark::Barred ? 2 * kMarkLineWidth : kMarkLineWidth));
    painter.setBrush(Qt::NoBrush);
    if (mark == Mark::Barred) {
        painter.drawEllipse(box);
        painter.drawLine(box.center() + QPoint(-kMarkSize, kMarkSize) / 3,
                         box.center() + QPoint(kMarkSize, -kMarkSize) / 3);
        return;
    }
    painter.drawRect(box);
    if (mark == Mark::TickedBox) {
        painter.setPen(QPen(Qt::black, 3 * kMarkLineWidth));
        const std::array tick{box.topLeft() + QPoint(kMarkSize / 5, kMarkSize / 2),
                              box.topLeft() + QPoint(kMarkSize * 2 / 5, kMarkSize * 3 / 4),
                              box.topLeft() + QPoint(kMarkSize * 4 / 5, kMarkSize / 4)};
        painter.drawPolyline(tick.data(), static_cast<int>(tick.size()));
    }
}

/// The sign of a cut text where there is no room for a letter: a corner of the cell in black.
void PaintCutMark(QPainter& painter, const QRect& cell) {
    const QPoint corner(cell.left() + cell.width(), cell.top() + cell.height());
    const std::array mark{corner, corner - QPoint(std::min(kCutMarkSize, cell.width()), 0),
                          corner - QPoint(0, kCutMarkSize)};
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawPolygon(mark.data(), static_cast<int>(mark.size()));
}

/// Lines of a text in the painter's font, none of it being left where there is no room for any.
void PaintLines(QPainter& painter, const QRect& cell, Qt::Alignment alignment, const QString& text,
                const QString& lines) {
    if (lines.isEmpty() && !text.isEmpty()) {
        PaintCutMark(painter, cell);
        return;
    }
    const int horizontal = static_cast<int>(alignment & Qt::AlignHorizontal_Mask);
    painter.setPen(Qt::black);
    painter.drawText(Inside(cell), Qt::AlignVCenter | Qt::TextDontClip | horizontal, lines);
}

void PaintText(QPainter& painter, const QRect& cell, Qt::Alignment alignment, const QString& text) {
    PaintLines(painter, cell, alignment, text,
               OnOneLine(text, QFontMetricsF(painter.font()), Inside(cell).width()));
}

}  // namespace

SheetPainter::SheetPainter(const Sheet& sheet, QSize paper)
    : sheet_(sheet),
      paper_(paper),
      header_(sheet.header, paper),
      rowHeadingWidth_(sheet.rowHeading ? kRowHeadingWidth : 0) {
    const int room = paper_.width() - rowHeadingWidth_;
    widths_ = WidthsOnPaper(sheet_, room);
    rowHeight_ = HeightOf(CellFont()) + 2 * kVerticalPadding;
    footHeight_ = HeightOf(PaperFont(kFootPoints)) + kFootGap;
    headerHeight_ = header_.Height();
    headingHeight_ = HeadingHeight();
    pages_ = Paginate(widths_, sheet_.rows, rowHeight_,
                      {room, paper_.height() - headerHeight_ - headingHeight_ - footHeight_});
}

int SheetPainter::HeadingHeight() const {
    if (!sheet_.headings) {
        return 0;
    }
    const QFontMetricsF metrics(CellFont(true));
    qsizetype lines = 1;
    for (std::size_t column = 0; column < widths_.size(); ++column) {
        const QStringList wrapped = OnLines(sheet_.columns[column].heading, metrics,
                                            widths_[column] - 2 * kCellPadding, kMostHeadingLines);
        lines = std::max(lines, wrapped.size());
    }
    return static_cast<int>(std::ceil(metrics.lineSpacing() * static_cast<qreal>(lines))) +
           2 * kVerticalPadding;
}

std::vector<SheetPainter::PlacedColumn> SheetPainter::Placed(const Page& page) const {
    std::vector<PlacedColumn> columns;
    int left = rowHeadingWidth_;
    const auto add = [&](int column) {
        const int width = widths_[static_cast<std::size_t>(column)];
        columns.push_back({.column = column, .left = left, .width = width});
        left += width;
    };
    if (page.firstColumnToo) {
        add(0);
    }
    for (int column = page.columns.first; column < page.columns.first + page.columns.count; ++column) {
        add(column);
    }
    return columns;
}

void SheetPainter::Paint(QPainter& painter, int page) const {
    const Page& shown = pages_[static_cast<std::size_t>(page - 1)];
    const std::vector<PlacedColumn> columns = Placed(shown);
    const int width = columns.empty() ? rowHeadingWidth_ : columns.back().left + columns.back().width;
    painter.save();
    header_.Paint(painter, page);
    QRect area(0, headerHeight_, width, headingHeight_);
    if (sheet_.headings) {
        PaintHeadings(painter, columns, area);
    }
    for (int row = 0; row < shown.rows.count; ++row) {
        const QRect line(0, area.bottom() + 1 + row * rowHeight_, area.width(), rowHeight_);
        PaintRow(painter, columns, shown.rows.first + row, line);
    }
    area.setHeight(headingHeight_ + shown.rows.count * rowHeight_);
    PaintGrid(painter, columns, shown.rows.count, area);
    PaintFoot(painter, page);
    painter.restore();
}

void SheetPainter::PaintFoot(QPainter& painter, int page) const {
    const QFont font = PaperFont(kFootPoints);
    const QRect area(0, paper_.height() - HeightOf(font), paper_.width(), HeightOf(font));
    const QString number =
        ShowsPageNumber(sheet_.header) ? QString() : QStringLiteral("Page %1 / %2").arg(page).arg(Count());
    const QFontMetricsF metrics(font);
    const qreal room = area.width() - metrics.horizontalAdvance(number) - kFootGap;
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter, OnOneLine(sheet_.title, metrics, room));
    painter.drawText(area, Qt::AlignRight | Qt::AlignVCenter, number);
}

// Cells.

void SheetPainter::PaintHeadings(QPainter& painter, const std::vector<PlacedColumn>& columns,
                                 const QRect& area) const {
    if (sheet_.shadows) {
        painter.fillRect(area, kShadow);
    }
    painter.setFont(CellFont(true));
    const QFontMetricsF metrics(painter.font());
    for (const PlacedColumn& placed : columns) {
        const SheetColumn& column = sheet_.columns[static_cast<std::size_t>(placed.column)];
        const QRect cell(placed.left, area.top(), placed.width, area.height());
        const QStringList lines = OnLines(column.heading, metrics, Inside(cell).width(), kMostHeadingLines);
        PaintLines(painter, cell, column.alignment, column.heading, lines.join(u'\n'));
    }
}

void SheetPainter::PaintRow(QPainter& painter, const std::vector<PlacedColumn>& columns, int row,
                            const QRect& area) const {
    if (sheet_.rowHeading) {
        painter.setFont(CellFont());
        PaintText(painter, QRect(0, area.top(), rowHeadingWidth_, area.height()), Qt::AlignHCenter,
                  sheet_.rowHeading(row));
    }
    for (const PlacedColumn& placed : columns) {
        PaintCell(painter, row, placed.column, QRect(placed.left, area.top(), placed.width, area.height()));
    }
}

void SheetPainter::PaintCell(QPainter& painter, int row, int column, const QRect& area) const {
    const SheetCell cell = sheet_.cell(row, column);
    if (cell.fill) {
        painter.fillRect(area, *cell.fill);
    }
    if (cell.mark != Mark::None) {
        PaintMark(painter, area, cell.mark);
        return;
    }
    painter.setFont(CellFont(cell.bold, cell.italic));
    PaintText(painter, area, sheet_.columns[static_cast<std::size_t>(column)].alignment, cell.text);
}

void SheetPainter::PaintGrid(QPainter& painter, const std::vector<PlacedColumn>& columns, int rows,
                             const QRect& area) const {
    const int right = area.left() + area.width();
    const int bottom = area.top() + area.height();
    const int firstRow = area.top() + headingHeight_;
    if (sheet_.lines) {
        painter.setPen(QPen(kLineColor, kLineWidth));
        for (int row = 1; row < rows; ++row) {
            painter.drawLine(area.left(), firstRow + row * rowHeight_, right, firstRow + row * rowHeight_);
        }
        for (const PlacedColumn& placed : columns) {
            if (placed.left > 0) {
                painter.drawLine(placed.left, area.top(), placed.left, bottom);
            }
        }
    }
    painter.setPen(QPen(Qt::black, kBorderWidth));
    if (sheet_.headings) {
        painter.drawLine(area.left(), firstRow, right, firstRow);
    }
    if (sheet_.border) {
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(area.left(), area.top(), area.width(), area.height());
    }
}

}  // namespace quardele::print
