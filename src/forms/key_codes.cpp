#include "key_codes.h"

#include <algorithm>
#include <array>

#include <QKeyEvent>

namespace quardele::forms {
namespace {

struct KeyPair {
    int qtKey;
    int code;
};

constexpr std::array kSpecialKeys = {
    KeyPair{Qt::Key_Backspace, 8}, KeyPair{Qt::Key_Tab, 9},          KeyPair{Qt::Key_Backtab, 9},
    KeyPair{Qt::Key_Return, 13},   KeyPair{Qt::Key_Enter, 13},       KeyPair{Qt::Key_Shift, 16},
    KeyPair{Qt::Key_Control, 17},  KeyPair{Qt::Key_Alt, 18},         KeyPair{Qt::Key_Pause, 19},
    KeyPair{Qt::Key_CapsLock, 20}, KeyPair{Qt::Key_Escape, 27},      KeyPair{Qt::Key_Space, 32},
    KeyPair{Qt::Key_PageUp, 33},   KeyPair{Qt::Key_PageDown, 34},    KeyPair{Qt::Key_End, 35},
    KeyPair{Qt::Key_Home, 36},     KeyPair{Qt::Key_Left, 37},        KeyPair{Qt::Key_Up, 38},
    KeyPair{Qt::Key_Right, 39},    KeyPair{Qt::Key_Down, 40},        KeyPair{Qt::Key_Print, 44},
    KeyPair{Qt::Key_Insert, 45},   KeyPair{Qt::Key_Delete, 46},      KeyPair{Qt::Key_Menu, 93},
    KeyPair{Qt::Key_NumLock, 144}, KeyPair{Qt::Key_ScrollLock, 145},
};
constexpr int kCodeF1 = 112;

}  // namespace

int KeyCodeOf(const QKeyEvent& event) {
    const int key = event.key();
    const bool plain = (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
    if (plain) {
        return key;  // both count letters and digits by their ASCII capitals
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F16) {
        return kCodeF1 + (key - Qt::Key_F1);
    }
    const auto* found = std::find_if(kSpecialKeys.begin(), kSpecialKeys.end(),
                                     [key](const KeyPair& pair) { return pair.qtKey == key; });
    return found == kSpecialKeys.end() ? 0 : found->code;
}

int ShiftOf(const QKeyEvent& event) {
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    return (modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0) +
           (modifiers.testFlag(Qt::ControlModifier) ? 2 : 0) + (modifiers.testFlag(Qt::AltModifier) ? 4 : 0);
}

}  // namespace quardele::forms
