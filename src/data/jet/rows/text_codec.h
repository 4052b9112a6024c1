// Stored text: UTF-16, compressed or plain, in Access 2000-2003; eight bits per character in Access 97.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <basic/text.h>

#include "bytes.h"
#include "format.h"

namespace quardele::jet {

/// The text that stored bytes mean. An odd last byte of plain text is passed over.
void DecodeText(const ByteView& stored, const Format& format, basic::Text& result);
[[nodiscard]] basic::Text DecodeText(const ByteView& stored, const Format& format);

/// Whether the stored bytes are a number of whole units, as every writer leaves them.
[[nodiscard]] bool IsWholeText(const ByteView& stored, const Format& format);

/// Appends the text in UTF-8.
void AppendUtf8(const ByteView& stored, const Format& format, std::string& utf8);

/// The text in UTF-8: where it is stored like that the stored bytes themselves, else put into `text`.
[[nodiscard]] std::string_view Utf8Of(const ByteView& stored, const Format& format, std::string& text);

/// UTF-16 little-endian as it stands: names, properties.
[[nodiscard]] basic::Text DecodePlainText(const ByteView& stored);
[[nodiscard]] std::vector<std::uint8_t> EncodePlainText(basic::TextView text);

/// The stored form for Access 2000-2003; compressed when that is allowed, possible and saves anything, and
/// when the text begins with U+FEFF. Throws 3421 for such a text that holds a unit with a low byte of zero as
/// well: it has no stored form.
[[nodiscard]] std::vector<std::uint8_t> EncodeText(basic::TextView text, bool compress);

}  // namespace quardele::jet
