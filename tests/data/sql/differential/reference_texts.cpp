#include "reference_texts.h"

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

namespace quardele::sql::differential {

namespace {

char16_t UpperUnit(char16_t unit) {
    const bool small = (unit >= u'a' && unit <= u'z') || (unit >= u'à' && unit <= u'þ');
    return small ? static_cast<char16_t>(unit - 0x20) : unit;
}

char16_t LowerUnit(char16_t unit) {
    const bool capital = (unit >= u'A' && unit <= u'Z') || (unit >= u'À' && unit <= u'Þ');
    return capital ? static_cast<char16_t>(unit + 0x20) : unit;
}

/// What two texts compare by, the first difference deciding.
using Weights = std::tuple<std::u16string, std::u16string, std::vector<std::pair<std::size_t, char16_t>>>;

Weights WeightsOf(std::u16string text) {
    text.erase(text.find_last_not_of(u' ') + 1);
    std::u16string letters;
    std::u16string accents;
    std::vector<std::pair<std::size_t, char16_t>> signs;
    for (const char16_t unit : Lower(text)) {
        if (unit == u'-' || unit == u'\'') {
            signs.emplace_back(letters.size(), unit == u'-' ? 1 : 0);
            continue;
        }
        letters += unit == u'é' ? u'e' : unit;
        accents += unit == u'é' ? 1 : 0;
    }
    accents.erase(accents.find_last_of(u'\1') + 1);
    return {letters, accents, signs};
}

/// Whether a unit is in a set, whose ranges go by the order of texts.
bool IsInSet(char16_t unit, std::u16string_view set) {
    const bool none = set.starts_with(u'!');
    set.remove_prefix(none ? 1 : 0);
    bool found = false;
    for (std::size_t i = 0; i < set.size(); ++i) {
        if (i + 2 < set.size() && set[i + 1] == u'-') {
            found = found || (Collate({unit}, {set[i]}) >= 0 && Collate({unit}, {set[i + 2]}) <= 0);
            i += 2;
        } else {
            found = found || unit == set[i];
        }
    }
    return found != none;
}

bool MatchesLower(std::u16string_view text, std::u16string_view pattern) {
    if (pattern.empty()) {
        return text.empty();
    }
    const std::u16string_view rest = pattern.substr(1);
    if (pattern[0] == u'*') {
        return MatchesLower(text, rest) || (!text.empty() && MatchesLower(text.substr(1), pattern));
    }
    if (text.empty()) {
        return false;
    }
    switch (pattern[0]) {
        case u'?':
            return MatchesLower(text.substr(1), rest);
        case u'#':
            return text[0] >= u'0' && text[0] <= u'9' && MatchesLower(text.substr(1), rest);
        case u'[': {
            const std::size_t end = rest.find(u']');
            return IsInSet(text[0], rest.substr(0, end)) &&
                   MatchesLower(text.substr(1), rest.substr(end + 1));
        }
        default:
            return text[0] == pattern[0] && MatchesLower(text.substr(1), rest);
    }
}

}  // namespace

std::u16string Upper(std::u16string text) {
    std::transform(text.begin(), text.end(), text.begin(), UpperUnit);
    return text;
}

std::u16string Lower(std::u16string text) {
    std::transform(text.begin(), text.end(), text.begin(), LowerUnit);
    return text;
}

int Collate(const std::u16string& left, const std::u16string& right) {
    const Weights leftWeights = WeightsOf(left);
    const Weights rightWeights = WeightsOf(right);
    if (leftWeights == rightWeights) {
        return 0;
    }
    return leftWeights < rightWeights ? -1 : 1;
}

bool IsLike(std::u16string_view text, std::u16string_view pattern) {
    return MatchesLower(Lower(std::u16string(text)), Lower(std::u16string(pattern)));
}

int PositionOf(const std::u16string& what, const std::u16string& text, int from) {
    const auto start = static_cast<std::size_t>(from - 1);
    if (text.empty() || start >= text.size()) {
        return 0;
    }
    return static_cast<int>(Lower(text).find(Lower(what), start) + 1);
}

std::u16string Replaced(const std::u16string& text, const std::u16string& what, const std::u16string& with,
                        int most) {
    std::u16string result;
    std::size_t at = 0;
    for (int done = 0; done != most; ++done) {
        const std::size_t found = Lower(text).find(Lower(what), at);
        if (found == std::u16string::npos) {
            break;
        }
        result += text.substr(at, found - at) + with;
        at = found + what.size();
    }
    return result + text.substr(at);
}

}  // namespace quardele::sql::differential
