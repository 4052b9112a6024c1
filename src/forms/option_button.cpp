#include <forms/option_button.h>

#include "key_press.h"

namespace quardele::forms {

OptionButton::OptionButton(QWidget* parent) : QRadioButton(parent) {
    connect(this, &QRadioButton::toggled, this, [this](bool set) {
        if (set) {
            emit Click();
        }
    });
}

void OptionButton::SetValue(bool set) {
    if (!set && isChecked()) {
        // Qt keeps one option of a group set for good; a program may unset it.
        setAutoExclusive(false);
        setChecked(false);
        setAutoExclusive(true);
        return;
    }
    setChecked(set);
}

void OptionButton::keyPressEvent(QKeyEvent* event) {
    if (!TellKeyPress(*this, *event)) {
        QRadioButton::keyPressEvent(event);
    }
}

}  // namespace quardele::forms
