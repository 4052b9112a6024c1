// The kinds of controls, for routines that treat controls by their kind.
#pragma once

#include <QWidget>

namespace quardele::forms {

enum class ControlKind {
    CheckBox,
    OptionButton,
    TextBox,  ///< of one line
    MemoBox,  ///< a text box with scroll bars
    Label,
    Frame,
    PictureBox,
    CommandButton,  ///< a plain push button of Qt's
    PictureButton,  ///< a forms::Button, which keeps its size on every screen
    Combo,          ///< a plain drop-down list
    ListCombo,      ///< a drop-down list of several columns
    Grid,
    Tab,
    Other,    ///< a control that no routine asks for
    TabPage,  ///< no control at all: Qt's own widget behind the controls of a tab
};

[[nodiscard]] ControlKind KindOf(const QWidget* control);

}  // namespace quardele::forms
