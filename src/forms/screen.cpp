#include <QApplication>
#include <QScreen>

#include <forms/mdi_form.h>
#include <forms/runtime.h>
#include <forms/twips.h>

#include "focus_events.h"
#include "form_host.h"

namespace quardele::forms {
namespace {

constexpr int kHourglass = 11;

struct ScreenState {
    QSize sizeForTests;  ///< twips; empty for the real screen
    int mousePointer = 0;
};

ScreenState& State() {
    static ScreenState state;
    return state;
}

QSize RealSize() {
    const MdiForm* main = MdiForm::Current();
    const QScreen* screen = main != nullptr ? main->Window()->screen() : QGuiApplication::primaryScreen();
    return screen->geometry().size() * kTwipsPerPixel;
}

QSize Size() {
    return State().sizeForTests.isEmpty() ? RealSize() : State().sizeForTests;
}

/// A long action is about to begin: what is half drawn now would stay so until its end.
void RepaintWindows() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible()) {
            window->repaint();
        }
    }
}

}  // namespace

int Screen::Width() {
    return Size().width();
}
int Screen::Height() {
    return Size().height();
}
void Screen::SetSizeForTests(int width, int height) {
    State().sizeForTests = QSize(width, height);
}

Form* Screen::ActiveForm() {
    return FormHost::Instance().Active();
}
QWidget* Screen::ActiveControl() {
    return FocusEvents::Instance().Current();
}

int Screen::MousePointer() {
    return State().mousePointer;
}

void Screen::SetMousePointer(int pointer) {
    const bool was = State().mousePointer == kHourglass;
    const bool now = pointer == kHourglass;
    State().mousePointer = pointer;
    if (now && !was) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        RepaintWindows();
    } else if (was && !now) {
        QGuiApplication::restoreOverrideCursor();
    }
}

}  // namespace quardele::forms
