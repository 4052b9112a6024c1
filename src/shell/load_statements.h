// The error handler that the Loads of this room's forms have in common.
#pragma once

#include <basic/resume_next.h>

namespace quardele::shell {

/// Runs the statements of a Load: of one that fails the operator is told the step, with the error's
/// description, and the next one runs. The text is the same in every language.
class LoadStatements : public basic::ResumeNext {
 public:
    LoadStatements();
    LoadStatements(const LoadStatements&) = delete;
    LoadStatements& operator=(const LoadStatements&) = delete;

    /// The step that the Load has come to.
    int ETAPE = 0;
};

}  // namespace quardele::shell
