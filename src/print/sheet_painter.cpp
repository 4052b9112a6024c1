#include "sheet_painter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include <QFontMetricsF>
#include <QGuiApplication>

#include <print/wrapped_text.h>

namespace quardele::print {
namespace {

constexpr int kCellPoints = 9;
constexpr int kFootPoints = 8;
constexpr int kPadding = 60;          ///< between a text and the lines beside it
constexpr int kVerticalPadding = 20;  ///< above and below a text
constexpr int kFootGap = 100;
constexpr int kMostHeadingLines = 4;
constexpr int kRowHeadingWidth = 800;
constexpr int kLineWidth = 8;
constexpr int kBorderWidth = 15;
constexpr int kMarkSize = 160;
constexpr QColor kLineColor(0x80, 0x80, 0x80);
constexpr QColor kShadow(0xE0, 0xE0, 0xE0);

/// A pixel of the scaled painter is a twip. Without hinting, widths are the same at all resolutions.
QFont FontOf(int points, bool bold = false, bool italic = false) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(static_cast<int>(points * kTwipsPerPoint));
    font.setBold(bold);
    font.setItalic(italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

int HeightOf(const QFont& font) {
    return static_cast<int>(std::ceil(QFontMetricsF(font).height()));
}

QRect Inside(const QRect& area) {
    return area.adjusted(kPadding, 0, -kPadding, 0);
}

QRect Centred(const QRect& area, int size) {
    return {area.center().x() - size / 2, area.center().y() - size / 2, size, size};
}

void PaintMark(QPainter& painter, const QRect& area, Mark mark) {
    const QRect box = Centred(area, kMarkSize);
    painter.setPen(QPen(Qt::black, mark == Mark::Barred ? 2 * kLineWidth : kLineWidth));
    painter.setBrush(Qt::NoBrush);
    if (mark == Mark::Barred) {
        painter.drawEllipse(box);
        painter.drawLine(box.center() + QPoint(-kMarkSize, kMarkSize) / 3,
                         box.center() + QPoint(kMarkSize, -kMarkSize) / 3);
        return;
    }
    painter.drawRect(box);
    if (mark == Mark::TickedBox) {
        painter.setPen(QPen(Qt::black, 3 * kLineWidth));
        const std::array tick{box.topLeft() + QPoint(kMarkSize / 5, kMarkSize / 2),
                              box.topLeft() + QPoint(kMarkSize * 2 / 5, kMarkSize * 3 / 4),
                              box.topLeft() + QPoint(kMarkSize * 4 / 5, kMarkSize / 4)};
        painter.drawPolyline(tick.data(), static_cast<int>(tick.size()));
    }
}

QFont FontOf(const HeaderPiece& piece) {
    return FontOf(piece.points, piece.bold);
}

qreal WidthOf(const HeaderPiece& piece) {
    return QFontMetricsF(FontOf(piece)).horizontalAdvance(piece.text);
}

int HeightOf(const HeaderLine& line) {
    int height = line.pieces.empty() ? HeightOf(FontOf(line.points)) : 0;
    for (const HeaderPiece& piece : line.pieces) {
        height = std::max(height, HeightOf(FontOf(piece)));
    }
    return height;
}

}  // namespace

SheetPainter::SheetPainter(const Sheet& sheet, QSize paper)
    : sheet_(sheet), paper_(paper), rowHeadingWidth_(sheet.rowHeading ? kRowHeadingWidth : 0) {
    const int room = paper_.width() - rowHeadingWidth_;
    std::vector<int> widths;
    for (const SheetColumn& column : sheet_.columns) {
        widths.push_back(column.width);
    }
    widths_ = FittedWidths(std::move(widths), room);
    rowHeight_ = HeightOf(FontOf(kCellPoints)) + 2 * kVerticalPadding;
    footHeight_ = HeightOf(FontOf(kFootPoints)) + kFootGap;
    headerHeight_ = HeaderHeight();
    headingHeight_ = HeadingHeight();
    pages_ = Paginate(widths_, sheet_.rows, rowHeight_,
                      {room, paper_.height() - headerHeight_ - headingHeight_ - footHeight_});
}

int SheetPainter::HeaderHeight() const {
    int height = 0;
    for (const HeaderLine& line : HeaderLines(sheet_.header, 1)) {
        height += HeightOf(line);
    }
    return std::min(height, paper_.height() / 2);
}

int SheetPainter::HeadingHeight() const {
    if (!sheet_.headings) {
        return 0;
    }
    const QFontMetricsF metrics(FontOf(kCellPoints, true));
    qsizetype lines = 1;
    for (std::size_t column = 0; column < widths_.size(); ++column) {
        const QStringList wrapped = OnLines(sheet_.columns[column].heading, metrics,
                                            widths_[column] - 2 * kPadding, kMostHeadingLines);
        lines = std::max(lines, wrapped.size());
    }
    return static_cast<int>(std::ceil(metrics.lineSpacing() * static_cast<qreal>(lines))) +
           2 * kVerticalPadding;
}

int SheetPainter::WidthOf(const Page& page) const {
    const auto first = widths_.begin() + page.columns.first;
    return std::accumulate(first, first + page.columns.count, rowHeadingWidth_);
}

void SheetPainter::Paint(QPainter& painter, int page) const {
    const Page& shown = pages_[static_cast<std::size_t>(page - 1)];
    painter.save();
    PaintHeader(painter, page);
    QRect area(0, headerHeight_, WidthOf(shown), headingHeight_);
    if (sheet_.headings) {
        PaintHeadings(painter, shown, area);
    }
    for (int row = 0; row < shown.rows.count; ++row) {
        const QRect line(0, area.bottom() + 1 + row * rowHeight_, area.width(), rowHeight_);
        PaintRow(painter, shown, shown.rows.first + row, line);
    }
    area.setHeight(headingHeight_ + shown.rows.count * rowHeight_);
    PaintLines(painter, shown, area);
    PaintFoot(painter, page);
    painter.restore();
}

// Above and below the cells.

void SheetPainter::PaintHeader(QPainter& painter, int page) const {
    painter.save();
    painter.setClipRect(QRect(0, 0, paper_.width(), headerHeight_));
    painter.setPen(Qt::black);
    int top = 0;
    for (const HeaderLine& line : HeaderLines(sheet_.header, page)) {
        PaintHeaderLine(painter, line, top);
        top += HeightOf(line);
    }
    painter.restore();
}

/// The pieces of a place stand one behind the other; where the places share a line, and it is too narrow for
/// all of them, each has an equal part of it.
void SheetPainter::PaintHeaderLine(QPainter& painter, const HeaderLine& line, int top) const {
    std::array<qreal, 3> needed{};
    for (const HeaderPiece& piece : line.pieces) {
        needed[static_cast<std::size_t>(piece.place)] += print::WidthOf(piece);
    }
    const auto places = std::count_if(needed.begin(), needed.end(), [](qreal width) { return width > 0; });
    const qreal all = paper_.width();
    if (std::accumulate(needed.begin(), needed.end(), 0.0) > all) {
        for (qreal& width : needed) {
            width = std::min(width, all / static_cast<qreal>(places));
        }
    }
    std::array<qreal, 3> left{0, (all - needed[1]) / 2, all - needed[2]};
    const qreal baseline = top + HeightOf(line) * 0.8;
    for (const HeaderPiece& piece : line.pieces) {
        const auto place = static_cast<std::size_t>(piece.place);
        const QFont font = FontOf(piece);
        const QString text = OnOneLine(piece.text, QFontMetricsF(font), std::ceil(needed[place]));
        painter.setFont(font);
        painter.drawText(QPointF(left[place], baseline), text);
        const qreal taken = QFontMetricsF(font).horizontalAdvance(text);
        left[place] += taken;
        needed[place] -= taken;
    }
}

void SheetPainter::PaintFoot(QPainter& painter, int page) const {
    const QFont font = FontOf(kFootPoints);
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

void SheetPainter::PaintHeadings(QPainter& painter, const Page& page, const QRect& area) const {
    if (sheet_.shadows) {
        painter.fillRect(area, kShadow);
    }
    const QFont font = FontOf(kCellPoints, true);
    const QFontMetricsF metrics(font);
    painter.setFont(font);
    painter.setPen(Qt::black);
    int left = rowHeadingWidth_;
    for (int at = page.columns.first; at < page.columns.first + page.columns.count; ++at) {
        const SheetColumn& column = sheet_.columns[static_cast<std::size_t>(at)];
        const int width = widths_[static_cast<std::size_t>(at)];
        const QRect room = Inside(QRect(left, area.top(), width, area.height()));
        const QStringList lines = OnLines(column.heading, metrics, room.width(), kMostHeadingLines);
        const int horizontal = static_cast<int>(column.alignment & Qt::AlignHorizontal_Mask);
        painter.drawText(room, Qt::AlignVCenter | Qt::TextDontClip | horizontal, lines.join(u'\n'));
        left += width;
    }
}

void SheetPainter::PaintRow(QPainter& painter, const Page& page, int row, const QRect& area) const {
    if (sheet_.rowHeading) {
        const QFont font = FontOf(kCellPoints);
        const QRect room = Inside(QRect(0, area.top(), rowHeadingWidth_, area.height()));
        painter.setFont(font);
        painter.setPen(Qt::black);
        painter.drawText(room, Qt::AlignCenter,
                         OnOneLine(sheet_.rowHeading(row), QFontMetricsF(font), room.width()));
    }
    int left = rowHeadingWidth_;
    for (int column = page.columns.first; column < page.columns.first + page.columns.count; ++column) {
        const int width = widths_[static_cast<std::size_t>(column)];
        PaintCell(painter, row, column, QRect(left, area.top(), width, area.height()));
        left += width;
    }
}

void SheetPainter::PaintCell(QPainter& painter, int row, int column, const QRect& area) const {
    const SheetCell cell = sheet_.cell(row, column);
    if (cell.fill) {
        painter.fillRect(area, *cell.fill);
    }
    if (cell.mark != Mark::None) {
        PaintMark(painter, area, cell.mark);
    } else if (!cell.text.isEmpty()) {
        const QFont font = FontOf(kCellPoints, cell.bold, cell.italic);
        const QRect room = Inside(area);
        const auto alignment = sheet_.columns[static_cast<std::size_t>(column)].alignment;
        const int horizontal = static_cast<int>(alignment & Qt::AlignHorizontal_Mask);
        painter.setFont(font);
        painter.setPen(Qt::black);
        painter.drawText(room, Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip | horizontal,
                         OnOneLine(cell.text, QFontMetricsF(font), room.width()));
    }
}

void SheetPainter::PaintLines(QPainter& painter, const Page& page, const QRect& area) const {
    const int right = area.left() + area.width();
    const int bottom = area.top() + area.height();
    const int firstRow = area.top() + headingHeight_;
    if (sheet_.lines) {
        painter.setPen(QPen(kLineColor, kLineWidth));
        for (int row = 1; row < page.rows.count; ++row) {
            painter.drawLine(area.left(), firstRow + row * rowHeight_, right, firstRow + row * rowHeight_);
        }
        int left = rowHeadingWidth_;
        if (left > 0) {
            painter.drawLine(left, area.top(), left, bottom);
        }
        for (int column = 1; column < page.columns.count; ++column) {
            left += widths_[static_cast<std::size_t>(page.columns.first + column - 1)];
            painter.drawLine(left, area.top(), left, bottom);
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
