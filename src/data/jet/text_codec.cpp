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
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        result += static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8);
    }
}

// A zero byte switches between one and two bytes per unit.
void AppendCompressed(std::span<const std::uint8_t> bytes, basic::Text& result) {
    bool wide = false;
    for (std::size_t i = 0; i < bytes.size();) {
        if (bytes[i] == 0) {
            wide = !wide;
            ++i;
        } else if (!wide) {
            result += static_cast<char16_t>(bytes[i]);
            ++i;
        } else {
            AppendPlain(bytes.subspan(i, std::min<std::size_t>(2, bytes.size() - i)), result);
            i += 2;
        }
    }
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
    } else if (bytes.size() >= 2 && bytes[0] == kCompressedFirst && bytes[1] == kCompressedSecond) {
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
