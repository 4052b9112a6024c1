// Objects that start-up was to make and may not have made.
#pragma once

#include <basic/runtime_error.h>

namespace quardele::reminders {

/// The object behind a pointer of the session; throws RuntimeError 91 when there is none.
template <class Pointer>
[[nodiscard]] auto& Existing(const Pointer& pointer) {
    if (!pointer) {
        throw basic::RuntimeError(basic::error::kObjectNotSet);
    }
    return *pointer;
}

}  // namespace quardele::reminders
