// Key events that controls tell their handlers.
#pragma once

#include <QKeyEvent>

#include "key_codes.h"

namespace quardele::forms {

/// Fires `control`'s KeyDown for a key that has a code. True when the handler has swallowed it.
template <class Control>
bool TellKeyDown(Control& control, const QKeyEvent& event) {
    int keyCode = KeyCodeOf(event);
    if (keyCode == 0) {
        return false;
    }
    emit control.KeyDown(keyCode, ShiftOf(event));
    return keyCode == 0;
}

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
