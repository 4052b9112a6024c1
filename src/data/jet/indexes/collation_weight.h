// What one UTF-16 unit contributes to a sort key. A key is built in three levels: bytes that decide first
// ("inline"), accents ("extra"), and codes of hyphens, apostrophes and controls with their positions.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace quardele::jet::collation {

enum class UnitKind : std::uint8_t {
    Ignored,     ///< contributes nothing
    Simple,      ///< inline bytes only
    Accented,    ///< inline bytes and an accent
    Positional,  ///< a code at the third level
    Modifier,    ///< changes the accent of the unit before
};

struct UnitWeight {
    UnitKind kind = UnitKind::Ignored;
    std::uint8_t inlineLength = 0;
    std::uint8_t extraLength = 0;
    std::array<std::uint8_t, 2> inlineBytes{};
    std::array<std::uint8_t, 2> extra{};  ///< for Positional and Modifier their code

    [[nodiscard]] constexpr std::span<const std::uint8_t> Inline() const {
        return std::span(inlineBytes).first(inlineLength);
    }
    [[nodiscard]] constexpr std::span<const std::uint8_t> Extra() const {
        return std::span(extra).first(extraLength);
    }
};

/// Weights of consecutive units from `first` on.
struct UnitRange {
    char16_t first;
    std::span<const UnitWeight> weights;
};

// The notation of the tables: X ignored, S simple, I accented, U positional, P modifier; 2 marks two bytes.
inline constexpr UnitWeight X{};

constexpr std::array<std::uint8_t, 2> One(unsigned byte) {
    return {static_cast<std::uint8_t>(byte), 0};
}
constexpr std::array<std::uint8_t, 2> Two(unsigned pair) {
    return {static_cast<std::uint8_t>(pair >> 8), static_cast<std::uint8_t>(pair & 0xFF)};
}
constexpr UnitWeight S(unsigned byte) {
    return {UnitKind::Simple, 1, 0, One(byte), {}};
}
constexpr UnitWeight S2(unsigned pair) {
    return {UnitKind::Simple, 2, 0, Two(pair), {}};
}
constexpr UnitWeight I(unsigned byte, unsigned accent) {
    return {UnitKind::Accented, 1, 1, One(byte), One(accent)};
}
constexpr UnitWeight I2(unsigned pair, unsigned accent) {
    return {UnitKind::Accented, 2, 1, Two(pair), One(accent)};
}
constexpr UnitWeight I22(unsigned pair, unsigned accents) {
    return {UnitKind::Accented, 2, 2, Two(pair), Two(accents)};
}
constexpr UnitWeight U(unsigned code) {
    return {UnitKind::Positional, 0, 1, {}, One(code)};
}
constexpr UnitWeight P(unsigned code) {
    return {UnitKind::Modifier, 0, 1, {}, One(code)};
}

}  // namespace quardele::jet::collation
