#include "window.h"

#include <basic/conversion.h>

#include "story.h"

namespace quardele::word::writer {

namespace {

constexpr int kWebLayout = 6;
constexpr char kOnlineLayout[] = "ShowOnlineLayout";
constexpr char kMarks[] = "ShowNonprintingCharacters";

bool ViewSetting(const OpenDocument& document, const char* name) {
    return Property<bool>(document.ViewSettings(), name);
}

/// Writer lays the whole document out again even when nothing changes.
void SetViewSetting(const OpenDocument& document, const char* name, bool value) {
    if (ViewSetting(document, name) != value) {
        SetProperty(document.ViewSettings(), name, value);
    }
}

}  // namespace

std::span<const Member<Window>> Window::Members() {
    static constexpr Member<Window> kMembers[] = {
        {u"ActivePane", &Window::ActivePane},
        {u"DisplayRulers", &Window::DisplayRulers, &Window::SetDisplayRulers},
        {u"View", &Window::GetView},
    };
    return kMembers;
}

Value Window::ActivePane(const Arguments&) {
    return Make<Pane>(Doc());
}

Value Window::GetView(const Arguments&) {
    return Make<View>(Doc());
}

Value Window::DisplayRulers(const Arguments&) {
    return ViewSetting(*Doc(), "ShowHoriRuler") || ViewSetting(*Doc(), "ShowVertRuler");
}

void Window::SetDisplayRulers(const Value& display) {
    for (const char* ruler : {"ShowHoriRuler", "ShowVertRuler"}) {
        SetViewSetting(*Doc(), ruler, Truth(display));
    }
}

std::span<const Member<Pane>> Pane::Members() {
    static constexpr Member<Pane> kMembers[] = {{u"View", &Pane::GetView}};
    return kMembers;
}

Value Pane::GetView(const Arguments&) {
    return Make<View>(Doc());
}

std::span<const Member<View>> View::Members() {
    static constexpr Member<View> kMembers[] = {
        {u"NextHeaderFooter", &View::NextHeaderFooter},
        {u"PreviousHeaderFooter", &View::PreviousHeaderFooter},
        {u"SeekView", &View::SeekView, &View::SetSeekView},
        {u"ShowAll", &View::ShowAll, &View::SetShowAll},
        {u"SplitSpecial", &View::SplitSpecial, &View::SetSplitSpecial},
        {u"Type", &View::Type, &View::SetType},
    };
    return kMembers;
}

Value View::NextHeaderFooter(const Arguments&) {
    GoToStory(*Doc(), StoryBeside(*Doc(), true));
    return {};
}

Value View::PreviousHeaderFooter(const Arguments&) {
    GoToStory(*Doc(), StoryBeside(*Doc(), false));
    return {};
}

Value View::SeekView(const Arguments&) {
    return CurrentStory(*Doc());
}

void View::SetSeekView(const Value& story) {
    GoToStory(*Doc(), basic::CLng(story.Plain()));
}

Value View::ShowAll(const Arguments&) {
    return ViewSetting(*Doc(), kMarks);
}

void View::SetShowAll(const Value& show) {
    SetViewSetting(*Doc(), kMarks, Truth(show));
}

void View::SetSplitSpecial(const Value& split) {
    Doc()->View().split = basic::CLng(split.Plain());
}

Value View::Type(const Arguments&) {
    return ViewSetting(*Doc(), kOnlineLayout) ? kWebLayout : Doc()->View().type;
}

void View::SetType(const Value& type) {
    const int number = basic::CLng(type.Plain());
    SetViewSetting(*Doc(), kOnlineLayout, number == kWebLayout);
    Doc()->View().type = number;
}

}  // namespace quardele::word::writer
