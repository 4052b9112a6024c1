// Adaptation of a form to the screen.
#pragma once

#include <cstdint>

#include <forms/form.h>

namespace quardele::services {

/// Scales a form's controls to the screen; returns 0 when nothing was scaled. Forms keep their design size
/// until the scaling rules are in place.
std::int16_t AdjustForm(forms::Form& form, bool mode);

}  // namespace quardele::services
