// Key codes of the platform from Qt's keys.
#pragma once

class QKeyEvent;

namespace quardele::forms {

/// Key codes that the room itself compares with.
inline constexpr int kKeyEnter = 13;
inline constexpr int kKeyEscape = 27;

/// 0 for keys that have no code.
[[nodiscard]] int KeyCodeOf(const QKeyEvent& event);
/// 1 Shift, 2 Ctrl, 4 Alt, added up.
[[nodiscard]] int ShiftOf(const QKeyEvent& event);

}  // namespace quardele::forms
