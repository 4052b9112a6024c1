// The stories of a document: the body, and the headers and footers of its pages.
#pragma once

#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextCursor.hpp>
#include <com/sun/star/text/XTextRange.hpp>

#include "open_document.h"

namespace quardele::word::writer {

/// A cursor of the text over the same stretch. The view's own cursor neither reads nor writes in a table
/// cell.
[[nodiscard]] Reference<css::text::XTextCursor> ModelCursor(const Reference<css::text::XTextRange>& range);
/// The text of a stretch, with carriage returns for paragraph ends.
[[nodiscard]] Text TextOf(const Reference<css::text::XTextRange>& range);

/// Whether a stretch lies in a text, cells of its tables included.
[[nodiscard]] bool Contains(const Reference<css::text::XText>& text,
                            const Reference<css::text::XTextRange>& range);
/// The whole story that the selection stands in; the frame's text when it is in a frame.
[[nodiscard]] Reference<css::text::XText> StoryUnder(const OpenDocument& document);

/// The story that the selection stands in, with Word's numbers: 0 body, 1 header, 2 first page's header, 3
/// even pages' header, 4 to 6 the same for footers.
[[nodiscard]] int CurrentStory(const OpenDocument& document);
/// The footer of the header that the selection stands in, or the other way. Throws RuntimeError 4198 in the
/// body, and where there is no next or previous one.
[[nodiscard]] int StoryBeside(const OpenDocument& document, bool next);
/// Moves the selection into a story: the numbers above, 9 and 10 for the header and footer that the current
/// page shows. A header or footer that the page lacks is switched on; back in the body the selection is where
/// it was left. Throws RuntimeError 4120 for other numbers.
void GoToStory(OpenDocument& document, int story);

}  // namespace quardele::word::writer
