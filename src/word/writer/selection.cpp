#include "selection.h"

#include <basic/conversion.h>

#include "cells.h"
#include "text_range.h"

namespace quardele::word::writer {

namespace {

/// Writer makes a paragraph of a carriage return only.
rtl::OUString Paragraphs(const Text& text) {
    return ToUno(basic::Replace(basic::Replace(text, u"\r\n", u"\r"), u"\n", u"\r"));
}

}  // namespace

std::span<const Member<Selection>> Selection::Members() {
    static constexpr Member<Selection> kMembers[] = {
        {u"Cells", &Selection::GetCells},
        {u"Columns", &Selection::GetColumns},
        {u"EndKey", &Selection::EndKey},
        {u"Font", &Selection::GetFont},
        {u"GoTo", &Selection::GoTo},
        {u"GoToNext", &Selection::GoToNext},
        {u"HomeKey", &Selection::HomeKey},
        {u"Information", &Selection::Information},
        {u"InsertRows", &Selection::InsertRows},
        {u"MoveDown", &Selection::MoveDown},
        {u"MoveLeft", &Selection::MoveLeft},
        {u"MoveRight", &Selection::MoveRight},
        {u"Range", &Selection::GetRange},
        {u"SelectRow", &Selection::SelectRow},
        {u"StartOf", &Selection::StartOf},
        {u"Tables", &Selection::GetTables},
        {u"Text", &Selection::GetText},
        {u"TypeText", &Selection::TypeText},
    };
    return kMembers;
}

Value Selection::InsertRows(const Arguments& arguments) {
    const CellPlace place(*Doc());
    const int count = arguments.IntegerAt(0, u"NumRows", 1);
    TableUnder(*Doc())->getRows()->insertByIndex(place.Row(), count);
    SelectRows(*Doc(), place.Row(), place.Row() + count - 1);
    return {};
}

Value Selection::TypeText(const Arguments& arguments) {
    const auto selection = ModelCursor(Doc()->Cursor().get());
    selection->setString(Paragraphs(arguments.TextAt(0, u"Text")));
    Doc()->Cursor()->gotoRange(selection->getEnd(), false);
    return {};
}

}  // namespace quardele::word::writer
