// Escape in front of a form.
#pragma once

#include <functional>

#include <forms/controls.h>

namespace quardele::forms {

/// Runs `handler`, behind the wall of events.h, when Escape is pressed in a frame and no control inside it
/// has a use for the key. Of frames inside each other the innermost one is asked alone. Lasts as long as the
/// frame.
void OnEscape(Frame* frame, std::function<void()> handler);

}  // namespace quardele::forms
