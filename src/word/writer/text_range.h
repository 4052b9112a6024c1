// Stretches of text: read and written, and the texts that they lie in.
#pragma once

#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextCursor.hpp>
#include <com/sun/star/text/XTextRange.hpp>

#include "uno_support.h"

namespace quardele::word::writer {

/// A cursor of the text over the same stretch. The view's own cursor neither reads nor writes in a table
/// cell.
[[nodiscard]] Reference<css::text::XTextCursor> ModelCursor(const Reference<css::text::XTextRange>& range);
/// The text of a stretch, with carriage returns for paragraph ends.
[[nodiscard]] Text TextOf(const Reference<css::text::XTextRange>& range);

/// Whether a stretch lies in a text, cells of its tables included.
[[nodiscard]] bool Contains(const Reference<css::text::XText>& text,
                            const Reference<css::text::XTextRange>& range);

}  // namespace quardele::word::writer
