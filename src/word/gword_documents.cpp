// Documents: made, opened, saved, closed.
#include <basic/paths.h>

#include "word_calls.h"

namespace quardele::word {

namespace {

constexpr int kNewDocument = 0;
constexpr int kDoNotSaveChanges = 0;
constexpr int kSaveChanges = -1;
/// The mode of W_FichierFermer that closes the document.
constexpr int kModeWithoutSaving = 2;

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

bool GWORD::W_FichierEnregistrerSous(const ObjectPtr& Word, TextView fileName) {
    Quietly([&] { ActiveDocument(Word)->CallNamed(u"SaveAs", {{u"FileName", Text(fileName)}}); });
    return true;
}

bool GWORD::W_FichierEnregistrer(const ObjectPtr& Word, TextView) {
    OrBox(showBox_, u"Erreur Word (FichierEnregistrer)", [&] { ActiveDocument(Word)->Call(u"Save"); });
    return true;
}

bool GWORD::W_FichierOuvrir(const ObjectPtr& Word, TextView fileName) {
    OrBox(showBox_, u"Erreur Word (FichierOuvrir)",
          [&] { Application(Word).Child(u"Documents")->Call(u"Open", {Text(fileName)}); });
    return false;
}

bool GWORD::W_FichierOuvrirRO(const ObjectPtr& Word, TextView fileName) {
    OrBox(showBox_, u"Erreur Word (FichierOuvrir)", [&] {
        const automation::Value file = Text(fileName);
        const automation::NamedArgument readOnly{u"ReadOnly", true};
        Application(Word).Child(u"Documents")->Call(u"Open", std::span(&file, 1), std::span(&readOnly, 1));
    });
    return false;
}

bool GWORD::W_FichierFermer(const ObjectPtr& Word, int mode) {
    const bool closed = Quietly([&] {
        if (mode == kModeWithoutSaving) {
            ActiveDocument(Word)->Call(u"Close", {kDoNotSaveChanges});
        } else {
            Application(Word).Call(u"Close", {kSaveChanges});
        }
    });
    if (!closed) {
        showBox_(u"Evitez de fermer Word vous même avant de quitter", {});
    }
    return false;
}

bool GWORD::W_EstDocModifie(const ObjectPtr& Word) {
    bool changed = false;
    Quietly([&] { changed = !Truth(*ActiveDocument(Word), u"Saved"); });
    return changed;
}

bool GWORD::W_FichierNouveau(const ObjectPtr& Word, std::optional<Text> templatePath) {
    return OrBox(showBox_, u"Erreur Word (FichierNouveau)", [&] {
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

}  // namespace quardele::word
