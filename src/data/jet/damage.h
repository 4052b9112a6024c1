// The one way to say that a file contradicts itself.
#pragma once

#include <cstdint>

#include <basic/text.h>

namespace quardele::jet {

/// Throws RuntimeError 3343 with a description that names the page and what is wrong there (French, without
/// a final point).
[[noreturn]] void ThrowDamaged(std::uint32_t page, basic::TextView what);

}  // namespace quardele::jet
