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
    return FoldedPattern(what).FindIn(text, from);
}

FoldedPattern::FoldedPattern(TextView what) : folded_(what) {
    std::transform(folded_.begin(), folded_.end(), folded_.begin(), Folded);
}

std::size_t FoldedPattern::FindIn(TextView text, std::size_t from) const {
    if (from > text.size() || folded_.size() > text.size() - from) {
        return TextView::npos;
    }
    if (folded_.empty()) {
        return from;
    }
    const char16_t* const capitals = Capitals().data();
    const std::size_t last = text.size() - folded_.size();
    for (std::size_t at = from; at <= last; ++at) {
        std::size_t same = 0;
        while (same < folded_.size() && capitals[text[at + same]] == folded_[same]) {
            ++same;
        }
        if (same == folded_.size()) {
            return at;
        }
    }
    return TextView::npos;
}

}  // namespace quardele::sql
