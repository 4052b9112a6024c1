#include <forms/control_kind.h>

#include <QStackedWidget>

#include <forms/combo.h>
#include <forms/controls.h>
#include <forms/drop_down.h>
#include <forms/grid.h>
#include <forms/option_button.h>

namespace quardele::forms {
namespace {

template <class T>
bool Is(const QWidget* control) {
    return qobject_cast<const T*>(control) != nullptr;
}

bool IsTabPage(const QWidget* control) {
    const QWidget* const stack = control->parentWidget();
    return stack != nullptr && Is<QStackedWidget>(stack) && Is<TabControl>(stack->parentWidget());
}

struct Kind {
    bool (*is)(const QWidget*);
    ControlKind kind;
};

constexpr Kind kKinds[] = {
    {Is<CheckBox>, ControlKind::CheckBox},
    {Is<OptionButton>, ControlKind::OptionButton},
    {Is<TextBox>, ControlKind::TextBox},
    {Is<MemoBox>, ControlKind::MemoBox},
    {Is<Label>, ControlKind::Label},
    {Is<Frame>, ControlKind::Frame},
    {Is<PictureBox>, ControlKind::PictureBox},
    {Is<Button>, ControlKind::PictureButton},
    {Is<QPushButton>, ControlKind::CommandButton},
    {Is<DropDown>, ControlKind::Combo},
    {Is<ListCombo>, ControlKind::ListCombo},
    {Is<Grid>, ControlKind::Grid},
    {Is<TabControl>, ControlKind::Tab},
    {IsTabPage, ControlKind::TabPage},
};

}  // namespace

ControlKind KindOf(const QWidget* control) {
    for (const Kind& kind : kKinds) {
        if (kind.is(control)) {
            return kind.kind;
        }
    }
    return ControlKind::Other;
}

}  // namespace quardele::forms
