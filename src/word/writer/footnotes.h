// The footnotes of the body.
#pragma once

#include <com/sun/star/text/XTextContent.hpp>

#include "open_document.h"

namespace quardele::word::writer {

/// The first one behind the selection, which stands in the body; null when there is none.
[[nodiscard]] Reference<css::text::XTextContent> NextFootnote(const OpenDocument& document);

/// Whether the selection stands in the text of a footnote.
[[nodiscard]] bool IsInFootnote(const OpenDocument& document);

}  // namespace quardele::word::writer
