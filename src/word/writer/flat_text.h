// A story as Word counts it: one row of characters, in which ends of paragraphs, cells and rows count one
// each.
#pragma once

#include <vector>

#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextRange.hpp>

#include "open_document.h"

namespace quardele::word::writer {

/// A picture of a story at one moment; later changes of the text are not seen. Fields count as the text that
/// they show. Making it walks the whole story.
class FlatText {
 public:
    explicit FlatText(const Reference<css::text::XText>& story);

    /// The 0-based position of a place, in characters. Throws RuntimeError 4120 for one of another story.
    [[nodiscard]] int PositionOf(const Reference<css::text::XTextRange>& place) const;
    /// The text from one position to another, as Word gives it: a carriage return ends a paragraph, a
    /// carriage return and a bell end a cell or row. Throws RuntimeError 4608 for positions that the story
    /// lacks.
    [[nodiscard]] Text Between(int start, int end) const;

 private:
    struct Paragraph {
        int start;
        Reference<css::text::XTextRange> range;
    };

    void AddParagraphs(const Reference<css::text::XText>& text);
    void AddTable(const Reference<css::uno::XInterface>& table);

    /// The story's characters; a bell alone stands for the end of a cell or row.
    Text units_;
    std::vector<Paragraph> paragraphs_;
};

}  // namespace quardele::word::writer
