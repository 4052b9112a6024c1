// For tests: whether the program has beeped, which nobody can see.
#pragma once

namespace quardele::forms {

/// How often Beep was called since the process started.
[[nodiscard]] int BeepsSoFar();

}  // namespace quardele::forms
