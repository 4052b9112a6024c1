#include <basic/conversion.h>
#include <forms/controls.h>

namespace quardele::forms {

CheckBox::CheckBox(QWidget* parent) : QCheckBox(parent) {
    connect(this, &QCheckBox::toggled, this, [this] {
        ContentChanged();
        emit Click();
    });
}

void CheckBox::SetValue(int value) {
    setChecked(value != 0);
}

void CheckBox::ShowValue(const basic::Variant& value) {
    setChecked(!value.IsNull() && !value.IsEmpty() && basic::CBool(value));
}

basic::Variant CheckBox::Content() const {
    return isChecked();
}

}  // namespace quardele::forms
