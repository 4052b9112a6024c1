#include "section_layout.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "object_layout.h"
#include "text_lines.h"

namespace quardele::engine {

void MoveDown(Pieces& pieces, qreal distance) {
    for (Piece& piece : pieces) {
        piece.area.translate(0, distance);
    }
}

Strip SectionLayout::Lay(const CompiledSection& section, const Position& position) const {
    if (section.suppress && evaluator_.Holds(*section.suppress, position)) {
        return {};
    }
    ObjectLayout layout(evaluator_, materials_, position);
    Strip strip = layout.Lay(section.objects, section.section->height);
    return section.section->suppressBlank && !layout.HasFieldText() ? Strip() : strip;
}

Strip SectionLayout::Lay(const CompiledSections& sections, const Position& position) const {
    Strip all;
    for (const CompiledSection& section : sections) {
        Strip strip = Lay(section, position);
        MoveDown(strip.pieces, all.height);
        all.height += strip.height;
        std::move(strip.pieces.begin(), strip.pieces.end(), std::back_inserter(all.pieces));
    }
    return all;
}

qreal SectionLayout::Room(const CompiledSections& sections, const Position& position) const {
    const ObjectLayout layout(evaluator_, materials_, position);
    qreal room = 0;
    for (const CompiledSection& section : sections) {
        const bool isLeftOut =
            section.suppress && !section.suppress->onRecord && evaluator_.Holds(*section.suppress, position);
        room += isLeftOut ? 0 : layout.HeightOf(section.objects, section.section->height);
    }
    return room;
}

void SectionLayout::Resolve(Piece& piece, int page, int pages) const {
    auto* const text = std::get_if<TextMark>(&piece.mark);
    if (text == nullptr || text->pending < 0) {
        return;
    }
    const PendingText& pending = materials_.pending[static_cast<std::size_t>(text->pending)];
    Position position = pending.position;
    position.page = page;
    position.pages = pages;
    const QFontMetricsF& metrics = materials_.fonts.Metrics(text->font);
    const QString whole = FieldText(evaluator_, *pending.value, pending.format, position);
    text->text = FittingLines(whole, metrics, piece.area.width(), 1).value(0);
    const qreal width = metrics.horizontalAdvance(text->text);
    piece.area.moveLeft(LeftOf(piece.area.left(), piece.area.width(), width, pending.alignment));
    piece.area.setWidth(width);
}

}  // namespace quardele::engine
