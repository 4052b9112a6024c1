#include <algorithm>

#include <QPainter>

#include <forms/control_font.h>
#include <forms/controls.h>

#include "palette.h"
#include "style.h"

namespace quardele::forms {
namespace {

constexpr int kShadow = 2;
constexpr int kTitleBand = 24;
constexpr int kTitleIndent = 8;
/// The largest text that the band holds. It keeps its height on every screen: blocks of buttons below it keep
/// their place.
constexpr double kMostTitlePoints = 12;

}  // namespace

Frame::Frame(QWidget* parent) : QFrame(parent) {}

void Frame::SetCaption(const QString& caption) {
    caption_ = caption;
    setAccessibleName(caption);
    update();
}

void Frame::SetFloating(bool floating) {
    floating_ = floating;
    update();
}

void Frame::SetBar(bool bar) {
    bar_ = bar;
    update();
}

void Frame::ZOrder(int position) {
    if (position == 0) {
        raise();
    } else {
        lower();
    }
}

void Frame::showEvent(QShowEvent* event) {
    QFrame::showEvent(event);
    if (floating_) {
        raise();
    }
}

void Frame::paintEvent(QPaintEvent* event) {
    if (floating_) {
        QPainter painter(this);
        PaintFloating(painter);
        return;
    }
    if (bar_) {
        QPainter(this).fillRect(rect(), colors::kHeading);
    }
    QFrame::paintEvent(event);
}

void Frame::PaintFloating(QPainter& painter) const {
    const QRect sheet = rect().adjusted(0, 0, -kShadow, -kShadow);
    painter.fillRect(sheet.translated(kShadow, kShadow), QColor(0x1B, 0x24, 0x30, 0x60));
    draw::Sheet(painter, sheet, colors::kWindow, colors::kAccent);
    const QRect band(sheet.left(), sheet.top(), sheet.width(), kTitleBand);
    painter.fillRect(band, colors::kAccent);
    painter.setPen(colors::kEntry);
    QFont bold = font();
    bold.setWeight(QFont::DemiBold);
    bold.setPointSizeF(std::min(FontSize(this), kMostTitlePoints));
    painter.setFont(bold);
    painter.drawText(band.adjusted(kTitleIndent, 0, -kTitleIndent, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     caption_);
}

PictureBox::PictureBox(QWidget* parent) : QFrame(parent) {}

}  // namespace quardele::forms
