#include "window_picture.h"

#include <QPainter>

namespace quardele::demo {

QPixmap PictureWithCaption(QWidget& window) {
    constexpr int kCaptionHeight = 28;
    constexpr int kFrame = 1;
    constexpr int kMargin = 10;
    constexpr QColor kCaption(0xDD, 0xE4, 0xEA);
    constexpr QColor kFrameColor(0x7F, 0x8B, 0x98);

    const QPixmap content = window.grab();
    const qreal ratio = content.devicePixelRatio();
    const QSize size = window.size() + QSize(2 * kFrame, kCaptionHeight + kFrame);
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(kFrameColor);
    QPainter painter(&picture);
    const QRect caption(kFrame, kFrame, window.width(), kCaptionHeight - kFrame);
    painter.fillRect(caption, kCaption);
    QFont bold = window.font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(Qt::black);
    painter.drawText(caption.adjusted(kMargin, 0, -kMargin, 0), Qt::AlignVCenter | Qt::AlignLeft,
                     window.windowTitle());
    painter.drawPixmap(kFrame, kCaptionHeight, content);
    return picture;
}

QPixmap PictureWithWindowInFront(QWidget& behind, QWidget& front) {
    QPixmap picture = behind.grab();
    QPainter painter(&picture);
    painter.drawPixmap(behind.mapFromGlobal(front.mapToGlobal(QPoint(0, 0))), front.grab());
    return picture;
}

}  // namespace quardele::demo
