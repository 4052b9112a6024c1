#include "idle.h"

#include <stdexcept>

#include <QEvent>
#include <QEventLoop>

namespace quardele::bench {

namespace {

constexpr std::chrono::minutes kPatience(1);

/// Sees the paint events of a widget, or of all when it watches the application.
class PaintWatch : public QObject {
 public:
    explicit PaintWatch(QObject& widget) { widget.installEventFilter(this); }

    [[nodiscard]] bool HasPainted() const { return hasPainted_; }

 private:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        hasPainted_ = hasPainted_ || event->type() == QEvent::Paint;
        return false;
    }

    bool hasPainted_ = false;
};

}  // namespace

void RunUntilIdle() {
    QEventLoop loop;
    while (loop.processEvents()) {
    }
}

Duration TimeUntilPainted(QObject& widget, const std::function<void()>& act) {
    const PaintWatch watch(widget);
    const Clock::time_point start = Clock::now();
    act();
    while (!watch.HasPainted()) {
        if (Clock::now() - start > kPatience) {
            throw std::runtime_error("La fenêtre n'a pas été dessinée.");
        }
        RunUntilIdle();
    }
    RunUntilIdle();
    return Clock::now() - start;
}

}  // namespace quardele::bench
