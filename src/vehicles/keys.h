// Key codes of the platform that the form answers to.
#pragma once

namespace quardele::vehicles {

inline constexpr int kKeyEnter = 13;
inline constexpr int kKeyF4 = 115;
inline constexpr int kKeyF8 = 119;

/// Bit of the shift state that comes with a key.
inline constexpr int kShiftAlt = 4;

}  // namespace quardele::vehicles
