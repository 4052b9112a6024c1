// Focus as the program sees it: LostFocus and GotFocus of its controls, made from Qt's focus changes. Message
// boxes, menus and other programs take no focus from a control; a handler may move the focus on.
#pragma once

#include <deque>

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace quardele::forms {

class FocusEvents : public QObject {
    Q_OBJECT
 public:
    /// Lives as long as the application object.
    static FocusEvents& Instance();

    /// The control that got the focus last; null when it is gone.
    [[nodiscard]] QWidget* Current() const { return current_; }
    /// Tells the two controls now; all that handlers move on the way is told before this returns.
    void MoveTo(QWidget* control);
    /// The control that a widget is, or is a part of; null for widgets of message boxes, menus and the like.
    [[nodiscard]] static QWidget* ControlOf(QWidget* widget);

    /// While it lives, focus changes made by Qt are not told; at the end the difference is.
    class Hold {
     public:
        /// The window whose focus counts at the end; null for the one that is active then.
        explicit Hold(const QWidget* window);
        ~Hold();
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

     private:
        QPointer<const QWidget> window_;
    };

 private:
    struct Notice {
        QPointer<QWidget> control;
        const char* event;
    };

    explicit FocusEvents(QObject* parent);
    void FocusChanged(QWidget* now);
    void Tell();

    QPointer<QWidget> current_;
    std::deque<Notice> notices_;
    int holds_ = 0;
};

}  // namespace quardele::forms
