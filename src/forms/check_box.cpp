#include <QScopedValueRollback>

#include <basic/conversion.h>
#include <forms/controls.h>

namespace quardele::forms {

CheckBox::CheckBox(QWidget* parent) : QCheckBox(parent) {
    connect(this, &QCheckBox::toggled, this, [this] {
        if (!filling_) {
            SetDataChanged(true);
        }
        emit Click();
    });
}

void CheckBox::SetValue(int value) {
    setChecked(value != 0);
}

void CheckBox::Fill(const basic::Variant& value) {
    const QScopedValueRollback<bool> filling(filling_, true);
    setChecked(!value.IsNull() && !value.IsEmpty() && basic::CBool(value));
    SetDataChanged(false);
}

basic::Variant CheckBox::Content() const {
    return isChecked();
}

}  // namespace quardele::forms
