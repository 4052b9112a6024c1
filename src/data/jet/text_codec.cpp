#include "text_codec.h"

#include <algorithm>
#include <array>

namespace quardele::jet {

namespace {

constexpr std::uint8_t kCompressedFirst = 0xFF;
constexpr std::uint8_t kCompressedSecond = 0xFE;

/// Windows code page 1252, 0x80 to 0x9F; all other codes are those of Unicode. The five codes without a
/// character stand for the control character of the same number.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendNarrow(std::span<const std::uint8_t> bytes, basic::Text& result) {
    for (const std::uint8_t byte : bytes) {
        result += byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80u] : static_cast<char16_t>(byte);
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

// Ordinary letters, stored one byte each.
[[nodiscard]] bool IsAscii(std::span<const std::uint8_t> bytes) {
    return std::none_of(bytes.begin(), bytes.end(),
                        [](std::uint8_t byte) { return byte == 0 || byte >= 0x80; });
}

[[nodiscard]] bool IsCompressible(basic::TextView text) {
    return text.size() > 2 &&
           std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit >= 1 && unit <= 0xFF; });
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
    const auto letters = format.wideText && IsCompressed(bytes) ? bytes.subspan(2) : bytes;
    if ((!format.wideText || IsCompressed(bytes)) && IsAscii(letters)) {
        utf8.resize(utf8.size() + letters.size());
        std::copy(letters.begin(), letters.end(), utf8.end() - static_cast<std::ptrdiff_t>(letters.size()));
    } else {
        utf8 += basic::ToUtf8(DecodeText(stored, format));
    }
}

basic::Text DecodePlainText(const ByteView& stored) {
    basic::Text result;
    AppendPlain(stored.Span(), result);
    return result;
}

std::vector<std::uint8_t> EncodeText(basic::TextView text, bool compress) {
    std::vector<std::uint8_t> bytes;
    if (compress && IsCompressible(text)) {
        bytes = {kCompressedFirst, kCompressedSecond};
        for (const char16_t unit : text) {
            bytes.push_back(static_cast<std::uint8_t>(unit));
        }
        return bytes;
    }
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    return bytes;
}

}  // namespace quardele::jet
