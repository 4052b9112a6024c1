// KeyPress of controls that take characters as commands, not as text.
#pragma once

#include <QKeyEvent>

namespace quardele::forms {

/// Fires `control`'s KeyPress for a key that makes one character. True when the handler has swallowed it.
template <class Control>
bool TellKeyPress(Control& control, const QKeyEvent& event) {
    if (event.text().size() != 1) {
        return false;
    }
    int character = event.text().front().unicode();
    emit control.KeyPress(character);
    return character == 0;
}

}  // namespace quardele::forms
