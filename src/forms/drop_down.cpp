#include <forms/drop_down.h>

#include "key_press.h"

namespace quardele::forms {

DropDown::DropDown(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QComboBox::currentIndexChanged, this, [this] { emit Click(); });
}

void DropDown::keyPressEvent(QKeyEvent* event) {
    if (!TellKeyPress(*this, *event)) {
        QComboBox::keyPressEvent(event);
    }
}

}  // namespace quardele::forms
