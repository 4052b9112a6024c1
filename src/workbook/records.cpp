#include "records.h"

#include <algorithm>

namespace quardele::workbook {

void Records::Begin(std::uint16_t identifier) {
    End();
    start_ = bytes_.size();
    open_ = true;
    PutShort(identifier);
    PutShort(0);
}

void Records::End() {
    if (!open_) {
        return;
    }
    const std::size_t length = bytes_.size() - start_ - kHeader;
    bytes_[start_ + 2] = static_cast<char>(length & 0xFF);
    bytes_[start_ + 3] = static_cast<char>(length >> 8);
    open_ = false;
}

void Records::PutUnits(basic::TextView text) {
    const bool wide = IsWide(text);
    PutByte(wide ? 1 : 0);
    PutBareUnits(text, wide);
}

void Records::PutBareUnits(basic::TextView text, bool wide) {
    const std::size_t at = bytes_.size();
    bytes_.resize(at + text.size() * (wide ? 2 : 1));
    char* byte = bytes_.data() + at;
    for (const char16_t unit : text) {
        *byte++ = static_cast<char>(unit & 0xFF);
        if (wide) {
            *byte++ = static_cast<char>(unit >> 8);
        }
    }
}

void Records::PatchLong(std::size_t position, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes_[position + i] = static_cast<char>(value >> (8 * i) & 0xFF);
    }
}

bool IsWide(basic::TextView text) {
    return std::any_of(text.begin(), text.end(), [](char16_t unit) { return unit > 0xFF; });
}

}  // namespace quardele::workbook
