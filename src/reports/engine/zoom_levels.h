// The sizes that pages are shown in.
#pragma once

#include <algorithm>
#include <array>

namespace quardele::engine {

inline constexpr std::array kPercents = {25, 50, 75, 100, 125, 150, 200, 300, 400};

/// The next larger (1) or smaller (-1) size; the last one from there on.
[[nodiscard]] constexpr int NextPercent(int percent, int direction) {
    if (direction > 0) {
        const auto* const next = std::upper_bound(kPercents.begin(), kPercents.end(), percent);
        return next == kPercents.end() ? kPercents.back() : *next;
    }
    const auto* const next = std::lower_bound(kPercents.begin(), kPercents.end(), percent);
    return next == kPercents.begin() ? kPercents.front() : *(next - 1);
}

}  // namespace quardele::engine
