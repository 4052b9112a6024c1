#include "selection.h"

#include <com/sun/star/view/XLineCursor.hpp>

#include "range.h"
#include "story.h"
#include "tables.h"
#include "word_error.h"

namespace quardele::word::writer {

namespace {

using css::text::XText;
using css::uno::UNO_QUERY_THROW;

constexpr int kCharacter = 1;
constexpr int kLine = 5;
constexpr int kStory = 6;
constexpr int kColumn = 9;
constexpr int kRow = 10;
constexpr int kCell = 12;

bool ExtendsAt(const Arguments& arguments, std::size_t position) {
    return arguments.IntegerAt(position, u"Extend", 0) != 0;
}

int CountOf(const Arguments& arguments) {
    return arguments.IntegerAt(1, u"Count", 1);
}

/// Writer makes a paragraph of a carriage return only.
rtl::OUString Paragraphs(const Text& text) {
    return ToUno(basic::Replace(basic::Replace(text, u"\r\n", u"\r"), u"\n", u"\r"));
}

}  // namespace

std::span<const Member<Selection>> Selection::Members() {
    static constexpr Member<Selection> kMembers[] = {
        {u"Columns", &Selection::GetColumns},  {u"EndKey", &Selection::EndKey},
        {u"HomeKey", &Selection::HomeKey},     {u"MoveLeft", &Selection::MoveLeft},
        {u"MoveRight", &Selection::MoveRight}, {u"Range", &Selection::GetRange},
        {u"Tables", &Selection::GetTables},    {u"Text", &Selection::GetText},
        {u"TypeText", &Selection::TypeText},
    };
    return kMembers;
}

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

Value Selection::EndKey(const Arguments& arguments) {
    GoToEdge(arguments.IntegerAt(0, u"Unit", kLine), ExtendsAt(arguments, 1), true);
    return {};
}

Value Selection::HomeKey(const Arguments& arguments) {
    GoToEdge(arguments.IntegerAt(0, u"Unit", kLine), ExtendsAt(arguments, 1), false);
    return {};
}

Value Selection::MoveLeft(const Arguments& arguments) {
    switch (arguments.IntegerAt(0, u"Unit", kCharacter)) {
        case kCharacter:
            Doc()->Cursor()->goLeft(static_cast<sal_Int16>(CountOf(arguments)), ExtendsAt(arguments, 2));
            break;
        case kCell:
            for (int step = 0; step < CountOf(arguments); ++step) {
                SelectContent(CellPlace(*Doc()).Previous());
            }
            break;
        default:
            throw Failure(WordError::BadParameter);
    }
    return {};
}

Value Selection::MoveRight(const Arguments& arguments) {
    switch (arguments.IntegerAt(0, u"Unit", kCharacter)) {
        case kCharacter:
            Doc()->Cursor()->goRight(static_cast<sal_Int16>(CountOf(arguments)), ExtendsAt(arguments, 2));
            break;
        case kCell:
            for (int step = 0; step < CountOf(arguments); ++step) {
                SelectContent(CellPlace(*Doc()).Next());
            }
            break;
        default:
            throw Failure(WordError::BadParameter);
    }
    return {};
}

Value Selection::GetColumns(const Arguments& arguments) {
    const std::vector<int> column = {CellPlace(*Doc()).Column()};
    return CollectionOrItem(Make<Columns>(Doc(), column), arguments);
}

Value Selection::GetRange(const Arguments&) {
    return Make<Range>(Doc(), Doc()->Cursor().get());
}

Value Selection::GetTables(const Arguments& arguments) {
    const auto table = TableUnder(*Doc());
    TableList tables;
    if (table.is()) {
        tables.push_back(table);
    }
    return CollectionOrItem(Make<Tables>(Doc(), std::move(tables)), arguments);
}

Value Selection::GetText(const Arguments&) {
    return TextOf(Doc()->Cursor().get());
}

Value Selection::TypeText(const Arguments& arguments) {
    const auto selection = ModelCursor(Doc()->Cursor().get());
    selection->setString(Paragraphs(arguments.TextAt(0, u"Text")));
    Doc()->Cursor()->gotoRange(selection->getEnd(), false);
    return {};
}

}  // namespace quardele::word::writer
