#include "indexes/entry_ends.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace quardele::jet {

namespace {

constexpr std::size_t kWordBits = 64;
constexpr std::size_t kWordBytes = 8;

std::size_t WordCount(std::span<const std::uint8_t> bits) {
    return (bits.size() + kWordBytes - 1) / kWordBytes;
}

std::uint64_t Word(std::span<const std::uint8_t> bits, std::size_t word) {
    const auto bytes = bits.subspan(word * kWordBytes);
    std::uint64_t value = 0;
    if (std::endian::native == std::endian::little && bytes.size() >= kWordBytes) {
        std::memcpy(&value, bytes.data(), kWordBytes);
        return value;
    }
    for (std::size_t i = 0; i < std::min(kWordBytes, bytes.size()); ++i) {
        value |= std::uint64_t{bytes[i]} << i * 8;
    }
    return value;
}

void StoreWord(std::span<std::uint8_t> bits, std::size_t word, std::uint64_t value) {
    const auto bytes = bits.subspan(word * kWordBytes);
    if (std::endian::native == std::endian::little && bytes.size() >= kWordBytes) {
        std::memcpy(bytes.data(), &value, kWordBytes);
        return;
    }
    for (std::uint8_t& byte : bytes.first(std::min(kWordBytes, bytes.size()))) {
        byte = static_cast<std::uint8_t>(value & 0xFF);
        value >>= 8;
    }
}

// Ones in the bits up to `last`.
std::uint64_t UpTo(std::size_t last) {
    return ~std::uint64_t{0} >> (kWordBits - 1 - last);
}

// The 64 bits from `from` on; zeros outside.
std::uint64_t WordAt(std::span<const std::uint8_t> bits, std::ptrdiff_t from) {
    const auto words = static_cast<std::ptrdiff_t>(WordCount(bits));
    const std::ptrdiff_t word = from >= 0 ? from / 64 : -((63 - from) / 64);
    const auto shift = static_cast<unsigned>(from - word * 64);
    const auto at = [&](std::ptrdiff_t index) {
        return index >= 0 && index < words ? Word(bits, static_cast<std::size_t>(index)) : 0;
    };
    return shift == 0 ? at(word) : at(word) >> shift | at(word + 1) << (kWordBits - shift);
}

void SetBit(std::span<std::uint8_t> bits, std::size_t bit) {
    bits[bit / 8] = static_cast<std::uint8_t>(bits[bit / 8] | 1u << bit % 8);
}

void ClearBits(std::span<std::uint8_t> bits, std::size_t first, std::size_t count) {
    for (std::size_t bit = first; bit < first + count; ++bit) {
        bits[bit / 8] = static_cast<std::uint8_t>(bits[bit / 8] & ~(1u << bit % 8));
    }
}

}  // namespace

std::optional<std::size_t> NextBit(std::span<const std::uint8_t> bits, std::size_t from) {
    const std::size_t words = WordCount(bits);
    std::size_t word = from / kWordBits;
    if (word >= words) {
        return std::nullopt;
    }
    std::uint64_t value = Word(bits, word) & ~std::uint64_t{0} << from % kWordBits;
    while (value == 0) {
        if (++word == words) {
            return std::nullopt;
        }
        value = Word(bits, word);
    }
    return word * kWordBits + static_cast<std::size_t>(std::countr_zero(value));
}

std::optional<std::size_t> PreviousBit(std::span<const std::uint8_t> bits, std::size_t to) {
    std::size_t word = std::min(to / kWordBits, WordCount(bits) - 1);
    std::uint64_t value = Word(bits, word) & (to / kWordBits == word ? UpTo(to % kWordBits) : UpTo(63));
    while (value == 0) {
        if (word-- == 0) {
            return std::nullopt;
        }
        value = Word(bits, word);
    }
    return word * kWordBits + kWordBits - 1 - static_cast<std::size_t>(std::countl_zero(value));
}

std::size_t CountBits(std::span<const std::uint8_t> bits) {
    std::size_t count = 0;
    for (std::size_t word = 0; word < WordCount(bits); ++word) {
        count += static_cast<std::size_t>(std::popcount(Word(bits, word)));
    }
    return count;
}

// From the last word to the first, because each takes bits from those before it.
void InsertEnd(std::span<std::uint8_t> bits, std::size_t at, std::size_t count) {
    const std::size_t first = at / kWordBits;
    for (std::size_t word = WordCount(bits); word-- > first;) {
        const auto from = static_cast<std::ptrdiff_t>(word * kWordBits) - static_cast<std::ptrdiff_t>(count);
        const std::uint64_t kept = word == first ? UpTo(at % kWordBits) : 0;
        const std::uint64_t old = Word(bits, word);
        StoreWord(bits, word, (WordAt(bits, from) & ~kept) | (old & kept));
    }
    // Bits before the gap have come up with those behind it.
    ClearBits(bits, at + 1, count - 1);
    SetBit(bits, at + count);
}

void RemoveEnd(std::span<std::uint8_t> bits, std::size_t at, std::size_t count) {
    const std::size_t first = at / kWordBits;
    const std::size_t words = WordCount(bits);
    for (std::size_t word = first; word < words; ++word) {
        const std::uint64_t kept = word == first ? UpTo(at % kWordBits) : 0;
        const std::uint64_t old = Word(bits, word);
        const std::uint64_t moved = WordAt(bits, static_cast<std::ptrdiff_t>(word * kWordBits + count));
        StoreWord(bits, word, (moved & ~kept) | (old & kept));
    }
}

}  // namespace quardele::jet
