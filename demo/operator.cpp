#include "operator.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QPointer>
#include <QTest>
#include <QTimer>

namespace quardele::demo {

namespace {

/// How often a modal window is looked for; the operator's reaction, not a rule of the program.
constexpr int kGlanceMilliseconds = 30;

}  // namespace

void ClickMenu(forms::MdiForm& mainWindow, const QString& entry) {
    QMenuBar* const bar = mainWindow.MainWindow()->menuBar();
    for (QAction* action : bar->actions()) {
        if (action->objectName() == entry) {
            QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(action).center());
        }
    }
    Settle();
}

void Click(QWidget& control) {
    QTest::mouseClick(&control, Qt::LeftButton);
    Settle();
}

void ClickCell(const forms::Grid& grid, int col, int row) {
    const QRect cell = grid.visualRect(grid.model()->index(row - 1, col - 1));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    Settle();
}

void PressKeys(const std::vector<Qt::Key>& keys) {
    for (const Qt::Key key : keys) {
        if (QWidget* const focus = QApplication::focusWidget()) {
            QTest::keyClick(focus, key);
        }
    }
    Settle();
}

void TypeText(const QString& text) {
    for (const QChar character : text) {
        if (QWidget* const focus = QApplication::focusWidget()) {
            QTest::keyClicks(focus, character);
        }
    }
    Settle();
}

void Enter(QWidget& control, const QString& text) {
    QTest::mouseClick(&control, Qt::LeftButton);
    QTest::keySequence(&control, QKeySequence(QKeySequence::SelectAll));
    QTest::keyClicks(&control, text);
    QTest::keyClick(&control, Qt::Key_Return);
    Settle();
}

void Tick(forms::Grid& grid, int col, const std::vector<int>& rows) {
    for (const int row : rows) {
        grid.SetActiveCell(col, row);
        QTest::keyClick(&grid, Qt::Key_Space);
    }
    Settle();
}

void Settle() {
    constexpr int kRounds = 5;
    for (int round = 0; round < kRounds; ++round) {
        QApplication::processEvents();
        QApplication::sendPostedEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

class ModalWatcher::Private {
 public:
    explicit Private(std::function<void(QWidget&)> answer) : answer_(std::move(answer)) {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Glance(); });
        timer_.start(kGlanceMilliseconds);
    }

 private:
    void Glance() {
        QWidget* const window = QApplication::activeModalWidget();
        if (window == nullptr || !window->isVisible()) {
            answered_ = nullptr;
        } else if (window != answered_ && TakesKeys(*window)) {
            answered_ = window;
            answer_(*window);
        }
    }

    /// On a busy machine a window is told late that the keys are its own; what is typed before that is lost.
    bool TakesKeys(const QWidget& window) {
        constexpr int kPatience = 200;
        const bool takes = window.isActiveWindow() || ++glances_ > kPatience;
        glances_ = takes ? 0 : glances_;
        return takes;
    }

    std::function<void(QWidget&)> answer_;
    QTimer timer_;
    int glances_ = 0;  ///< at a window that does not take keys yet
    QPointer<QWidget> answered_;
};

ModalWatcher::ModalWatcher(std::function<void(QWidget&)> answer)
    : d_(std::make_unique<Private>(std::move(answer))) {}

ModalWatcher::~ModalWatcher() = default;

}  // namespace quardele::demo
