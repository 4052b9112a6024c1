#include "story.h"

#include <algorithm>
#include <array>

#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/text/XPageCursor.hpp>
#include <com/sun/star/text/XTextRangeCompare.hpp>

#include "word_error.h"

namespace quardele::word::writer {

namespace {

using css::text::XText;
using css::text::XTextRange;
using css::uno::UNO_QUERY_THROW;

constexpr int kBody = 0;
constexpr int kCurrentHeader = 9;
constexpr int kCurrentFooter = 10;

/// The headers, then the footers, of a page style; Word's number is the position plus one.
constexpr std::array<const char*, 6> kStoryTexts = {"HeaderText", "HeaderTextFirst", "HeaderTextLeft",
                                                    "FooterText", "FooterTextFirst", "FooterTextLeft"};
constexpr int kFirstFooter = 4;

bool IsFooter(int story) {
    return story >= kFirstFooter;
}

Reference<css::uno::XInterface> PageStyle(const OpenDocument& document) {
    const Reference<css::style::XStyleFamiliesSupplier> supplier(document.Model(), UNO_QUERY_THROW);
    const Reference<css::container::XNameAccess> styles(supplier->getStyleFamilies()->getByName("PageStyles"),
                                                        UNO_QUERY_THROW);
    const auto name = Property<rtl::OUString>(document.Cursor(), "PageStyleName");
    return {styles->getByName(name), UNO_QUERY_THROW};
}

/// The story number of the header or footer that the page under the selection shows.
int StoryOfCurrentPage(const OpenDocument& document, const Reference<css::uno::XInterface>& style,
                       bool footer) {
    const int page = Reference<css::text::XPageCursor>(document.Cursor(), UNO_QUERY_THROW)->getPage();
    const int primary = footer ? kFirstFooter : 1;
    if (page == 1 && !Property<bool>(style, "FirstIsShared")) {
        return primary + 1;
    }
    const bool shared = Property<bool>(style, footer ? "FooterIsShared" : "HeaderIsShared");
    return page % 2 == 0 && !shared ? primary + 2 : primary;
}

Reference<XText> StoryText(const Reference<css::uno::XInterface>& style, int story) {
    return Property<Reference<XText>>(style, kStoryTexts[static_cast<std::size_t>(story) - 1]);
}

void GoToBody(OpenDocument& document) {
    const auto place =
        document.View().bodyPlace.is() ? document.View().bodyPlace : document.Model()->getText()->getStart();
    document.Cursor()->gotoRange(place, false);
}

}  // namespace

Reference<css::text::XTextCursor> ModelCursor(const Reference<XTextRange>& range) {
    return range->getText()->createTextCursorByRange(range);
}

Text TextOf(const Reference<XTextRange>& range) {
    Text text = ToText(ModelCursor(range)->getString());
    std::replace(text.begin(), text.end(), u'\n', u'\r');
    return text;
}

bool Contains(const Reference<XText>& text, const Reference<XTextRange>& range) {
    try {
        const Reference<css::text::XTextRangeCompare> compare(text, UNO_QUERY_THROW);
        compare->compareRegionStarts(range, text->getStart());
        return true;
    } catch (const css::lang::IllegalArgumentException&) {
        return false;
    }
}

int CurrentStory(const OpenDocument& document) {
    const Reference<XTextRange> selection(document.Cursor().get());
    if (Contains(document.Model()->getText(), selection)) {
        return kBody;
    }
    const auto style = PageStyle(document);
    for (int number = 1; number <= static_cast<int>(kStoryTexts.size()); ++number) {
        if (const auto story = StoryText(style, number); story.is() && Contains(story, selection)) {
            return number;
        }
    }
    return kBody;
}

Reference<XText> StoryUnder(const OpenDocument& document) {
    const auto body = document.Model()->getText();
    if (Contains(body, document.Cursor().get())) {
        return body;
    }
    const int story = CurrentStory(document);
    return story == kBody ? document.Cursor()->getText() : StoryText(PageStyle(document), story);
}

int StoryBeside(const OpenDocument& document, bool next) {
    constexpr int kKinds = kFirstFooter - 1;
    const int story = CurrentStory(document);
    if (story == kBody || IsFooter(story) == next) {
        throw Failure(WordError::CommandFailed);
    }
    return next ? story + kKinds : story - kKinds;
}

void GoToStory(OpenDocument& document, int story) {
    if (story == kBody) {
        GoToBody(document);
        return;
    }
    const bool current = story == kCurrentHeader || story == kCurrentFooter;
    if (!current && (story < kBody || story > static_cast<int>(kStoryTexts.size()))) {
        throw Failure(WordError::BadParameter);
    }
    if (Contains(document.Model()->getText(), document.Cursor().get())) {
        document.View().bodyPlace.set(ModelCursor(document.Cursor().get()).get());
    }
    const auto style = PageStyle(document);
    const bool footer = story == kCurrentFooter || (!current && IsFooter(story));
    if (const char* isOn = footer ? "FooterIsOn" : "HeaderIsOn"; !Property<bool>(style, isOn)) {
        SetProperty(style, isOn, true);
    }
    const int number = current ? StoryOfCurrentPage(document, style, footer) : story;
    document.Cursor()->gotoRange(StoryText(style, number)->getStart(), false);
}

}  // namespace quardele::word::writer
