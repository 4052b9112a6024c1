#include "grid_header.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include "grid_model.h"
#include "palette.h"

namespace quardele::forms {
namespace {

constexpr int kMargin = 2;
constexpr int kBar = 3;
constexpr int kVerticalPadding = 2;
constexpr int kLeastHeight = 26;
constexpr int kWrap = Qt::TextWordWrap | Qt::AlignVCenter;

}  // namespace

GridHeader::GridHeader(const GridModel& model, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), model_(model) {
    setSectionsClickable(false);
    setHighlightSections(false);
    setMinimumSectionSize(1);
    setObjectName(QStringLiteral("qt_grid_header"));
}

void GridHeader::SetFixedHeight(int pixels) {
    fixedHeight_ = pixels;
    updateGeometry();
}

void GridHeader::SetTextPixels(int pixels) {
    textPixels_ = pixels;
    viewport()->update();
}

void GridHeader::SetBold(bool bold) {
    bold_ = bold;
    viewport()->update();
}

bool GridHeader::IsMarked(int section) const {
    return model_.HeadingLook(section).italic.value_or(false);
}

QFont GridHeader::FontOf(int section) const {
    QFont result = font();
    if (textPixels_ > 0) {
        result.setPixelSize(textPixels_);
    }
    const bool bold = model_.HeadingLook(section).bold.value_or(bold_);
    result.setWeight(bold ? QFont::DemiBold : QFont::Normal);
    result.setItalic(IsMarked(section));
    return result;
}

QRect GridHeader::TextRect(int section, const QRect& rect) const {
    return rect.adjusted(kMargin + 1, 0, -kMargin, IsMarked(section) ? -kBar : 0);
}

QSize GridHeader::sizeHint() const {
    QSize size = QHeaderView::sizeHint();
    if (fixedHeight_ > 0) {
        size.setHeight(fixedHeight_);
        return size;
    }
    int text = QFontMetrics(font()).height();
    for (int section = 0; section < count(); ++section) {
        if (isSectionHidden(section)) {
            continue;
        }
        const QFontMetrics metrics(FontOf(section));
        const QRect room(0, 0, sectionSize(section) - 2 * kMargin - 1, 2 * metrics.lineSpacing());
        const int needed = metrics.boundingRect(room, kWrap, model_.Column(section).heading).height();
        text = std::max(text, std::min(needed, 2 * metrics.lineSpacing()));
    }
    size.setHeight(std::max(text + kVerticalPadding, kLeastHeight));
    return size;
}

void GridHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    painter->fillRect(rect, colors::kHeading);
    painter->setPen(colors::kDecorativeLine);
    painter->drawLine(rect.topRight(), rect.bottomRight());
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    painter->setPen(colors::kInk);
    painter->setFont(FontOf(section));
    const GridColumn& column = model_.Column(section);
    const int horizontal = static_cast<int>(column.Alignment() & Qt::AlignHorizontal_Mask);
    const QRect room = TextRect(section, rect);
    const bool oneWord = !column.heading.contains(u' ') && !column.heading.contains(u'\n');
    const QString text = oneWord
                             ? painter->fontMetrics().elidedText(column.heading, Qt::ElideRight, room.width())
                             : column.heading;
    painter->drawText(room, kWrap | horizontal, text);
    if (IsMarked(section)) {
        painter->fillRect(QRect(rect.left(), rect.bottom() - kBar + 1, rect.width(), kBar), colors::kAccent);
    }
}

void GridHeader::mousePressEvent(QMouseEvent* event) {
    QHeaderView::mousePressEvent(event);
    const bool resizing = cursor().shape() == Qt::SplitHCursor;
    pressed_ = resizing ? -1 : logicalIndexAt(event->position().toPoint());
}

void GridHeader::mouseReleaseEvent(QMouseEvent* event) {
    QHeaderView::mouseReleaseEvent(event);
    const int section = logicalIndexAt(event->position().toPoint());
    if (section >= 0 && section == std::exchange(pressed_, -1)) {
        emit Pressed(section, event->button(), event->position().toPoint());
    }
}

bool GridHeader::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const int section = logicalIndexAt(help->pos());
        if (section >= 0) {
            const QFontMetrics metrics(FontOf(section));
            const QRect room = TextRect(section, QRect(0, 0, sectionSize(section), height()));
            const QString text = model_.Column(section).heading;
            const QRect needed = metrics.boundingRect(room, kWrap, text);
            if (needed.width() > room.width() || needed.height() > room.height()) {
                QToolTip::showText(help->globalPos(), text, this);
                return true;
            }
        }
        QToolTip::hideText();
    }
    return QHeaderView::viewportEvent(event);
}

}  // namespace quardele::forms
