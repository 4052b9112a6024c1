#include "wildcard.h"

namespace quardele::basic {
namespace {

/// Both in capitals. Goes back to the last "*" only, so the time is bounded by the product of the lengths.
bool Matches(TextView name, TextView pattern) {
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t starPattern = TextView::npos;
    std::size_t starName = 0;
    while (n < name.size() || p < pattern.size()) {
        const char16_t wanted = p < pattern.size() ? pattern[p] : u'\0';
        const bool atPoint = n == name.size() || name[n] == u'.';
        if (wanted == u'*') {
            starPattern = p++;
            starName = n;
        } else if (wanted == u'?') {
            ++p;
            n += atPoint ? 0 : 1;
        } else if (n < name.size() && wanted == name[n]) {
            ++p;
            ++n;
        } else if (starPattern != TextView::npos && starName < name.size()) {
            n = ++starName;
            p = starPattern + 1;
        } else {
            return false;
        }
    }
    return true;
}

}  // namespace

bool MatchesWildcard(TextView name, TextView pattern) {
    return pattern == u"*.*" || Matches(UCase(name), UCase(pattern));
}

}  // namespace quardele::basic
