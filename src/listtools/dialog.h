// What the dialogs of the list tools have in common.
#pragma once

#include <QString>

#include <basic/runtime_error.h>
#include <forms/controls.h>
#include <forms/form.h>

namespace quardele::listtools {

inline constexpr int kKeyEnter = 13;
inline constexpr int kKeyEscape = 27;

/// In the middle of the work area and of the main window's width, in a size that does not change.
void PlaceDialog(forms::Form& dialog);

/// A caption like "Recherche sur [Marque]" from "Recherche sur [" and the column's title.
[[nodiscard]] QString TitleOn(const QString& start);

/// The button stands out less while it is held down.
void ShowPressing(forms::Button* button, QObject* context);

/// A character that a control has got: Enter goes to the next control.
void EnterAsTab(int& character);

/// Shows the error's number and text behind a fixed start, such as "SELECTION (ERREUR ".
void ReportError(const QString& start, const basic::RuntimeError& error);

}  // namespace quardele::listtools
