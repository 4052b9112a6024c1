// Bytes looked at eight at a time, as one number: for passages over much text.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace quardele::basic {

inline constexpr std::size_t kBytesPerWord = sizeof(std::uint64_t);

/// The eight bytes at a place. Which of them comes first in the number is of no matter here.
[[nodiscard]] inline std::uint64_t LoadWord(const void* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, kBytesPerWord);
    return word;
}

/// The same byte eight times.
[[nodiscard]] constexpr std::uint64_t Repeated(unsigned char byte) {
    return 0x0101010101010101u * byte;
}

/// Whether a byte of the word is less than `bound`, which is 128 at the most: such a byte borrows, and was
/// below 128 itself.
[[nodiscard]] constexpr bool HasByteBelow(std::uint64_t word, unsigned char bound) {
    return ((word - Repeated(bound)) & ~word & Repeated(0x80)) != 0;
}

/// Whether a byte of the word is this one.
[[nodiscard]] constexpr bool HasByte(std::uint64_t word, unsigned char byte) {
    return HasByteBelow(word ^ Repeated(byte), 1);
}

/// Whether the predicate holds for one of the words that a text is made of; some bytes may be in two of them.
/// A text that is shorter than a word is filled up with letters.
template <class Predicate>
[[nodiscard]] bool AnyWord(std::string_view text, Predicate predicate) {
    if (text.size() < kBytesPerWord) {
        std::uint64_t word = Repeated('a');
        if (!text.empty()) {
            std::memcpy(&word, text.data(), text.size());
        }
        return predicate(word);
    }
    const std::size_t last = text.size() - kBytesPerWord;
    for (std::size_t at = 0; at < last; at += kBytesPerWord) {
        if (predicate(LoadWord(text.data() + at))) {
            return true;
        }
    }
    return predicate(LoadWord(text.data() + last));
}

}  // namespace quardele::basic
