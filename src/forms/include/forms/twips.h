// Geometry that the program reads or sets is in twips: 1440 to the inch, 15 to a logical pixel.
#pragma once

#include <cmath>

namespace quardele::forms {

inline constexpr int kTwipsPerPixel = 15;

[[nodiscard]] constexpr int ToTwips(int pixels) {
    return pixels * kTwipsPerPixel;
}
/// Rounded to the nearest pixel.
[[nodiscard]] inline int ToPixels(int twips) {
    return static_cast<int>(std::lround(static_cast<double>(twips) / kTwipsPerPixel));
}

}  // namespace quardele::forms
