#include <forms/control_font.h>

#include <cmath>

#include <QFontInfo>

#include <forms/control_kind.h>

namespace quardele::forms {
namespace {

void GiveFont(QWidget& control, double points) {
    QFont font = control.font();
    font.setPointSizeF(points);
    control.setFont(font);
}

/// Qt hands a container's font down to what has none of its own.
void KeepFontsInside(const QWidget& container) {
    for (QWidget* inner : container.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        GiveFont(*inner, FontSize(inner));
    }
}

bool IsContainer(ControlKind kind) {
    return kind == ControlKind::Frame || kind == ControlKind::PictureBox || kind == ControlKind::TabPage;
}

bool TakesHeightFromFont(ControlKind kind) {
    return kind == ControlKind::TextBox || kind == ControlKind::Combo;
}

}  // namespace

double FontSize(const QWidget* control) {
    const double points = control->font().pointSizeF();
    return points > 0 ? points : QFontInfo(control->font()).pointSizeF();
}

void SetFontSize(QWidget* control, double points) {
    const ControlKind kind = KindOf(control);
    if (IsContainer(kind)) {
        KeepFontsInside(*control);
    }
    const double growth = points / FontSize(control);
    GiveFont(*control, points);
    if (TakesHeightFromFont(kind)) {
        control->resize(control->width(), static_cast<int>(std::lround(control->height() * growth)));
    }
}

}  // namespace quardele::forms
