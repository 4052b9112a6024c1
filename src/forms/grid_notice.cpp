#include "grid_notice.h"

#include <QAccessible>
#include <QEvent>

#include "palette.h"

namespace quardele::forms {

GridNotice::GridNotice(QWidget* cells) : QLabel(cells) {
    constexpr int kMargin = 5;
    setObjectName(QStringLiteral("GridNotice"));
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    setMargin(kMargin);
    setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    setAutoFillBackground(true);
    QPalette strip = palette();
    strip.setColor(QPalette::Window, colors::kPendingFill);
    strip.setColor(QPalette::WindowText, colors::kInk);
    setPalette(strip);
    setToolTip(QStringLiteral("Cliquez ou appuyez sur Échap pour fermer."));
    hide();
    cells->installEventFilter(this);
}

void GridNotice::Tell(const QString& text) {
    setText(text);
    setAccessibleName(text);
    Place();
    show();
    raise();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void GridNotice::TakeBack() {
    hide();
}

void GridNotice::mousePressEvent(QMouseEvent* /*event*/) {
    TakeBack();
}

bool GridNotice::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        Place();
    }
    return QLabel::eventFilter(watched, event);
}

void GridNotice::Place() {
    const QSize cells = parentWidget()->size();
    const int height = std::min(heightForWidth(cells.width()), cells.height());
    setGeometry(0, cells.height() - height, cells.width(), height);
}

}  // namespace quardele::forms
