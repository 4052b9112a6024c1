// The moves of the selection.
#include <com/sun/star/text/XParagraphCursor.hpp>
#include <com/sun/star/text/XWordCursor.hpp>
#include <com/sun/star/view/XLineCursor.hpp>
#include <com/sun/star/view/XViewCursor.hpp>

#include <algorithm>
#include <limits>

#include "behind_selection.h"
#include "cells.h"
#include "footnotes.h"
#include "selection.h"
#include "story.h"
#include "tables.h"
#include "text_range.h"
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
constexpr int kNext = 2;
constexpr int kFootnote = 4;

bool ExtendsAt(const Arguments& arguments, std::size_t position) {
    return arguments.IntegerAt(position, u"Extend", 0) != 0;
}

int CountOf(const Arguments& arguments) {
    const int count = arguments.IntegerAt(1, u"Count", 1);
    if (count < 0) {
        throw Failure(WordError::BadParameter);
    }
    return count;
}

/// Has `go` move by so many, in steps that the view's cursor can count; it stops where there is no further.
template <class Go>
void InSteps(int count, const Go& go) {
    constexpr int kLongest = std::numeric_limits<sal_Int16>::max();
    while (count > 0) {
        const int step = std::min(count, kLongest);
        if (!go(static_cast<sal_Int16>(step))) {
            return;
        }
        count -= step;
    }
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

void Selection::MoveByWords(int count, bool extend) {
    // The view's own cursor knows no words.
    const auto cursor = ModelCursor(Doc()->Cursor().get());
    const Reference<css::text::XWordCursor> words(cursor, UNO_QUERY_THROW);
    for (int step = 0; step < count; ++step) {
        words->gotoNextWord(extend);
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
    const int unit = arguments.IntegerAt(0, u"Unit", kCharacter);
    if (unit == kWord && forward) {
        MoveByWords(count, extend);
        return;
    }
    switch (unit) {
        case kCharacter:
            InSteps(count, [&](sal_Int16 step) {
                return forward ? cursor->goRight(step, extend) : cursor->goLeft(step, extend);
            });
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
    const bool toNextTable = arguments.IntegerAt(0, u"What", kTable) == kTable &&
                             arguments.IntegerAt(1, u"Which", kNext) == kNext &&
                             arguments.IntegerAt(2, u"Count", 1) == 1;
    if (!toNextTable) {
        throw Failure(WordError::BadParameter);
    }
    const TableList tables = BodyTables(*Doc());
    const BehindSelection behind(*Doc());
    const auto next = std::find_if(tables.begin(), tables.end(),
                                   [&](const auto& table) { return behind(table->getAnchor()); });
    if (next != tables.end()) {
        const auto first = (*next)->getCellByName((*next)->getCellNames()[0]);
        Doc()->Cursor()->gotoRange(Reference<XText>(first, UNO_QUERY_THROW)->getStart(), false);
    }
    return {};
}

Value Selection::GoToNext(const Arguments& arguments) {
    if (arguments.IntegerAt(0, u"What") != kFootnote) {
        throw Failure(WordError::BadParameter);
    }
    if (const auto note = NextFootnote(*Doc()); note.is()) {
        Doc()->Cursor()->gotoRange(note->getAnchor()->getStart(), false);
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
            InSteps(count, [&](sal_Int16 step) {
                return Reference<css::view::XViewCursor>(Doc()->Cursor(), UNO_QUERY_THROW)
                    ->goDown(step, extend);
            });
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
