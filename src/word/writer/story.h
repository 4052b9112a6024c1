// The stories of a document: the body, the headers and footers of its pages, the footnotes.
#pragma once

#include <com/sun/star/text/XText.hpp>

#include "open_document.h"

namespace quardele::word::writer {

/// The whole story that the selection stands in; its own text when it is in a frame or a footnote.
[[nodiscard]] Reference<css::text::XText> StoryUnder(const OpenDocument& document);

/// The story that the selection stands in, with Word's numbers: 0 body, 1 header, 2 first page's header, 3
/// even pages' header, 4 to 6 the same for footers, 7 a footnote. One that several kinds of pages share has
/// the lowest number.
[[nodiscard]] int CurrentStory(const OpenDocument& document);
/// The footer of the header that the selection stands in, or the other way. Throws RuntimeError 4198 in the
/// body, and where there is no next or previous one.
[[nodiscard]] int StoryBeside(const OpenDocument& document, bool next);
/// Moves the selection into a story: the numbers above, 9 and 10 for the header and footer that the current
/// page shows. A header or footer that the page lacks is switched on; back in the body the selection is where
/// it was left; of the footnotes it is the first one behind that place. Throws RuntimeError 4198 for a story
/// that the document does not have, 4120 for other numbers.
void GoToStory(OpenDocument& document, int story);

}  // namespace quardele::word::writer
