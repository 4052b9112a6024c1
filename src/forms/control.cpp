#include <forms/control.h>
#include <forms/twips.h>

#include "focus_events.h"

namespace quardele::forms {
namespace {

constexpr const char* kIndex = "index";
constexpr const char* kTag = "tag";

}  // namespace

int ControlIndex(const QWidget* control) {
    const QVariant index = control->property(kIndex);
    return index.isValid() ? index.toInt() : -1;
}

QString ControlName(const QWidget* control) {
    const QString name = control->objectName();
    const int index = ControlIndex(control);
    const QString suffix = QStringLiteral("_%1").arg(index);
    return index >= 0 && name.endsWith(suffix) ? name.chopped(suffix.size()) : name;
}

int Left(const QWidget* control) {
    return ToTwips(control->x());
}
int Top(const QWidget* control) {
    return ToTwips(control->y());
}
int Width(const QWidget* control) {
    return ToTwips(control->width());
}
int Height(const QWidget* control) {
    return ToTwips(control->height());
}
void SetLeft(QWidget* control, int twips) {
    control->move(ToPixels(twips), control->y());
}
void SetTop(QWidget* control, int twips) {
    control->move(control->x(), ToPixels(twips));
}
void SetWidth(QWidget* control, int twips) {
    control->resize(ToPixels(twips), control->height());
}
void SetHeight(QWidget* control, int twips) {
    control->resize(control->width(), ToPixels(twips));
}

void SetFocus(QWidget* control) {
    if (!control->isVisible() || !control->isEnabled()) {
        throw basic::RuntimeError(basic::error::kInvalidCall);
    }
    control->setFocus();
    // While another program is in front Qt tells nobody; the handlers run all the same.
    FocusEvents::Instance().MoveTo(control);
}

QString Tag(const QWidget* control) {
    return control->property(kTag).toString();
}
void SetTag(QWidget* control, const QString& tag) {
    control->setProperty(kTag, tag);
}

}  // namespace quardele::forms
