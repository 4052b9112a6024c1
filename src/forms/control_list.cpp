#include "control_list.h"

#include <QAbstractScrollArea>
#include <QComboBox>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>

namespace quardele::forms {
namespace {

bool IsPartOfQt(const QWidget& widget) {
    return widget.objectName().isEmpty() || widget.objectName().startsWith(QLatin1String("qt_"));
}

/// Child windows and menus are no controls, nor is anything inside them.
bool IsForeign(const QWidget& widget) {
    return widget.isWindow() || qobject_cast<const QMenu*>(&widget) != nullptr ||
           qobject_cast<const QMenuBar*>(&widget) != nullptr;
}

/// Widgets inside these belong to the control itself.
bool IsClosed(const QWidget& widget) {
    return qobject_cast<const QAbstractScrollArea*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QMdiArea*>(&widget) != nullptr;
}

void Collect(const QWidget& parent, std::vector<QPointer<QWidget>>& controls) {
    for (QObject* child : parent.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget == nullptr || IsForeign(*widget)) {
            continue;
        }
        if (!IsPartOfQt(*widget)) {
            controls.emplace_back(widget);
        }
        if (!IsClosed(*widget)) {
            Collect(*widget, controls);
        }
    }
}

}  // namespace

std::vector<QPointer<QWidget>> ControlsOn(const QWidget& surface) {
    std::vector<QPointer<QWidget>> controls;
    Collect(surface, controls);
    return controls;
}

}  // namespace quardele::forms
