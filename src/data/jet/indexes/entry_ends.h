// The bits of an index page that tell where its entries end.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace quardele::jet {

/// The lowest bit that is set at `from` or behind it; none when there is none. Bit j is bit j % 8 of byte j
/// / 8.
[[nodiscard]] std::optional<std::size_t> NextBit(std::span<const std::uint8_t> bits, std::size_t from);
/// The highest bit that is set at `to` or before it.
[[nodiscard]] std::optional<std::size_t> PreviousBit(std::span<const std::uint8_t> bits, std::size_t to);

/// How many bits are set.
[[nodiscard]] std::size_t CountBits(std::span<const std::uint8_t> bits);

/// Moves all bits behind `at` up by `count`, and sets the bit that ends the new entry in the gap.
void InsertEnd(std::span<std::uint8_t> bits, std::size_t at, std::size_t count);
/// Takes back what InsertEnd did.
void RemoveEnd(std::span<std::uint8_t> bits, std::size_t at, std::size_t count);

}  // namespace quardele::jet
