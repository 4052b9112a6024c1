#include "rows/text_codec.h"

#include <algorithm>
#include <array>
#include <cstring>

#include <basic/byte_words.h>
#include <basic/runtime_error.h>
#include <basic/western.h>

namespace quardele::jet {

namespace {

constexpr std::uint8_t kCompressedFirst = 0xFF;
constexpr std::uint8_t kCompressedSecond = 0xFE;
/// In compressed text: from here on the units have two bytes instead of one, or the other way round.
constexpr std::uint8_t kSwitch = 0;

void AppendNarrow(std::span<const std::uint8_t> bytes, basic::Text& result) {
    for (const std::uint8_t byte : bytes) {
        result += basic::FromWestern(byte);
    }
}

void AppendPlain(std::span<const std::uint8_t> bytes, basic::Text& result) {
    const std::size_t units = bytes.size() / 2;
    const std::size_t start = result.size();
    result.resize(start + units);
    for (std::size_t i = 0; i < units; ++i) {
        result[start + i] = static_cast<char16_t>(bytes[2 * i] | bytes[2 * i + 1] << 8);
    }
}

// One byte per unit.
void AppendLatin1(std::span<const std::uint8_t> bytes, basic::Text& result) {
    const std::size_t start = result.size();
    result.resize(start + bytes.size());
    std::copy(bytes.begin(), bytes.end(), result.begin() + static_cast<std::ptrdiff_t>(start));
}

// A zero byte switches between one and two bytes per unit.
void AppendCompressed(std::span<const std::uint8_t> bytes, basic::Text& result) {
    bool wide = false;
    while (!bytes.empty()) {
        std::size_t length = 0;
        if (wide) {
            while (length + 1 < bytes.size() && bytes[length] != 0) {
                length += 2;
            }
            AppendPlain(bytes.first(length), result);
            length += bytes.size() - length == 1 && bytes[length] != 0 ? 1 : 0;  // half a unit at the end
        } else {
            length = static_cast<std::size_t>(std::find(bytes.begin(), bytes.end(), 0) - bytes.begin());
            AppendLatin1(bytes.first(length), result);
        }
        wide = !wide;
        bytes = bytes.subspan(std::min(length + 1, bytes.size()));
    }
}

[[nodiscard]] bool IsCompressed(std::span<const std::uint8_t> bytes) {
    return bytes.size() >= 2 && bytes[0] == kCompressedFirst && bytes[1] == kCompressedSecond;
}

// Whether a byte, or each byte of a word, is an ordinary letter: its code is the same in UTF-8.
[[nodiscard]] bool IsAscii(std::uint64_t word) {
    return (word & basic::Repeated(0x80)) == 0;
}

[[nodiscard]] bool IsAscii(std::span<const std::uint8_t> bytes) {
    return !basic::AnyWord({reinterpret_cast<const char*>(bytes.data()), bytes.size()},
                           [](std::uint64_t word) { return !IsAscii(word); });
}

// The bytes of a text of ordinary letters, one byte for each; empty for any other text.
[[nodiscard]] std::string_view LettersOf(std::span<const std::uint8_t> bytes, const Format& format) {
    if (format.wideText) {
        if (!IsCompressed(bytes)) {
            return {};
        }
        bytes = bytes.subspan(2);
    }
    const std::string_view letters(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const bool isOther = basic::AnyWord(
        letters, [](std::uint64_t word) { return !IsAscii(word) || basic::HasByte(word, kSwitch); });
    return isOther ? std::string_view() : letters;
}

// Returns the place behind the one or two bytes.
[[nodiscard]] char* PutAsUtf8(std::uint8_t code, char* at) {
    *at = static_cast<char>(0xC0 | code >> 6);
    at += code >> 7;
    *at = static_cast<char>(code < 0x80 ? code : 0x80 | (code & 0x3F));
    return at + 1;
}

// The same for many.
[[nodiscard]] char* PutAsUtf8(std::span<const std::uint8_t> codes, char* at) {
    while (codes.size() >= basic::kBytesPerWord) {
        const auto eight = codes.first(basic::kBytesPerWord);
        if (IsAscii(basic::LoadWord(eight.data()))) {
            at = std::copy(eight.begin(), eight.end(), at);
        } else {
            for (const std::uint8_t code : eight) {
                at = PutAsUtf8(code, at);
            }
        }
        codes = codes.subspan(basic::kBytesPerWord);
    }
    for (const std::uint8_t code : codes) {
        at = PutAsUtf8(code, at);
    }
    return at;
}

// The usual texts, straight to UTF-8: no code takes more than two bytes of it. False, and nothing appended,
// for one that switches to two bytes per unit.
[[nodiscard]] bool AppendLatin1AsUtf8(std::span<const std::uint8_t> bytes, std::string& utf8) {
    if (!bytes.empty() && std::memchr(bytes.data(), 0, bytes.size()) != nullptr) {
        return false;
    }
    std::array<char, 256> piece;
    while (!bytes.empty()) {
        const auto part = bytes.first(std::min(bytes.size(), piece.size() / 2));
        utf8.append(piece.data(), PutAsUtf8(part, piece.data()));
        bytes = bytes.subspan(part.size());
    }
    return true;
}

// The same for units of two bytes; no unit takes more than three. False for one with surrogates.
[[nodiscard]] bool AppendWideAsUtf8(std::span<const std::uint8_t> bytes, std::string& utf8) {
    const std::size_t start = utf8.size();
    const std::size_t units = bytes.size() / 2;
    utf8.resize(start + units * 3);
    char* at = utf8.data() + start;
    for (std::size_t i = 0; i < units; ++i) {
        const unsigned unit = bytes[2 * i] | static_cast<unsigned>(bytes[2 * i + 1]) << 8;
        if (unit < 0x80) {
            *at++ = static_cast<char>(unit);
            continue;
        }
        if (unit >= 0xD800 && unit < 0xE000) {
            utf8.resize(start);
            return false;
        }
        if (unit < 0x800) {
            *at++ = static_cast<char>(0xC0 | unit >> 6);
        } else {
            *at++ = static_cast<char>(0xE0 | unit >> 12);
            *at++ = static_cast<char>(0x80 | (unit >> 6 & 0x3F));
        }
        *at++ = static_cast<char>(0x80 | (unit & 0x3F));
    }
    utf8.resize(static_cast<std::size_t>(at - utf8.data()));
    return true;
}

[[nodiscard]] bool IsCompressible(basic::TextView text) {
    return text.size() > 2 &&
           std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit >= 1 && unit <= 0xFF; });
}

void AppendUnits(basic::TextView text, std::vector<std::uint8_t>& bytes) {
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
}

// Plain, its first unit would pass for the mark of a compressed text.
[[nodiscard]] bool LooksCompressed(basic::TextView text) {
    return !text.empty() && text.front() == (kCompressedSecond << 8 | kCompressedFirst);
}

// Compressed, with two bytes for every unit; none of them may begin with the byte that ends such a passage.
[[nodiscard]] std::vector<std::uint8_t> EncodeMarked(basic::TextView text) {
    if (std::any_of(text.begin(), text.end(), [](char16_t unit) { return (unit & 0xFF) == kSwitch; })) {
        throw basic::RuntimeError(basic::error::kTypeConversion);
    }
    std::vector<std::uint8_t> bytes = {kCompressedFirst, kCompressedSecond, kSwitch};
    AppendUnits(text, bytes);
    return bytes;
}

}  // namespace

void DecodeText(const ByteView& stored, const Format& format, basic::Text& result) {
    result.clear();
    const auto bytes = stored.Span();
    if (!format.wideText) {
        AppendNarrow(bytes, result);
    } else if (IsCompressed(bytes)) {
        AppendCompressed(bytes.subspan(2), result);
    } else {
        AppendPlain(bytes, result);
    }
}

basic::Text DecodeText(const ByteView& stored, const Format& format) {
    basic::Text result;
    DecodeText(stored, format, result);
    return result;
}

bool IsWholeText(const ByteView& stored, const Format& format) {
    return !format.wideText || IsCompressed(stored.Span()) || stored.Size() % 2 == 0;
}

void AppendUtf8(const ByteView& stored, const Format& format, std::string& utf8) {
    const auto bytes = stored.Span();
    const bool isCompressed = format.wideText && IsCompressed(bytes);
    const bool isDone = isCompressed      ? AppendLatin1AsUtf8(bytes.subspan(2), utf8)
                        : format.wideText ? AppendWideAsUtf8(bytes, utf8)
                                          : IsAscii(bytes) && AppendLatin1AsUtf8(bytes, utf8);
    if (!isDone) {
        utf8 += basic::ToUtf8(DecodeText(stored, format));
    }
}

std::string_view Utf8Of(const ByteView& stored, const Format& format, std::string& text) {
    const std::string_view letters = LettersOf(stored.Span(), format);
    if (!letters.empty()) {
        return letters;
    }
    text.clear();
    AppendUtf8(stored, format, text);
    return text;
}

basic::Text DecodePlainText(const ByteView& stored) {
    basic::Text result;
    AppendPlain(stored.Span(), result);
    return result;
}

std::vector<std::uint8_t> EncodePlainText(basic::TextView text) {
    std::vector<std::uint8_t> bytes;
    AppendUnits(text, bytes);
    return bytes;
}

std::vector<std::uint8_t> EncodeText(basic::TextView text, bool compress) {
    if (compress && IsCompressible(text)) {
        std::vector<std::uint8_t> bytes = {kCompressedFirst, kCompressedSecond};
        for (const char16_t unit : text) {
            bytes.push_back(static_cast<std::uint8_t>(unit));
        }
        return bytes;
    }
    return LooksCompressed(text) ? EncodeMarked(text) : EncodePlainText(text);
}

}  // namespace quardele::jet
