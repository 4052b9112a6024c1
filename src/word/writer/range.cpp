#include "range.h"

#include "flat_text.h"
#include "story.h"
#include "text_range.h"

namespace quardele::word::writer {

std::span<const Member<Range>> Range::Members() {
    static constexpr Member<Range> kMembers[] = {
        {u"Copy", &Range::Copy},   {u"Cut", &Range::Cut},     {u"End", &Range::End},
        {u"Paste", &Range::Paste}, {u"Start", &Range::Start}, {u"Text", &Range::GetText},
    };
    return kMembers;
}

void Range::Select() {
    Doc()->Cursor()->gotoRange(range_, false);
}

int Range::PositionOf(const Reference<css::text::XTextRange>& place) const {
    return FlatText(StoryUnder(*Doc())).PositionOf(place);
}

Value Range::Copy(const Arguments&) {
    Select();
    Doc()->Dispatch(".uno:Copy");
    return {};
}

Value Range::Cut(const Arguments&) {
    Select();
    Doc()->Dispatch(".uno:Cut");
    return {};
}

Value Range::Paste(const Arguments&) {
    Select();
    Doc()->Dispatch(".uno:Paste");
    return {};
}

Value Range::End(const Arguments&) {
    return PositionOf(ModelCursor(range_)->getEnd());
}

Value Range::Start(const Arguments&) {
    return PositionOf(ModelCursor(range_)->getStart());
}

Value Range::GetText(const Arguments&) {
    return TextOf(range_);
}

std::span<const Member<FlatRange>> FlatRange::Members() {
    static constexpr Member<FlatRange> kMembers[] = {
        {u"End", &FlatRange::End},
        {u"Start", &FlatRange::Start},
        {u"Text", &FlatRange::GetText},
    };
    return kMembers;
}

Value FlatRange::GetText(const Arguments&) {
    return FlatText(Doc()->Model()->getText()).Between(start_, end_);
}

}  // namespace quardele::word::writer
