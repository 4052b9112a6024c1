#include "story.h"

#include <array>

#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/text/XPageCursor.hpp>

#include "footnotes.h"
#include "text_range.h"
#include "word_error.h"

namespace quardele::word::writer {

namespace {

using css::text::XText;
using css::text::XTextRange;
using css::uno::UNO_QUERY_THROW;

constexpr int kBody = 0;
constexpr int kFootnotes = 7;
constexpr int kCurrentHeader = 9;
constexpr int kCurrentFooter = 10;

/// The headers, then the footers, of a page style; Word's number is the position plus one.
constexpr std::array<const char*, 6> kStoryTexts = {"HeaderText", "HeaderTextFirst", "HeaderTextLeft",
                                                    "FooterText", "FooterTextFirst", "FooterTextLeft"};
constexpr int kFirstFooter = 4;

/// Whether it is a header or footer, by its own number.
bool IsOfPage(int story) {
    return story > kBody && story <= static_cast<int>(kStoryTexts.size());
}

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

bool IsInBody(const OpenDocument& document) {
    return Contains(document.Model()->getText(), document.Cursor().get());
}

/// To where the body was left, if it was left.
void GoToBody(OpenDocument& document) {
    auto& left = document.View().bodyPlace;
    if (!IsInBody(document)) {
        document.Cursor()->gotoRange(left.is() ? left : document.Model()->getText()->getStart(), false);
    }
    left.clear();
}

void LeaveBody(OpenDocument& document) {
    if (IsInBody(document)) {
        document.View().bodyPlace.set(ModelCursor(document.Cursor().get()).get());
    }
}

void GoToFootnote(OpenDocument& document) {
    GoToBody(document);
    const Reference<XText> note(NextFootnote(document), css::uno::UNO_QUERY);
    if (!note.is()) {
        throw Failure(WordError::CommandFailed);
    }
    LeaveBody(document);
    document.Cursor()->gotoRange(note->getStart(), false);
}

void GoToPageStory(OpenDocument& document, int story) {
    const bool current = story == kCurrentHeader || story == kCurrentFooter;
    LeaveBody(document);
    const auto style = PageStyle(document);
    const bool footer = story == kCurrentFooter || (!current && IsFooter(story));
    if (const char* isOn = footer ? "FooterIsOn" : "HeaderIsOn"; !Property<bool>(style, isOn)) {
        SetProperty(style, isOn, true);
    }
    const int number = current ? StoryOfCurrentPage(document, style, footer) : story;
    const auto text = StoryText(style, number);
    if (!text.is()) {
        throw Failure(WordError::CommandFailed);
    }
    document.Cursor()->gotoRange(text->getStart(), false);
}

}  // namespace

int CurrentStory(const OpenDocument& document) {
    if (IsInBody(document)) {
        return kBody;
    }
    const Reference<XTextRange> selection(document.Cursor().get());
    const auto style = PageStyle(document);
    for (int number = 1; number <= static_cast<int>(kStoryTexts.size()); ++number) {
        if (const auto story = StoryText(style, number); story.is() && Contains(story, selection)) {
            return number;
        }
    }
    return IsInFootnote(document) ? kFootnotes : kBody;
}

Reference<XText> StoryUnder(const OpenDocument& document) {
    const int story = CurrentStory(document);
    if (IsOfPage(story)) {
        return StoryText(PageStyle(document), story);
    }
    return IsInBody(document) ? document.Model()->getText() : document.Cursor()->getText();
}

int StoryBeside(const OpenDocument& document, bool next) {
    constexpr int kKinds = kFirstFooter - 1;
    const int story = CurrentStory(document);
    if (!IsOfPage(story) || IsFooter(story) == next) {
        throw Failure(WordError::CommandFailed);
    }
    return next ? story + kKinds : story - kKinds;
}

void GoToStory(OpenDocument& document, int story) {
    if (story == kBody) {
        GoToBody(document);
    } else if (story == kFootnotes) {
        GoToFootnote(document);
    } else if (IsOfPage(story) || story == kCurrentHeader || story == kCurrentFooter) {
        GoToPageStory(document, story);
    } else {
        throw Failure(WordError::BadParameter);
    }
}

}  // namespace quardele::word::writer
