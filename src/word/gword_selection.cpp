// The selection: moved, read, typed over, formatted.
#include "word_calls.h"

namespace quardele::word {

namespace {

constexpr int kToFootnote = 4;
/// What W_FormatCaracteres takes for "on".
constexpr std::int32_t kOn = 1;

// Places in CharacterFormat.
constexpr std::size_t kSize = 0;
constexpr std::size_t kUnderline = 1;
constexpr std::size_t kFontName = 15;
constexpr std::size_t kBold = 16;

bool IsOn(const Variant& value) {
    return basic::CDbl(value) == kOn;
}

/// A position of the selection's range; Empty after a failure, which is shown.
Variant PositionOfSelection(const ShowBox& showBox, const ObjectPtr& Word, TextView member, TextView title) {
    Variant value;
    OrBox(showBox, title, [&] { value = Selection(Word)->Child(u"Range")->Get(member).Plain(); });
    return value;
}

/// Calls a method of the selection's range, silently.
bool OnSelectedRange(const ObjectPtr& Word, TextView method) {
    Quietly([&] { Selection(Word)->Child(u"Range")->Call(method); });
    return true;
}

}  // namespace

bool GWORD::W_CarDroite(const ObjectPtr& Word, int count, int extend) {
    OrBox(showBox_, u"Erreur Word (CarDroite)", [&] {
        Selection(Word)->Call(u"MoveRight", {kUnitCharacter, count, extend});
    });
    return true;
}

bool GWORD::W_CarGauche(const ObjectPtr& Word, int count, int extend) {
    OrBox(showBox_, u"Erreur Word (CarGauche)", [&] {
        Selection(Word)->Call(u"MoveLeft", {kUnitCharacter, count, extend});
    });
    return true;
}

bool GWORD::W_FinDocument(const ObjectPtr& Word, std::optional<int> extend) {
    OrBox(showBox_, u"Erreur Word (FinDocument)", [&] {
        if (extend) {
            Selection(Word)->Call(u"EndKey", {kUnitStory, *extend == 0 ? kMove : kExtend});
        } else {
            Selection(Word)->Call(u"EndKey", {kUnitStory});
        }
    });
    return false;
}

bool GWORD::W_Insertion(const ObjectPtr& Word, const Variant& text) {
    OrBox(showBox_, u"Erreur Word (Insertion)", [&] { Selection(Word)->Call(u"TypeText", {text}); });
    return true;
}

bool GWORD::W_LigneVersBas(const ObjectPtr& Word) {
    OrBox(showBox_, u"Erreur Word (LigneVersBas)", [&] {
        Selection(Word)->Call(u"MoveDown", {kUnitLine, 1, kMove});
    });
    return false;
}

Variant GWORD::W_LitPosDebSel(const ObjectPtr& Word) {
    return PositionOfSelection(showBox_, Word, u"Start", u"Erreur Word (LitPosDebSel)");
}

Variant GWORD::W_LitPosFinSel(const ObjectPtr& Word) {
    return PositionOfSelection(showBox_, Word, u"End", u"Erreur Word (LitPosFinSel)");
}

Text GWORD::W_LitTexte(const ObjectPtr& Word, int, int) {
    Text text;
    OrBox(showBox_, u"Erreur Word (LitTexte)",
          [&] { text = basic::CStr(Selection(Word)->Child(u"Range")->Get(u"Text").Plain()); });
    return text;
}

Text GWORD::W_LitTexte_OLD(const ObjectPtr& Word, int start, int end) {
    Text text;
    OrBox(showBox_, u"Erreur Word (LitTexte)", [&] {
        text = basic::CStr(ActiveDocument(Word)->Child(u"Range", {start, end})->Get(u"Text").Plain());
    });
    return text;
}

bool GWORD::W_Masque(const ObjectPtr& Word, std::optional<bool> flag) {
    bool result = false;
    OrBox(showBox_, u"Erreur Word (Masque)", [&] {
        const ObjectPtr font = Selection(Word)->Child(u"Font");
        if (flag) {
            font->Set(u"Hidden", *flag);
            result = true;
        } else {
            result = Truth(*font, u"Hidden");
        }
    });
    return result;
}

bool GWORD::W_MotDroite(const ObjectPtr& Word, const std::optional<Variant>& marker) {
    Quietly([&] {
        if (marker) {
            Selection(Word)->Call(u"MoveRight", {kUnitWord, 1, kExtend});
        } else {
            Selection(Word)->Call(u"MoveRight", {kUnitWord, 1});
        }
    });
    return false;
}

bool GWORD::W_EditionColler(const ObjectPtr& Word) {
    return OnSelectedRange(Word, u"Paste");
}

bool GWORD::W_EditionCopier(const ObjectPtr& Word) {
    return OnSelectedRange(Word, u"Copy");
}

bool GWORD::W_EditionCouper(const ObjectPtr& Word) {
    return OnSelectedRange(Word, u"Cut");
}

bool GWORD::W_DebutDocument(const ObjectPtr& Word) {
    OrBox(showBox_, u"Erreur Word (DebutDocument)", [&] { Selection(Word)->Call(u"HomeKey", {kUnitStory}); });
    return false;
}

bool GWORD::W_AtteindreNoteBasPgSuiv(const ObjectPtr& Word) {
    Selection(Word)->Call(u"GoToNext", {kToFootnote});
    return false;
}

bool GWORD::W_DebutLigne(const ObjectPtr& Word) {
    Selection(Word)->Call(u"HomeKey", {kUnitLine, kMove});
    return false;
}

bool GWORD::W_PhraseDroite(const ObjectPtr&, const Variant&, const Variant&) {
    return false;
}

Variant GWORD::W_SelInfo(const ObjectPtr& Word, int code) {
    return Selection(Word)->Call(u"Information", {code}).Plain();
}

bool GWORD::W_FormatCaracteres(const ObjectPtr& Word, const CharacterFormat& format) {
    OrBox(showBox_, u"Erreur Word (FormatCaracteres)", [&] {
        const ObjectPtr font = Selection(Word)->Child(u"Font");
        if (format[kSize]) {
            font->Set(u"Size", *format[kSize]);
        }
        if (format[kUnderline]) {
            font->Set(u"Underline", IsOn(*format[kUnderline]));
        }
        if (format[kFontName]) {
            font->Set(u"Name", *format[kFontName]);
        }
        if (format[kBold]) {
            font->Set(u"Bold", IsOn(*format[kBold]));
        }
    });
    return false;
}

bool GWORD::W_ParaVersBas(const ObjectPtr& Word, int count, int extend) {
    OrBox(showBox_, u"Erreur Word (ParaVersBas)", [&] {
        Selection(Word)->Call(u"MoveDown", {kUnitParagraph, count, extend});
    });
    return false;
}

}  // namespace quardele::word
