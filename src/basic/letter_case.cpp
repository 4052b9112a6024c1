// Upper and lower case by a table of its own: the C library's depends on the process's locale, and the
// length of a text must not change with its case (so "ß" stays).
#include <algorithm>
#include <iterator>

#include <basic/text.h>

namespace quardele::basic {
namespace {

/// Small letters first, first + step ... last; each one's capital lies `toCapital` away.
struct Range {
    char16_t first;
    char16_t last;
    int step;
    int toCapital;
};

constexpr Range kSmallLetters[] = {
    // Latin
    {u'a', u'z', 1, -32},
    {0x00E0, 0x00F6, 1, -32},
    {0x00F8, 0x00FE, 1, -32},
    {0x00FF, 0x00FF, 1, 121},
    {0x0101, 0x012F, 2, -1},
    {0x0133, 0x0137, 2, -1},
    {0x013A, 0x0148, 2, -1},
    {0x014B, 0x0177, 2, -1},
    {0x017A, 0x017E, 2, -1},
    {0x01CE, 0x01DC, 2, -1},
    {0x01DF, 0x01EF, 2, -1},
    {0x01F9, 0x021F, 2, -1},
    {0x0223, 0x0233, 2, -1},
    // Greek
    {0x03AC, 0x03AC, 1, -38},
    {0x03AD, 0x03AF, 1, -37},
    {0x03B1, 0x03C1, 1, -32},
    {0x03C3, 0x03CB, 1, -32},
    {0x03CC, 0x03CC, 1, -64},
    {0x03CD, 0x03CE, 1, -63},
    // Cyrillic
    {0x0430, 0x044F, 1, -32},
    {0x0450, 0x045F, 1, -80},
    {0x0461, 0x0481, 2, -1},
    {0x048B, 0x04BF, 2, -1},
    {0x04C2, 0x04CE, 2, -1},
    {0x04CF, 0x04CF, 1, -15},
    {0x04D1, 0x052F, 2, -1},
    // Latin with two accents, Vietnamese
    {0x1E01, 0x1E95, 2, -1},
    {0x1EA1, 0x1EFF, 2, -1},
};

constexpr char16_t kFinalSigma = 0x03C2;
constexpr char16_t kCapitalSigma = 0x03A3;

constexpr bool Contains(const Range& range, int unit) {
    return unit >= range.first && unit <= range.last && (unit - range.first) % range.step == 0;
}

char16_t Capital(char16_t unit) {
    if (unit < 0x80) {
        return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
    }
    if (unit == kFinalSigma) {
        return kCapitalSigma;
    }
    const auto* range = std::find_if(std::begin(kSmallLetters), std::end(kSmallLetters),
                                     [unit](const Range& r) { return Contains(r, unit); });
    return range == std::end(kSmallLetters) ? unit : static_cast<char16_t>(unit + range->toCapital);
}

char16_t Small(char16_t unit) {
    if (unit < 0x80) {
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
    }
    const auto* range = std::find_if(std::begin(kSmallLetters), std::end(kSmallLetters),
                                     [unit](const Range& r) { return Contains(r, unit - r.toCapital); });
    return range == std::end(kSmallLetters) ? unit : static_cast<char16_t>(unit - range->toCapital);
}

}  // namespace

Text UCase(TextView text) {
    Text result(text);
    std::transform(result.begin(), result.end(), result.begin(), Capital);
    return result;
}

Text LCase(TextView text) {
    Text result(text);
    std::transform(result.begin(), result.end(), result.begin(), Small);
    return result;
}

bool EqualNoCase(TextView left, TextView right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char16_t a, char16_t b) { return a == b || Capital(a) == Capital(b); });
}

}  // namespace quardele::basic
