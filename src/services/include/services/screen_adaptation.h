// Adaptation of forms, which are drawn for a screen of 800 x 600, to the screen that there is.
#pragma once

#include <cstdint>

#include <forms/form.h>

namespace quardele::services {

/// The screen when the program started; twips. The main window's load takes it down.
struct ScreenSize {
    int ScreenWidth = 0;
    int ScreenHeight = 0;
};
[[nodiscard]] ScreenSize& ScreenAtStart();

// Modes of the adaptation. Any other value scales the controls by screen width / main window width.
/// Nothing is changed.
inline constexpr std::int16_t kAskWindowState = -2;
/// The form goes to the top left of the main window and takes its width; its height and its controls grow by
/// main window height / form height, on screens of up to 768 lines by nothing.
inline constexpr std::int16_t kFitToMainWindow = -1;
/// The controls are scaled by main window width / screen width; the form stays as it is.
inline constexpr std::int16_t kScaleToMainWindow = 2;

/// To be called in the load of a form, before it is shown. Returns the form's WindowState; 0 on a screen of
/// 600 lines and -2 for a minimized form, where nothing is done in any mode; -1 where a form to be fitted is
/// larger than the main window, which leaves it alone.
std::int16_t AdjustForm(forms::Form& form, std::int16_t mode);

/// The same for the welcome form, which fills the main window's width instead: the ratio is main window width
/// / form width, less on screens wider than 4:3, and the form goes below the main window. Only the launcher
/// with the welcome picture has such a form; this edition starts without one.
std::int16_t AdjustWelcomeForm(forms::Form& form, std::int16_t mode);

}  // namespace quardele::services
