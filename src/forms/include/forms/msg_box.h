// Message boxes. Modal; return when answered.
#pragma once

#include <QString>

#include <basic/text.h>

namespace quardele::forms {

enum class BoxButtons { Ok, YesNo };
enum class BoxIcon { None, Critical, Question, Exclamation, Information };
enum class BoxAnswer { Ok = 1, Yes = 6, No = 7 };

/// Shows a box and returns the button. An empty title means App::Title(). The buttons read OK, Oui, Non; the
/// yes/no box does not answer to Escape and has no close button. CR, LF and CR LF are line breaks.
/// The dialog's object name is "MsgBox", its buttons "MsgBox_Ok", "MsgBox_Yes", "MsgBox_No", its text label
/// "MsgBox_Text"; its property "icon" names its picture: "erreur", "question", "avertissement",
/// "information", or empty.
BoxAnswer MsgBox(const QString& prompt, BoxButtons buttons = BoxButtons::Ok, BoxIcon icon = BoxIcon::None,
                 const QString& title = {});

/// A box with an OK button, for the rooms that show their failures without knowing of screens.
void ShowBox(const basic::Text& text, const basic::Text& title);

}  // namespace quardele::forms
