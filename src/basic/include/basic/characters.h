// Kinds of characters that mean the same in every language that the program reads.
#pragma once

namespace quardele::basic {

[[nodiscard]] constexpr bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

/// What separates the words of statements and formulas: blanks, the one that does not break included, tabs
/// and ends of lines.
[[nodiscard]] constexpr bool IsBlank(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n' || unit == u'\u00A0';
}

}  // namespace quardele::basic
