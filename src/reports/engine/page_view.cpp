#include "page_view.h"

#include <algorithm>
#include <cmath>

#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QWheelEvent>

#include "paper.h"

namespace quardele::engine {
namespace {

constexpr int kGap = 14;  ///< around the pages
constexpr int kLine = 40;
constexpr QColor kDesk(0x8C, 0x9A, 0xA8);
constexpr QColor kEdge(0x4A, 0x57, 0x65);
constexpr QColor kMark(0x0B, 0x5C, 0x8A);

/// Scrolls a place, told in pixels of a view of some length, to the first third of the view, unless it is
/// there already.
void Reveal(QScrollBar& bar, double from, double to, int length) {
    if (from < 0 || to > length) {
        bar.setValue(bar.value() + qRound(from) - length / 3);
    }
}

}  // namespace

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QStringLiteral("Pages de l'état"));
    verticalScrollBar()->setSingleStep(kLine);
    horizontalScrollBar()->setSingleStep(kLine);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { Scrolled(); });
}

void PageView::SetDocument(std::shared_ptr<const Document> document) {
    document_ = std::move(document);
    mark_.reset();
    Arrange();
    ShowPage(1);
}

void PageView::SetFit(Fit fit) {
    Rescale([&] { fit_ = fit; });
}

void PageView::SetPercent(int percent) {
    Rescale([&] {
        fit_ = Fit::None;
        scale_ = PixelsPerTwip(percent);
    });
}

/// What is in the middle of the view stays there, unless it belongs to another page.
void PageView::Rescale(const std::function<void()>& change) {
    if (document_ == nullptr) {
        change();
        return;
    }
    const QScopedValueRollback<bool> moving(moving_, true);
    const QPointF middle = QRectF(viewport()->rect()).center();
    const QRectF before = PageRect(current_);
    const QPointF place = (middle - before.topLeft()) / scale_;
    change();
    Arrange();
    const QRectF after = PageRect(current_);
    const QPointF moved = after.topLeft() - middle +
                          QPointF(place.x(), std::clamp(place.y(), 0.0, after.height() / scale_)) * scale_;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(moved.x()));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(moved.y()));
}

int PageView::Percent() const {
    return static_cast<int>(std::lround(scale_ / PixelsPerTwip(1)));
}

double PageView::PixelsPerTwip(int percent) const {
    return percent / 100.0 * logicalDpiX() / kTwipsPerInch;
}

QSizeF PageView::PagePixels() const {
    return document_->PageSize() * scale_;
}

/// Computes the scale that fits and how far one can scroll.
void PageView::Arrange() {
    viewport()->update();
    if (document_ == nullptr) {
        verticalScrollBar()->setRange(0, 0);
        horizontalScrollBar()->setRange(0, 0);
        return;
    }
    const QSizeF paper = document_->PageSize();
    const double width = std::max(1, viewport()->width() - 2 * kGap);
    const double height = std::max(1, viewport()->height() - 2 * kGap);
    if (fit_ != Fit::None) {
        scale_ = width / paper.width();
    }
    if (fit_ == Fit::Page) {
        scale_ = std::min(scale_, height / paper.height());
    }
    const QSizeF page = PagePixels();
    const auto whole = static_cast<int>(std::ceil(document_->Pages() * (page.height() + kGap) + kGap));
    verticalScrollBar()->setRange(0, std::max(0, whole - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    horizontalScrollBar()->setRange(
        0, std::max(0, static_cast<int>(std::ceil(page.width())) + 2 * kGap - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
}

QRectF PageView::PageRect(int page) const {
    const QSizeF size = PagePixels();
    const double left = std::max<double>(kGap, (viewport()->width() - size.width()) / 2);
    const double top = kGap + (page - 1) * (size.height() + kGap);
    return QRectF(QPointF(left - horizontalScrollBar()->value(), top - verticalScrollBar()->value()), size);
}

int PageView::PageInTheMiddle() const {
    const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
    const int page = 1 + static_cast<int>((middle - kGap) / (PagePixels().height() + kGap));
    return std::clamp(page, 1, document_->Pages());
}

void PageView::ShowPage(int page) {
    if (document_ == nullptr) {
        return;
    }
    const QScopedValueRollback<bool> moving(moving_, true);
    const int shown = std::clamp(page, 1, document_->Pages());
    const double top = (shown - 1) * (PagePixels().height() + kGap);
    verticalScrollBar()->setValue(static_cast<int>(top));
    SetCurrent(shown);
}

void PageView::ShowOccurrence(const Occurrence& occurrence) {
    mark_ = occurrence;
    const QScopedValueRollback<bool> moving(moving_, true);
    const QPointF corner = PageRect(occurrence.page).topLeft() + occurrence.area.topLeft() * scale_;
    const QRectF place(corner, occurrence.area.size() * scale_);
    Reveal(*horizontalScrollBar(), place.left(), place.right(), viewport()->width());
    Reveal(*verticalScrollBar(), place.top(), place.bottom(), viewport()->height());
    SetCurrent(occurrence.page);
    viewport()->update();
}

void PageView::SetCurrent(int page) {
    if (page != current_) {
        current_ = page;
        emit CurrentPageChanged();
    }
}

void PageView::Scrolled() {
    viewport()->update();
    if (!moving_ && document_ != nullptr) {
        SetCurrent(PageInTheMiddle());
    }
}

void PageView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(viewport());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    painter.fillRect(viewport()->rect(), kDesk);
    const QPointF corner = document_ == nullptr ? QPointF() : CornerOf(document_->Layout());
    for (int page = 1; document_ != nullptr && page <= document_->Pages(); ++page) {
        const QRectF paper = PageRect(page);
        if (!paper.intersects(viewport()->rect())) {
            continue;
        }
        painter.save();
        painter.setPen(kEdge);
        painter.setBrush(Qt::white);
        painter.drawRect(paper);
        painter.setClipRect(paper);
        painter.translate(paper.topLeft());
        painter.scale(scale_, scale_);
        if (mark_ && mark_->page == page) {
            QColor veil = kMark;
            veil.setAlphaF(0.25F);
            painter.setPen(QPen(kMark, 1 / scale_));
            painter.setBrush(veil);
            painter.drawRect(mark_->area.adjusted(-kTwipsPerPoint, 0, kTwipsPerPoint, 0));
        }
        painter.translate(corner);
        document_->Paint(painter, page);
        painter.restore();
    }
}

void PageView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    const int page = current_;
    Arrange();
    if (fit_ != Fit::None) {
        ShowPage(page);
    }
}

void PageView::keyPressEvent(QKeyEvent* event) {
    QScrollBar* const bar = verticalScrollBar();
    switch (event->key()) {
        case Qt::Key_PageUp:
            bar->triggerAction(QAbstractSlider::SliderPageStepSub);
            break;
        case Qt::Key_PageDown:
        case Qt::Key_Space:
            bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
            break;
        case Qt::Key_Home:
            bar->triggerAction(QAbstractSlider::SliderToMinimum);
            break;
        case Qt::Key_End:
            bar->triggerAction(QAbstractSlider::SliderToMaximum);
            break;
        default:
            QAbstractScrollArea::keyPressEvent(event);
            break;
    }
}

void PageView::wheelEvent(QWheelEvent* event) {
    if (event->modifiers().testFlag(Qt::ControlModifier) && event->angleDelta().y() != 0) {
        emit ZoomAsked(event->angleDelta().y() > 0 ? 1 : -1);
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

}  // namespace quardele::engine
