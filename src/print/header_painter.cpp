#include "header_painter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include <QFontMetricsF>

#include <print/wrapped_text.h>

#include "paper_font.h"

namespace quardele::print {
namespace {

/// Distance at least between the places of a line.
constexpr qreal kGap = 120;

/// By Place: left, centre, right.
using Lengths = std::array<qreal, 3>;

QFont FontOf(const HeaderPiece& piece) {
    return PaperFont(piece.points, piece.bold);
}

int HeightOf(const HeaderLine& line) {
    int height = line.pieces.empty() ? print::HeightOf(PaperFont(line.points)) : 0;
    for (const HeaderPiece& piece : line.pieces) {
        height = std::max(height, print::HeightOf(FontOf(piece)));
    }
    return height;
}

int HeightOf(const std::vector<HeaderLine>& lines) {
    return std::accumulate(lines.begin(), lines.end(), 0,
                           [](int height, const HeaderLine& line) { return height + HeightOf(line); });
}

/// Says at the end of a line that there was more below.
void SayThereIsMore(HeaderLine& line) {
    HeaderPiece sign =
        line.pieces.empty() ? HeaderPiece{.text = {}, .points = line.points} : line.pieces.back();
    sign.text = QStringLiteral("…");
    line.pieces.push_back(sign);
}

/// What the pieces of each place need; where they do not fit side by side, each place has an equal part of
/// the width at most.
Lengths WidthsOf(const HeaderLine& line, qreal all) {
    Lengths widths{};
    for (const HeaderPiece& piece : line.pieces) {
        widths[static_cast<std::size_t>(piece.place)] +=
            QFontMetricsF(FontOf(piece)).horizontalAdvance(piece.text);
    }
    const auto places = static_cast<qreal>(
        std::count_if(widths.begin(), widths.end(), [](qreal width) { return width > 0; }));
    const qreal room = all - kGap * (places - 1);
    if (std::accumulate(widths.begin(), widths.end(), 0.0) > room) {
        for (qreal& width : widths) {
            width = std::min(width, room / places);
        }
    }
    return widths;
}

/// The centre gives way to what stands beside it.
Lengths StartsOf(const Lengths& widths, qreal all) {
    const auto& [left, centre, right] = widths;
    const qreal from = left > 0 ? left + kGap : 0;
    const qreal end = right > 0 ? all - right - kGap : all;
    return {0, std::max(from, std::min((all - centre) / 2, end - centre)), all - right};
}

}  // namespace

HeaderPainter::HeaderPainter(QString markup, QSize paper) : markup_(std::move(markup)), paper_(paper) {}

int HeaderPainter::Height() const {
    return HeightOf(Lines(1));
}

std::vector<HeaderLine> HeaderPainter::Lines(int page) const {
    std::vector<HeaderLine> lines = HeaderLines(markup_, page);
    auto end = lines.begin();
    for (int height = 0; end != lines.end(); ++end) {
        height += HeightOf(*end);
        if (height > paper_.height() / 2 && end != lines.begin()) {
            break;
        }
    }
    const bool more =
        std::any_of(end, lines.end(), [](const HeaderLine& line) { return !line.pieces.empty(); });
    lines.erase(end, lines.end());
    if (more) {
        SayThereIsMore(lines.back());
    }
    return lines;
}

void HeaderPainter::Paint(QPainter& painter, int page) const {
    painter.setPen(Qt::black);
    int top = 0;
    for (const HeaderLine& line : Lines(page)) {
        PaintLine(painter, line, top);
        top += HeightOf(line);
    }
}

/// The pieces of a place stand one behind the other.
void HeaderPainter::PaintLine(QPainter& painter, const HeaderLine& line, int top) const {
    constexpr qreal kAscent = 0.8;
    Lengths room = WidthsOf(line, paper_.width());
    Lengths left = StartsOf(room, paper_.width());
    const qreal baseline = top + HeightOf(line) * kAscent;
    for (const HeaderPiece& piece : line.pieces) {
        const auto place = static_cast<std::size_t>(piece.place);
        const QFontMetricsF metrics(FontOf(piece));
        const QString text = OnOneLine(piece.text, metrics, std::ceil(room[place]));
        painter.setFont(FontOf(piece));
        painter.drawText(QPointF(left[place], baseline), text);
        left[place] += metrics.horizontalAdvance(text);
        room[place] -= metrics.horizontalAdvance(text);
    }
}

}  // namespace quardele::print
