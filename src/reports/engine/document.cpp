#include <engine/document.h>

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QPdfWriter>

#include <print/print.h>

#include "content.h"
#include "paper.h"

namespace quardele::engine {
namespace {

class PiecePainter {
 public:
    PiecePainter(QPainter& painter, const Content& content) : painter_(painter), content_(content) {}

    void Paint(const Piece& piece) {
        std::visit([&](const auto& mark) { PaintMark(piece.area, mark); }, piece.mark);
    }

 private:
    void PaintMark(const QRectF& area, const TextMark& text) {
        const QFont& font = content_.fonts[text.font];
        if (font_ != text.font) {
            painter_.setFont(font);
            ascent_ = QFontMetricsF(font).ascent();
            font_ = text.font;
        }
        painter_.setPen(text.color);
        painter_.drawText(QPointF(area.left(), area.top() + ascent_), text.text);
    }

    void PaintMark(const QRectF& area, const LineMark& line) {
        painter_.setPen(PenOf(line.color, line.thickness));
        painter_.drawLine(area.topLeft(), area.bottomRight());
    }

    void PaintMark(const QRectF& area, const BoxMark& box) {
        painter_.setPen(PenOf(box.color, box.thickness));
        painter_.setBrush(box.fill.isValid() ? QBrush(box.fill) : QBrush(Qt::NoBrush));
        if (box.radius > 0) {
            painter_.drawRoundedRect(area, box.radius, box.radius);
        } else {
            painter_.drawRect(area);
        }
    }

    void PaintMark(const QRectF& area, const PictureMark& picture) {
        painter_.drawImage(area, content_.pictures[picture.picture]);
    }

    /// A pen of width 0 would draw a hairline.
    static QPen PenOf(const QColor& color, int thickness) {
        return thickness > 0 ? QPen(color, thickness, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin)
                             : QPen(Qt::NoPen);
    }

    QPainter& painter_;
    const Content& content_;
    std::size_t font_ = static_cast<std::size_t>(-1);
    qreal ascent_ = 0;
};

/// Pieces of text from the top down, then from left to right.
std::vector<const Piece*> InReadingOrder(const Pieces& pieces) {
    std::vector<const Piece*> texts;
    for (const Piece& piece : pieces) {
        if (std::holds_alternative<TextMark>(piece.mark)) {
            texts.push_back(&piece);
        }
    }
    std::stable_sort(texts.begin(), texts.end(), [](const Piece* left, const Piece* right) {
        return std::pair(left->area.top(), left->area.left()) <
               std::pair(right->area.top(), right->area.left());
    });
    return texts;
}

}  // namespace

Document::Document(QString title, const QPageLayout& layout, std::unique_ptr<Content> content)
    : title_(std::move(title)), layout_(layout), content_(std::move(content)) {}

Document::~Document() = default;

int Document::Pages() const {
    return static_cast<int>(content_->pages.size());
}

QSizeF Document::PageSize() const {
    return SizeOf(layout_);
}

void Document::Paint(QPainter& painter, int page) const {
    painter.save();
    PiecePainter pieces(painter, *content_);
    for (const Piece& piece : content_->pages[static_cast<std::size_t>(page) - 1]) {
        pieces.Paint(piece);
    }
    painter.restore();
}

std::vector<Occurrence> Document::Find(const QString& text) const {
    std::vector<Occurrence> found;
    const QPointF corner = CornerOf(layout_);
    for (int page = 1; page <= Pages() && !text.isEmpty(); ++page) {
        for (const Piece* piece : InReadingOrder(content_->pages[static_cast<std::size_t>(page) - 1])) {
            const auto& mark = std::get<TextMark>(piece->mark);
            const QFontMetricsF metrics(content_->fonts[mark.font]);
            for (qsizetype at = mark.text.indexOf(text, 0, Qt::CaseInsensitive); at >= 0;
                 at = mark.text.indexOf(text, at + text.size(), Qt::CaseInsensitive)) {
                QRectF area = piece->area.translated(corner);
                area.setLeft(area.left() + metrics.horizontalAdvance(mark.text.first(at)));
                area.setWidth(metrics.horizontalAdvance(mark.text.sliced(at, text.size())));
                found.push_back({page, area});
            }
        }
    }
    return found;
}

QString Document::TextOf(int page) const {
    QString text;
    const Piece* before = nullptr;
    for (const Piece* piece : InReadingOrder(content_->pages[static_cast<std::size_t>(page) - 1])) {
        if (before != nullptr) {
            text += before->area.top() == piece->area.top() ? u'\t' : u'\n';
        }
        text += std::get<TextMark>(piece->mark).text;
        before = piece;
    }
    return text;
}

/// Pages are placed on the paper, whatever margins a device has of its own.
bool Document::Print(QPagedPaintDevice& device) const {
    QPageLayout whole = layout_;
    whole.setMode(QPageLayout::FullPageMode);
    device.setPageLayout(whole);
    const QPointF corner = CornerOf(layout_);
    return print::PaintPages(device, Pages(), [&](QPainter& painter, int page) {
        painter.translate(corner);
        Paint(painter, page);
    });
}

bool Document::WritePdf(QIODevice& out) const {
    QPdfWriter writer(&out);
    writer.setTitle(title_);
    return out.isWritable() && Print(writer);
}

}  // namespace quardele::engine
