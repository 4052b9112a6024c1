#include <jet/step.h>

#include "commit/write_step.h"

namespace quardele::jet {

Step::Step(std::unique_ptr<WriteStep> step) : step_(std::move(step)) {}

Step::Step(Step&& other) noexcept = default;

Step& Step::operator=(Step&& other) noexcept = default;

Step::~Step() = default;

// What comes after it must not count as a part of what is written already.
void Step::Commit() {
    step_->Commit();
    step_.reset();
}

}  // namespace quardele::jet
