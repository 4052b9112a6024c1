// The moves of the selection.
#include <com/sun/star/text/XFootnotesSupplier.hpp>
#include <com/sun/star/text/XParagraphCursor.hpp>
#include <com/sun/star/text/XTextRangeCompare.hpp>
#include <com/sun/star/text/XWordCursor.hpp>
#include <com/sun/star/view/XLineCursor.hpp>
#include <com/sun/star/view/XViewCursor.hpp>

#include <algorithm>

#include "cells.h"
#include "selection.h"
#include "story.h"
#include "tables.h"
#include "word_error.h"

namespace quardele::word::writer {

namespace {

using css::text::XText;
using css::text::XTextRange;
using css::uno::UNO_QUERY_THROW;

constexpr int kCharacter = 1;
constexpr int kWord = 2;
constexpr int kParagraph = 4;
constexpr int kLine = 5;
constexpr int kStory = 6;
constexpr int kColumn = 9;
constexpr int kRow = 10;
constexpr int kCell = 12;

// What GoTo looks for, and which of them.
constexpr int kTable = 2;
constexpr int kAbsolute = 1;
constexpr int kNext = 2;
constexpr int kPrevious = 3;
constexpr int kFootnote = 4;

bool ExtendsAt(const Arguments& arguments, std::size_t position) {
    return arguments.IntegerAt(position, u"Extend", 0) != 0;
}

int CountOf(const Arguments& arguments) {
    return arguments.IntegerAt(1, u"Count", 1);
}

using Places = std::vector<Reference<XTextRange>>;

/// Whether `place` stands behind the selection, both in the body.
class BehindSelection {
 public:
    explicit BehindSelection(const OpenDocument& document)
        : compare_(document.Model()->getText(), UNO_QUERY_THROW), selection_(document.Cursor().get()) {
        // A table's own place stands for all that is in it.
        if (const auto table = TableUnder(document); table.is()) {
            selection_ = table->getAnchor();
        }
    }
    bool operator()(const Reference<XTextRange>& place) const {
        return compare_->compareRegionStarts(selection_, place) > 0;
    }

 private:
    Reference<css::text::XTextRangeCompare> compare_;
    Reference<XTextRange> selection_;
};

/// The places of all tables of the body.
Places TablePlaces(const OpenDocument& document) {
    Places places;
    for (const auto& table : BodyTables(document)) {
        places.push_back(table->getAnchor());
    }
    return places;
}

/// The number of the place that a jump leads to, from 0; outside the list when there is none. A jump over
/// several ends with the last one there is.
int Destination(const OpenDocument& document, const Places& places, int which, int count) {
    const auto size = static_cast<int>(places.size());
    if (which == kAbsolute) {
        return std::min(count, size) - 1;
    }
    const BehindSelection behind(document);
    const auto next = static_cast<int>(std::find_if(places.begin(), places.end(), behind) - places.begin());
    if (which == kNext) {
        return next == size ? size : std::min(next + count, size) - 1;
    }
    if (which != kPrevious) {
        throw Failure(WordError::BadParameter);
    }
    const bool inTable = TableUnder(document).is();
    return std::max(next - count - (inTable ? 1 : 0), next > (inTable ? 1 : 0) ? 0 : -1);
}

}  // namespace

void Selection::SelectContent(const Reference<XText>& cell) {
    Doc()->Cursor()->gotoRange(cell->getStart(), false);
    Doc()->Cursor()->gotoRange(cell->getEnd(), true);
}

void Selection::GoToEdge(int unit, bool extend, bool end) {
    const auto& cursor = Doc()->Cursor();
    switch (unit) {
        case kLine: {
            const Reference<css::view::XLineCursor> line(cursor, UNO_QUERY_THROW);
            end ? line->gotoEndOfLine(extend) : line->gotoStartOfLine(extend);
            break;
        }
        case kStory: {
            const auto story = StoryUnder(*Doc());
            cursor->gotoRange(end ? story->getEnd() : story->getStart(), extend);
            break;
        }
        case kColumn:
        case kRow: {
            const CellPlace place(*Doc());
            const auto line = unit == kRow ? CellPlace::Line::Row : CellPlace::Line::Column;
            cursor->gotoRange(end ? place.LastOf(line)->getEnd() : place.FirstOf(line)->getStart(), extend);
            break;
        }
        default:
            throw Failure(WordError::BadParameter);
    }
}

void Selection::MoveByWords(int count, bool extend, bool forward) {
    // The view's own cursor knows no words.
    const auto cursor = ModelCursor(Doc()->Cursor().get());
    const Reference<css::text::XWordCursor> words(cursor, UNO_QUERY_THROW);
    for (int step = 0; step < count; ++step) {
        forward ? words->gotoNextWord(extend) : words->gotoPreviousWord(extend);
    }
    Doc()->Cursor()->gotoRange(cursor.get(), false);
}

void Selection::MoveByParagraphs(int count, bool extend) {
    const auto cursor = ModelCursor(Doc()->Cursor().get());
    const Reference<css::text::XParagraphCursor> paragraphs(cursor, UNO_QUERY_THROW);
    for (int step = 0; step < count; ++step) {
        if (!paragraphs->gotoNextParagraph(extend)) {
            paragraphs->gotoEndOfParagraph(extend);
        }
    }
    Doc()->Cursor()->gotoRange(cursor.get(), false);
}

void Selection::MoveByCells(int count, bool forward) {
    for (int step = 0; step < count; ++step) {
        CellPlace place(*Doc());
        SelectContent(forward ? place.Next() : place.Previous());
    }
}

void Selection::Move(const Arguments& arguments, bool forward) {
    const int count = CountOf(arguments);
    const bool extend = ExtendsAt(arguments, 2);
    const auto& cursor = Doc()->Cursor();
    switch (arguments.IntegerAt(0, u"Unit", kCharacter)) {
        case kCharacter:
            forward ? cursor->goRight(static_cast<sal_Int16>(count), extend)
                    : cursor->goLeft(static_cast<sal_Int16>(count), extend);
            break;
        case kWord:
            MoveByWords(count, extend, forward);
            break;
        case kCell:
            MoveByCells(count, forward);
            break;
        default:
            throw Failure(WordError::BadParameter);
    }
}

Value Selection::EndKey(const Arguments& arguments) {
    GoToEdge(arguments.IntegerAt(0, u"Unit", kLine), ExtendsAt(arguments, 1), true);
    return {};
}

Value Selection::GoTo(const Arguments& arguments) {
    if (arguments.IntegerAt(0, u"What", kTable) != kTable) {
        throw Failure(WordError::BadParameter);
    }
    const TableList tables = BodyTables(*Doc());
    const int found = Destination(*Doc(), TablePlaces(*Doc()), arguments.IntegerAt(1, u"Which", kAbsolute),
                                  arguments.IntegerAt(2, u"Count", 1));
    if (found >= 0 && found < static_cast<int>(tables.size())) {
        const auto& table = tables[static_cast<std::size_t>(found)];
        const auto first = table->getCellByName(table->getCellNames()[0]);
        Doc()->Cursor()->gotoRange(Reference<XText>(first, UNO_QUERY_THROW)->getStart(), false);
    }
    return {};
}

Value Selection::GoToNext(const Arguments& arguments) {
    if (arguments.IntegerAt(0, u"What") != kFootnote) {
        throw Failure(WordError::BadParameter);
    }
    const auto notes =
        Reference<css::text::XFootnotesSupplier>(Doc()->Model(), UNO_QUERY_THROW)->getFootnotes();
    const BehindSelection behind(*Doc());
    for (sal_Int32 number = 0; number < notes->getCount(); ++number) {
        const Reference<css::text::XTextContent> note(notes->getByIndex(number), UNO_QUERY_THROW);
        if (Contains(Doc()->Model()->getText(), note->getAnchor()) && behind(note->getAnchor())) {
            Doc()->Cursor()->gotoRange(note->getAnchor()->getStart(), false);
            break;
        }
    }
    return {};
}

Value Selection::HomeKey(const Arguments& arguments) {
    GoToEdge(arguments.IntegerAt(0, u"Unit", kLine), ExtendsAt(arguments, 1), false);
    return {};
}

Value Selection::MoveDown(const Arguments& arguments) {
    const int count = CountOf(arguments);
    const bool extend = ExtendsAt(arguments, 2);
    switch (arguments.IntegerAt(0, u"Unit", kLine)) {
        case kLine:
            Reference<css::view::XViewCursor>(Doc()->Cursor(), UNO_QUERY_THROW)
                ->goDown(static_cast<sal_Int16>(count), extend);
            break;
        case kParagraph:
            MoveByParagraphs(count, extend);
            break;
        default:
            throw Failure(WordError::BadParameter);
    }
    return {};
}

Value Selection::MoveLeft(const Arguments& arguments) {
    Move(arguments, false);
    return {};
}

Value Selection::MoveRight(const Arguments& arguments) {
    Move(arguments, true);
    return {};
}

Value Selection::SelectRow(const Arguments&) {
    const RowSpan rows = SelectedRows(*Doc());
    SelectRows(*Doc(), rows.first, rows.last);
    return {};
}

Value Selection::StartOf(const Arguments& arguments) {
    GoToEdge(arguments.IntegerAt(0, u"Unit", kWord), ExtendsAt(arguments, 1), false);
    return {};
}

}  // namespace quardele::word::writer
