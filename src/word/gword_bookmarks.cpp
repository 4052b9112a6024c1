// Bookmarks: sought, selected, made, read.
#include "word_calls.h"

namespace quardele::word {

bool GWORD::W_EditionAtteindre(const ObjectPtr& Word, TextView bookmark) {
    return Quietly([&] {
        ActiveDocument(Word)->Child(u"Bookmarks", {Text(bookmark)})->Call(u"Select");
        W_AffichagePage(Word);
    });
}

bool GWORD::W_Signet_TrierPar_Pos(const ObjectPtr&) {
    return false;
}

bool GWORD::W_Signet_TrierPar_Nom(const ObjectPtr&) {
    return false;
}

bool GWORD::W_Signet_SUPPRIME(const ObjectPtr&, TextView) {
    return false;
}

bool GWORD::W_EditionSignet(const ObjectPtr& Word, TextView bookmark) {
    ActiveDocument(Word)->Child(u"Bookmarks")->Call(u"Add", {Text(bookmark)});
    return true;
}

bool GWORD::W_Existe_Signet(const ObjectPtr& Word, TextView bookmark) {
    Enreg_Signet(Word, bookmark);
    const bool exists = W_SignetExistant(Word, bookmark);
    if (exists) {
        W_EditionAtteindre(Word, bookmark);
    }
    return exists;
}

bool GWORD::W_SignetExistant(const ObjectPtr& Word, TextView bookmark) {
    bool exists = false;
    OrBox(showBox_, u"Erreur Word (SignetExistant)", [&] {
        Enreg_Signet(Word, bookmark);
        const ObjectPtr bookmarks = ActiveDocument(Word)->Child(u"Bookmarks");
        exists = basic::CBool(bookmarks->Call(u"Exists", {Text(bookmark)}).Plain());
    });
    return exists;
}

Text GWORD::W_LitSignet(const ObjectPtr& Word, TextView bookmark) {
    Text text;
    OrBox(showBox_, u"Erreur Word (LitSignet)", [&] {
        const ObjectPtr found = ActiveDocument(Word)->Child(u"Bookmark", {Text(bookmark)});
        text = basic::CStr(found->Child(u"Range")->Get(u"Text").Plain());
    });
    return text;
}

}  // namespace quardele::word
