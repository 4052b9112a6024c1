// The colours of the screens. Contrast of all texts on their surfaces is 4.5 or more, of control borders 3.
#pragma once

#include <QColor>
#include <QPalette>

namespace quardele::forms::colors {

inline constexpr QColor kInk(0x1B, 0x24, 0x30);
inline constexpr QColor kSecondaryInk(0x4A, 0x57, 0x65);
inline constexpr QColor kWindow(0xF3, 0xF5, 0xF7);
inline constexpr QColor kEntry(0xFF, 0xFF, 0xFF);
inline constexpr QColor kEvenRow(0xF8, 0xFA, 0xFB);
inline constexpr QColor kBorder(0x7F, 0x8B, 0x98);
inline constexpr QColor kDecorativeLine(0xC5, 0xCD, 0xD5);
inline constexpr QColor kGridLine(0xDB, 0xE0, 0xE6);
inline constexpr QColor kAccent(0x0B, 0x5C, 0x8A);
inline constexpr QColor kAccentLight(0xE3, 0xEF, 0xF6);
inline constexpr QColor kSelectedRow(0xCF, 0xE3, 0xF0);
inline constexpr QColor kHeading(0xE6, 0xEB, 0xF0);
inline constexpr QColor kLocked(0xF0, 0xF3, 0xF6);
inline constexpr QColor kShaded(0xDD, 0xE4, 0xEA);
inline constexpr QColor kButton(0xED, 0xF0, 0xF3);
inline constexpr QColor kButtonPressed(0xD5, 0xDC, 0xE3);
inline constexpr QColor kPendingBar(0x8A, 0x5A, 0x00);
inline constexpr QColor kPendingFill(0xFF, 0xF9, 0xEC);
inline constexpr QColor kChildArea(0x8C, 0x9A, 0xA8);

}  // namespace quardele::forms::colors

namespace quardele::forms {

[[nodiscard]] QPalette ScreenPalette();

}  // namespace quardele::forms
