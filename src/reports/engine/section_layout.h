// Sections at a record, with everything at its place.
#pragma once

#include <vector>

#include "compiled_section.h"
#include "content.h"
#include "evaluator.h"
#include "font_table.h"
#include "picture_table.h"

namespace quardele::engine {

/// A section, or several one below the other; its pieces count from its own top.
struct Strip {
    Pieces pieces;
    qreal height = 0;
};

/// A text that depends on pages. Its piece is as wide as its room until it is known.
struct PendingText {
    const CompiledFormula* value = nullptr;
    QString format;
    Position position;
    Qt::Alignment alignment;
};

/// What all sections of a document share.
struct Materials {
    FontTable fonts;
    PictureTable pictures;
    std::vector<PendingText> pending;
};

class SectionLayout {
 public:
    SectionLayout(const Evaluator& evaluator, Materials& materials)
        : evaluator_(evaluator), materials_(materials) {}

    /// Empty where the section is left out.
    [[nodiscard]] Strip Lay(const CompiledSection& section, const Position& position) const;
    /// One below the other.
    [[nodiscard]] Strip Lay(const CompiledSections& sections, const Position& position) const;
    /// The height that sections need at most on a page whose records are not known yet. Only page numbers
    /// leave one out for certain.
    [[nodiscard]] qreal Room(const CompiledSections& sections, const Position& position) const;
    /// Puts the text of a piece in, now that the pages are known.
    void Resolve(Piece& piece, int page, int pages) const;

 private:
    const Evaluator& evaluator_;
    Materials& materials_;
};

/// Moves pieces down.
void MoveDown(Pieces& pieces, qreal distance);

}  // namespace quardele::engine
