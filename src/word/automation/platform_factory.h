#pragma once

#include <automation/object.h>

namespace quardele::automation {

/// The factory of this platform; there is one definition for each, chosen by the build.
[[nodiscard]] Factory& PlatformFactory();

}  // namespace quardele::automation
