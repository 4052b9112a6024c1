#include <QCoreApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QTabBar>

#include <forms/controls.h>
#include <forms/twips.h>

#include "focus_events.h"

namespace quardele::forms {
namespace {

constexpr double kTabPoints = 9.75;

}  // namespace

TabControl::TabControl(QWidget* parent) : QTabWidget(parent) {
    QFont font = tabBar()->font();
    font.setPointSizeF(kTabPoints);
    tabBar()->setFont(font);
    // As with a button: the box that is left runs its checks before the tab changes.
    tabBar()->setFocusPolicy(Qt::StrongFocus);
    tabBar()->setDrawBase(false);
    connect(this, &QTabWidget::currentChanged, this, &TabControl::TabChanged);
}

/// A control that goes off screen with its page keeps the focus as far as the program can tell, until a
/// handler moves it: when that sets the tab back at once the control was not left, and no check of it runs.
void TabControl::SetTab(int tab) {
    const FocusEvents::Hold hold(window());
    QWidget* page = currentWidget();
    if (tab != currentIndex() && page != nullptr && page->isAncestorOf(page->window()->focusWidget())) {
        // Qt would pick a control of the new page by itself.
        tabBar()->setFocus();
    }
    setCurrentIndex(tab);
}

int TabControl::TabHeight() const {
    return ToTwips(stripPixels_);
}

void TabControl::SetTabHeight(int twips) {
    stripPixels_ = ToPixels(twips);
    // The style tells the heights; Qt asks it again when it is another one.
    QEvent changed(QEvent::StyleChange);
    QCoreApplication::sendEvent(tabBar(), &changed);
    QCoreApplication::sendEvent(this, &changed);
}

void TabControl::PlaceInStrip(QWidget* control, int page) {
    control->setParent(this);
    control->setVisible(page == currentIndex());
    control->raise();
    strip_.push_back({control, page});
}

void TabControl::TabChanged(int tab) {
    const int previous = std::exchange(current_, tab);
    for (const StripControl& entry : strip_) {
        entry.control->setVisible(entry.page == tab);
    }
    if (previous >= 0) {
        emit Click(previous);
    }
}

void TabControl::keyPressEvent(QKeyEvent* event) {
    const bool backwards = event->matches(QKeySequence::PreviousChild);
    if ((backwards || event->matches(QKeySequence::NextChild)) && count() > 0) {
        SetTab((currentIndex() + (backwards ? count() - 1 : 1)) % count());
        return;
    }
    QTabWidget::keyPressEvent(event);
}

}  // namespace quardele::forms
