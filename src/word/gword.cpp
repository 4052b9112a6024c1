#include <word/gword.h>

#include <basic/conversion.h>
#include <basic/paths.h>
#include <forms/msg_box.h>
#include <forms/strings.h>

namespace quardele::word {

namespace {

using automation::Object;

// Literals of Word's object model.
constexpr int kWindowNormal = 0;
constexpr int kPrintView = 3;
constexpr int kNoSplit = 0;
constexpr int kSeekMainDocument = 0;
constexpr int kSeekPrimaryHeader = 1;
constexpr int kSeekFirstPageHeader = 2;
constexpr int kSeekCurrentPageHeader = 9;
constexpr int kUnitStory = 6;
constexpr int kUnitRow = 10;
constexpr int kUnitCell = 12;
constexpr int kMove = 0;
constexpr int kNewDocument = 0;

/// Runs the statements of an operation, as far as the first that fails; whether none did.
template <class Statements>
bool Quietly(const Statements& statements) {
    try {
        statements();
        return true;
    } catch (const basic::RuntimeError&) {
        return false;
    }
}

/// The same, with a box that shows the failure.
template <class Statements>
bool OrBox(const char16_t* title, const Statements& statements) {
    try {
        statements();
        return true;
    } catch (const basic::RuntimeError& error) {
        forms::MsgBox(forms::ToQString(error.Description()), forms::BoxButtons::Ok, forms::BoxIcon::None,
                      forms::ToQString(title));
        return false;
    }
}

Object& Application(const ObjectPtr& Word) {
    if (Word == nullptr) {
        throw basic::RuntimeError(basic::error::kObjectNotSet);
    }
    return *Word;
}

ObjectPtr ActiveDocument(const ObjectPtr& Word) {
    return Application(Word).Child(u"ActiveDocument");
}
ObjectPtr ActiveWindow(const ObjectPtr& Word) {
    return Application(Word).Child(u"ActiveWindow");
}
ObjectPtr Selection(const ObjectPtr& Word) {
    return Application(Word).Child(u"Selection");
}

ObjectPtr ViewOfActivePane(const ObjectPtr& Word) {
    return ActiveWindow(Word)->Child(u"ActivePane")->Child(u"View");
}

std::int32_t Number(Object& object, TextView member) {
    return basic::CLng(object.Get(member).Plain());
}
bool Truth(Object& object, TextView member) {
    return basic::CBool(object.Get(member).Plain());
}

/// The template's file, by the first extension under which it exists; empty when there is none.
Text TemplateFile(const Text& pathWithoutExtension) {
    for (const TextView extension : {u".dot", u".dotm", u".dotx"}) {
        Text file = pathWithoutExtension + Text(extension);
        if (!basic::Dir(file).empty()) {
            return file;
        }
    }
    return {};
}

}  // namespace

GWORD::GWORD(std::function<CatalogueKey()> catalogueKey) : catalogueKey_(std::move(catalogueKey)) {}

bool GWORD::W_CreationObjet(ObjectPtr& Word) {
    return OrBox(u"Erreur Word (Creation_Objet)",
                 [&] { Word = automation::SessionFactory().CreateObject(u"Word.Application"); });
}

bool GWORD::W_FenAppAfficher(const ObjectPtr& Word) {
    Quietly([&] { Application(Word).Set(u"Visible", true); });
    return true;
}

bool GWORD::W_FenAppRestauration(const ObjectPtr& Word) {
    Quietly([&] { Application(Word).Set(u"WindowState", kWindowNormal); });
    return false;
}

bool GWORD::W_FichierEnregistrerSous(const ObjectPtr& Word, TextView fileName) {
    Quietly([&] { ActiveDocument(Word)->CallNamed(u"SaveAs", {{u"FileName", Text(fileName)}}); });
    return true;
}

bool GWORD::W_FichierEnregistrer(const ObjectPtr& Word, TextView) {
    OrBox(u"Erreur Word (FichierEnregistrer)", [&] { ActiveDocument(Word)->Call(u"Save"); });
    return true;
}

bool GWORD::W_FinLigneTableau(const ObjectPtr& Word) {
    Quietly([&] {
        if (W_Existe_Tableau(Word)) {
            Selection(Word)->Call(u"EndKey", {kUnitRow, kMove});
        }
    });
    return false;
}

bool GWORD::W_Insertion(const ObjectPtr& Word, const Variant& text) {
    OrBox(u"Erreur Word (Insertion)", [&] { Selection(Word)->Call(u"TypeText", {text}); });
    return true;
}

bool GWORD::W_FenAppDeplacement(const ObjectPtr& Word, TextView task, int left, int top) {
    Quietly([&] { Application(Word).Child(u"Tasks", {Text(task)})->Call(u"Move", {left, top}); });
    return false;
}

bool GWORD::W_AffichageEntete(const ObjectPtr& Word, std::optional<bool> flag) {
    bool shown = false;
    OrBox(u"Erreur Word (W_AffichageEntete)", [&] {
        W_AffichagePage(Word);
        const ObjectPtr view = ViewOfActivePane(Word);
        const std::int32_t story = Number(*view, u"SeekView");
        if (!flag) {
            shown = story == kSeekPrimaryHeader || story == kSeekFirstPageHeader;
            return;
        }
        const int wanted = *flag ? kSeekCurrentPageHeader : kSeekMainDocument;
        if (story != wanted) {
            view->Set(u"SeekView", wanted);
        }
    });
    return shown;
}

void GWORD::W_AffichagePage(const ObjectPtr& Word) {
    OrBox(u"Erreur Word (AffichagePage)", [&] {
        const ObjectPtr viewOfWindow = ActiveWindow(Word)->Child(u"View");
        if (Number(*viewOfWindow, u"SplitSpecial") == kNoSplit) {
            ViewOfActivePane(Word)->Set(u"Type", kPrintView);
        } else {
            viewOfWindow->Set(u"Type", kPrintView);
        }
    });
}

bool GWORD::W_AffichageRegle(const ObjectPtr& Word, std::optional<bool> flag) {
    bool result = false;
    OrBox(u"Erreur Word (AffichageRegle)", [&] {
        if (flag) {
            ActiveWindow(Word)->Set(u"DisplayRulers", *flag);
            result = true;
        } else {
            result = Truth(*ActiveWindow(Word), u"DisplayRulers");
        }
    });
    return result;
}

bool GWORD::W_DebutDocument(const ObjectPtr& Word) {
    OrBox(u"Erreur Word (DebutDocument)", [&] { Selection(Word)->Call(u"HomeKey", {kUnitStory}); });
    return false;
}

bool GWORD::W_EditionAtteindre(const ObjectPtr& Word, TextView bookmark) {
    return Quietly([&] {
        ActiveDocument(Word)->Child(u"Bookmarks", {Text(bookmark)})->Call(u"Select");
        W_AffichagePage(Word);
    });
}

bool GWORD::W_Existe_Tableau(const ObjectPtr& Word) {
    return Number(*ActiveDocument(Word)->Child(u"Tables"), u"Count") != 0;
}

bool GWORD::W_FenAppDimension(const ObjectPtr& Word, TextView task, int width, int height) {
    Quietly([&] { Application(Word).Child(u"Tasks", {Text(task)})->Call(u"Resize", {width, height}); });
    return false;
}

bool GWORD::W_CelluleSuiv(const ObjectPtr& Word) {
    Quietly([&] { Selection(Word)->Call(u"MoveRight", {kUnitCell}); });
    return true;
}

bool GWORD::W_FenDocAgrandissement(const ObjectPtr& Word, int state) {
    Quietly([&] { Application(Word).Set(u"WindowState", state); });
    return true;
}

bool GWORD::W_Existe_Signet(const ObjectPtr& Word, TextView bookmark) {
    Enreg_Signet(bookmark);
    const bool exists = W_SignetExistant(Word, bookmark);
    if (exists) {
        W_EditionAtteindre(Word, bookmark);
    }
    return exists;
}

bool GWORD::W_FichierNouveau(const ObjectPtr& Word, std::optional<Text> templatePath) {
    return OrBox(u"Erreur Word (FichierNouveau)", [&] {
        if (!templatePath) {
            Application(Word).Child(u"Documents")->Call(u"Add");
        } else if (const Text file = TemplateFile(*templatePath); !file.empty()) {
            Application(Word)
                .Child(u"Documents")
                ->CallNamed(u"Add",
                            {{u"Template", file}, {u"NewTemplate", false}, {u"DocumentType", kNewDocument}});
        }
        const ObjectPtr view = ViewOfActivePane(Word);
        if (Truth(*view, u"ShowAll")) {
            view->Set(u"ShowAll", false);
        }
    });
}

bool GWORD::W_SignetExistant(const ObjectPtr& Word, TextView bookmark) {
    bool exists = false;
    OrBox(u"Erreur Word (SignetExistant)", [&] {
        Enreg_Signet(bookmark);
        const ObjectPtr bookmarks = ActiveDocument(Word)->Child(u"Bookmarks");
        exists = basic::CBool(bookmarks->Call(u"Exists", {Text(bookmark)}).Plain());
    });
    return exists;
}

}  // namespace quardele::word
