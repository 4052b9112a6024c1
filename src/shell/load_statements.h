// The error handler that the Loads of this room's forms have in common.
#pragma once

#include <basic/resume_next.h>

namespace quardele::shell {

/// Runs the statements of a Load: of one that fails the operator is told the step as it stands then, with the
/// error's description, and the next one runs. The text is the same in every language. `step` must live as
/// long as the result.
[[nodiscard]] basic::ResumeNext LoadStatements(const int& step);

}  // namespace quardele::shell
