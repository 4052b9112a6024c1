#include "font.h"

#include <array>

#include <com/sun/star/awt/FontSlant.hpp>
#include <com/sun/star/awt/FontUnderline.hpp>
#include <com/sun/star/awt/FontWeight.hpp>

#include <basic/conversion.h>

#include "word_error.h"

namespace quardele::word::writer {

namespace {

namespace awt = css::awt;

struct Line {
    int word;
    sal_Int16 writer;
};
constexpr std::array kLines = {Line{0, awt::FontUnderline::NONE}, Line{1, awt::FontUnderline::SINGLE},
                               Line{3, awt::FontUnderline::DOUBLE}, Line{4, awt::FontUnderline::DOTTED}};
constexpr int kSingleLine = 1;
constexpr int kTrue = -1;

bool Truth(const Value& value) {
    return basic::CBool(value.Plain());
}

}  // namespace

std::span<const Member<Font>> Font::Members() {
    static constexpr Member<Font> kMembers[] = {
        {u"Bold", &Font::Bold, &Font::SetBold},       {u"Hidden", &Font::Hidden, &Font::SetHidden},
        {u"Italic", &Font::Italic, &Font::SetItalic}, {u"Name", &Font::Name, &Font::SetName},
        {u"Size", &Font::Size, &Font::SetSize},       {u"Underline", &Font::Underline, &Font::SetUnderline},
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

Value Font::Italic(const Arguments&) {
    return Property<awt::FontSlant>(Doc()->Cursor(), "CharPosture") != awt::FontSlant_NONE;
}

void Font::SetItalic(const Value& italic) {
    SetProperty(Doc()->Cursor(), "CharPosture", Truth(italic) ? awt::FontSlant_ITALIC : awt::FontSlant_NONE);
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
    const auto shown = Property<sal_Int16>(Doc()->Cursor(), "CharUnderline");
    for (const Line& line : kLines) {
        if (line.writer == shown) {
            return line.word;
        }
    }
    return kSingleLine;
}

void Font::SetUnderline(const Value& underline) {
    const int wanted = basic::CLng(underline.Plain());
    for (const Line& line : kLines) {
        if (line.word == (wanted == kTrue ? kSingleLine : wanted)) {
            SetProperty(Doc()->Cursor(), "CharUnderline", line.writer);
            return;
        }
    }
    throw Failure(WordError::BadParameter);
}

}  // namespace quardele::word::writer
