#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include <forms/controls.h>

namespace quardele::forms {

Label::Label(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void Label::SetCaption(const QString& caption) {
    setText(caption);
}

void Label::SetHint(bool hint) {
    hint_ = hint;
    setForegroundRole(hint ? QPalette::PlaceholderText : QPalette::NoRole);
}

bool Label::IsClipped() const {
    return !wordWrap() && pixmap().isNull() &&
           fontMetrics().horizontalAdvance(text()) > contentsRect().width();
}

void Label::paintEvent(QPaintEvent* event) {
    if (!IsClipped()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                          shown, foregroundRole());
}

bool Label::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && IsClipped()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

}  // namespace quardele::forms
