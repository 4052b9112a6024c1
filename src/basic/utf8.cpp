// Conversion between UTF-16 and UTF-8. What is ill-formed becomes U+FFFD, one per wrong unit or sequence.

#include <basic/text.h>

namespace quardele::basic {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCodePoint = 0x10FFFF;

constexpr bool IsSurrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}
constexpr bool IsHighSurrogate(char16_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char16_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

void AppendUtf16(Text& text, char32_t c) {
    if (c < 0x10000) {
        text.push_back(static_cast<char16_t>(c));
        return;
    }
    text.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
}

void AppendUtf8(std::string& utf8, char32_t c) {
    const auto append = [&utf8](char32_t byte) { utf8.push_back(static_cast<char>(byte)); };
    if (c < 0x80) {
        append(c);
        return;
    }
    if (c < 0x800) {
        append(0xC0 | (c >> 6));
    } else {
        if (c < 0x10000) {
            append(0xE0 | (c >> 12));
        } else {
            append(0xF0 | (c >> 18));
            append(0x80 | ((c >> 12) & 0x3F));
        }
        append(0x80 | ((c >> 6) & 0x3F));
    }
    append(0x80 | (c & 0x3F));
}

/// What a first byte announces: how many bytes follow, its own bits, the least value that needs that many.
struct Lead {
    std::size_t following;
    char32_t bits;
    char32_t least;
};

Lead LeadOf(unsigned char byte) {
    if (byte >= 0xC2 && byte <= 0xDF) {
        return {1, byte & 0x1FU, 0x80};
    }
    if (byte >= 0xE0 && byte <= 0xEF) {
        return {2, byte & 0x0FU, 0x800};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        return {3, byte & 0x07U, 0x10000};
    }
    return {0, kReplacement, 0};
}

/// Reads the character at `at`, which is moved behind it; a broken sequence ends where it breaks.
char32_t NextCodePoint(std::string_view utf8, std::size_t& at) {
    const auto first = static_cast<unsigned char>(utf8[at++]);
    if (first < 0x80) {
        return first;
    }
    const Lead lead = LeadOf(first);
    char32_t c = lead.bits;
    for (std::size_t i = 0; i < lead.following; ++i) {
        if (at == utf8.size() || (static_cast<unsigned char>(utf8[at]) & 0xC0U) != 0x80) {
            return kReplacement;
        }
        c = (c << 6) | (static_cast<unsigned char>(utf8[at++]) & 0x3FU);
    }
    const bool wellFormed = c >= lead.least && c <= kLastCodePoint && !IsSurrogate(c);
    return wellFormed ? c : kReplacement;
}

}  // namespace

Text FromUtf8(std::string_view utf8) {
    Text text;
    text.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        AppendUtf16(text, NextCodePoint(utf8, at));
    }
    return text;
}

std::string ToUtf8(TextView text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            const char32_t high = unit - 0xD800U;
            const char32_t low = text[++i] - 0xDC00U;
            AppendUtf8(utf8, 0x10000 + (high << 10) + low);
        } else {
            AppendUtf8(utf8, IsSurrogate(unit) ? kReplacement : unit);
        }
    }
    return utf8;
}

}  // namespace quardele::basic
