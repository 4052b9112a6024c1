#include <forms/escape.h>

#include <QKeyEvent>

#include <forms/events.h>

#include "key_codes.h"

namespace quardele::forms {
namespace {

/// A key that a control leaves alone goes on to what the control stands in, so that a frame gets it last.
class EscapeListener : public QObject {
 public:
    EscapeListener(Frame* frame, std::function<void()> handler)
        : QObject(frame), handler_(std::move(handler)) {
        frame->installEventFilter(this);
    }

 protected:
    bool eventFilter(QObject* /*frame*/, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || KeyCodeOf(*static_cast<QKeyEvent*>(event)) != kKeyEscape) {
            return false;
        }
        RunHandler(handler_);
        return true;
    }

 private:
    std::function<void()> handler_;
};

}  // namespace

void OnEscape(Frame* frame, std::function<void()> handler) {
    new EscapeListener(frame, std::move(handler));  // the frame's own from here on
}

}  // namespace quardele::forms
