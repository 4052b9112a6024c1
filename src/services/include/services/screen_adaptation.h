// Adaptation of a form to the screen.
#pragma once

#include <cstdint>

#include <forms/form.h>

namespace quardele::services {

/// Fits a form that was drawn for a screen of 800 x 600 into the main window: top left, as wide as the window
/// and, above 768 lines, as high. The form's controls keep their designed sizes. Returns 0 on a screen of 600
/// lines or with `mode` false, where nothing is done; -2 for a minimized form; -1 for a form higher than the
/// window; else the form's WindowState.
std::int16_t AdjustForm(forms::Form& form, bool mode);

}  // namespace quardele::services
