// The Western code page 1252, in which the characters of older files and of Chr and Asc are numbered.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace quardele::basic {

/// The first code that does not mean the Unicode character of the same number.
inline constexpr std::uint8_t kFirstWesternExtra = 0x80;

/// Codes 0x80 to 0x9F; all others are those of Unicode. The five codes without a character stand for the
/// control character of the same number.
inline constexpr std::array<char16_t, 32> kWesternExtras = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

[[nodiscard]] constexpr char16_t FromWestern(std::uint8_t code) {
    const bool extra = code >= kFirstWesternExtra && code < kFirstWesternExtra + kWesternExtras.size();
    return extra ? kWesternExtras[code - kFirstWesternExtra] : char16_t{code};
}

/// The code of a character, empty when the code page does not have it.
[[nodiscard]] constexpr std::optional<std::uint8_t> ToWestern(char16_t unit) {
    if (unit <= 0xFF && FromWestern(static_cast<std::uint8_t>(unit)) == unit) {
        return static_cast<std::uint8_t>(unit);
    }
    const auto* found = std::find(kWesternExtras.begin(), kWesternExtras.end(), unit);
    if (found == kWesternExtras.end()) {
        return std::nullopt;
    }
    return static_cast<std::uint8_t>(kFirstWesternExtra + (found - kWesternExtras.begin()));
}

}  // namespace quardele::basic
