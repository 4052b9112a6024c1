#include "font.h"

#include <com/sun/star/awt/FontUnderline.hpp>
#include <com/sun/star/awt/FontWeight.hpp>

#include <basic/conversion.h>

#include "word_error.h"

namespace quardele::word::writer {

namespace {

namespace awt = css::awt;

constexpr int kNoLine = 0;
constexpr int kSingleLine = 1;
constexpr int kTrue = -1;

}  // namespace

std::span<const Member<Font>> Font::Members() {
    static constexpr Member<Font> kMembers[] = {
        {u"Bold", &Font::Bold, &Font::SetBold},
        {u"Hidden", &Font::Hidden, &Font::SetHidden},
        {u"Name", &Font::Name, &Font::SetName},
        {u"Size", &Font::Size, &Font::SetSize},
        {u"Underline", &Font::Underline, &Font::SetUnderline},
    };
    return kMembers;
}

Value Font::Bold(const Arguments&) {
    return Property<float>(Doc()->Cursor(), "CharWeight") >= awt::FontWeight::BOLD;
}

void Font::SetBold(const Value& bold) {
    SetProperty(Doc()->Cursor(), "CharWeight", Truth(bold) ? awt::FontWeight::BOLD : awt::FontWeight::NORMAL);
}

Value Font::Hidden(const Arguments&) {
    return Property<bool>(Doc()->Cursor(), "CharHidden");
}

void Font::SetHidden(const Value& hidden) {
    SetProperty(Doc()->Cursor(), "CharHidden", Truth(hidden));
}

Value Font::Name(const Arguments&) {
    return ToText(Property<rtl::OUString>(Doc()->Cursor(), "CharFontName"));
}

void Font::SetName(const Value& name) {
    SetProperty(Doc()->Cursor(), "CharFontName", ToUno(basic::CStr(name.Plain())));
}

Value Font::Size(const Arguments&) {
    return static_cast<double>(Property<float>(Doc()->Cursor(), "CharHeight"));
}

void Font::SetSize(const Value& size) {
    SetProperty(Doc()->Cursor(), "CharHeight", static_cast<float>(basic::CDbl(size.Plain())));
}

Value Font::Underline(const Arguments&) {
    const bool underlined = Property<sal_Int16>(Doc()->Cursor(), "CharUnderline") != awt::FontUnderline::NONE;
    return underlined ? kSingleLine : kNoLine;
}

void Font::SetUnderline(const Value& underline) {
    const int wanted = basic::CLng(underline.Plain());
    if (wanted != kNoLine && wanted != kSingleLine && wanted != kTrue) {
        throw Failure(WordError::BadParameter);
    }
    SetProperty(Doc()->Cursor(), "CharUnderline",
                wanted == kNoLine ? awt::FontUnderline::NONE : awt::FontUnderline::SINGLE);
}

}  // namespace quardele::word::writer
