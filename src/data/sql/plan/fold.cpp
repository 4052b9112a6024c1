#include "plan/fold.h"

#include <algorithm>

namespace quardele::sql {
namespace {

constexpr std::size_t kAllUnits = 0x10000;

/// The capitals of all units by code.
const Text& Capitals() {
    static const Text capitals = [] {
        Text all(kAllUnits, u'\0');
        for (std::size_t unit = 0; unit < kAllUnits; ++unit) {
            all[unit] = static_cast<char16_t>(unit);
        }
        return basic::UCase(all);
    }();
    return capitals;
}

}  // namespace

char16_t Folded(char16_t unit) {
    static const char16_t* const capitals = Capitals().data();
    return capitals[unit];
}

std::size_t FindFolded(TextView text, TextView what, std::size_t from) {
    if (from > text.size()) {
        return TextView::npos;
    }
    const auto found = std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), what.begin(),
                                   what.end(), [](char16_t a, char16_t b) { return Folded(a) == Folded(b); });
    if (found == text.end() && !what.empty()) {
        return TextView::npos;
    }
    return static_cast<std::size_t>(found - text.begin());
}

}  // namespace quardele::sql
