#include <utility>

#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>

#include <forms/controls.h>

#include "key_codes.h"

namespace quardele::forms {
namespace {

constexpr QSize kPicture(20, 20);

/// The key that does what the button does, or where that is found for a button without one; may be empty.
QString KeyHintOf(const Button& button) {
    return button.shortcut().isEmpty() ? button.property("keyHint").toString()
                                       : button.shortcut().toString(QKeySequence::NativeText);
}

}  // namespace

Button::Button(QWidget* parent) : QPushButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAutoDefault(false);
    setIconSize(kPicture);
    connect(this, &QPushButton::clicked, this, [this] { emit Click(); });
}

void Button::SetMain(bool main) {
    main_ = main;
    update();
}

void Button::SetFaceColor(int color) {
    faceColor_ = color;
    update();
}

void Button::SetRimColor(int color) {
    rimColor_ = color;
    update();
}

void Button::ShowTip(const QPoint& position) {
    QToolTip::showText(position, toolTip() + u'\n' + KeyHintOf(*this), this);
}

bool Button::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::Shortcut:
            if (focusPolicy() != Qt::NoFocus) {
                setFocus(Qt::ShortcutFocusReason);
            }
            if (KeptFocus()) {
                click();
            }
            return true;
        case QEvent::WindowBlocked:
            blocked_ = true;
            break;
        case QEvent::ToolTip:
            if (toolTip().isEmpty() || KeyHintOf(*this).isEmpty()) {
                break;
            }
            ShowTip(static_cast<QHelpEvent*>(event)->globalPos());
            return true;
        case QEvent::ToolTipChange:
            if (accessibleName().isEmpty() && text().isEmpty()) {
                setAccessibleName(toolTip());
            }
            break;
        default:
            break;
    }
    return QPushButton::event(event);
}

/// The box that is left may take the focus back when it gets its LostFocus: the button is not pressed then.
bool Button::KeptFocus() const {
    return focusPolicy() == Qt::NoFocus || window()->focusWidget() == this;
}

void Button::focusInEvent(QFocusEvent* event) {
    QPushButton::focusInEvent(event);
    awaitsPress_ = event->reason() == Qt::MouseFocusReason;
    blocked_ = false;
}

void Button::mousePressEvent(QMouseEvent* event) {
    const bool lostRelease = std::exchange(awaitsPress_, false) && blocked_;
    if (!KeptFocus()) {
        return;
    }
    if (lostRelease) {
        // The box that was left has shown a message, and the mouse button came up over that.
        click();
        return;
    }
    QPushButton::mousePressEvent(event);
}

void Button::keyPressEvent(QKeyEvent* event) {
    if (KeyCodeOf(*event) == kKeyEnter) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

}  // namespace quardele::forms
