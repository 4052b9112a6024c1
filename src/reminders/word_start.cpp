#include "word_start.h"

#include <basic/paths.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/translation.h>
#include <shell/session.h>

#include "session_objects.h"

namespace quardele::reminders {

using automation::ObjectPtr;
using services::TRAD;

namespace {

/// Word's window, by the name of its task; sizes in points.
constexpr basic::TextView kWordTask = u"Microsoft Word";
constexpr int kWordWidth = 600;
constexpr int kWordHeight = 450;
constexpr int kDocumentMaximized = 1;

/// Only the oldest kind of template is let through here, although Word would take the newer ones too.
bool TemplateExists(const basic::Text& templatePath) {
    if (!basic::Dir(templatePath + u".dot").empty()) {
        return true;
    }
    forms::MsgBox(TRAD(QStringLiteral("Le fichier modèle <")) + forms::ToQString(templatePath) +
                  TRAD(QStringLiteral(".dot> est introuvable.")));
    return false;
}

void ShowWordWindow(word::GWORD& word, ObjectPtr& application) {
    word.W_CreationObjet(application);
    word.W_FenAppAfficher(application);
    word.W_FenAppRestauration(application);
    word.W_FenAppDeplacement(application, kWordTask, 0, 0);
    word.W_FenAppDimension(application, kWordTask, kWordWidth, kWordHeight);
}

void ArrangeDocument(word::GWORD& word, const ObjectPtr& application) {
    word.W_AffichagePage(application);
    word.W_FenDocAgrandissement(application, kDocumentMaximized);
    if (word.W_AffichageRegle(application)) {
        word.W_AffichageRegle(application, false);
    }
    Existing(application).Call(u"Activate");
    if (shell::TheSession().B_MENU_WORD) {
        forms::SendKeys(QStringLiteral("{F10}"));
    }
}

}  // namespace

bool C_Appel_Word(ObjectPtr& application, const basic::Text& templatePath) {
    try {
        if (!TemplateExists(templatePath)) {
            return false;
        }
        word::GWORD& word = Existing(shell::TheSession().OBJ_WORD);
        ShowWordWindow(word, application);
        if (!word.W_FichierNouveau(application, templatePath)) {
            return false;
        }
        ArrangeDocument(word, application);
        return true;
    } catch (const basic::RuntimeError& error) {
        forms::MsgBox(QStringLiteral("Procédure APPLI/appel_word : ") +
                      forms::ToQString(error.Description()) + QStringLiteral(" (%1)").arg(error.Number()));
        return false;
    }
}

}  // namespace quardele::reminders
