// Values that live from start to end of the process; module-level state, one of each. UI thread only.
#pragma once

#include <memory>

#include <QString>

#include <dao/dao.h>
#include <word/gword.h>

namespace quardele::shell {

struct Session {
    /// The data database; null when start-up could not open it.
    std::shared_ptr<dao::Database> BD_DONNEES;
    /// Its folder as stored, with a trailing backslash; also holds templates and letters.
    QString CHEMIN_DONNEES;
    /// Folder of the stock database; may stay empty.
    QString CHEMIN_STOCK;
    /// The stock database, its file name, and whether it lists an active site; set by the reminders form.
    std::shared_ptr<dao::Database> BD_STOCK;
    QString NOM_BD_STOCK;
    bool SITES_DISPO = false;
    /// The one instance of the Word vocabulary.
    std::unique_ptr<word::GWORD> OBJ_WORD;
    /// The main window's size at start; twips. The screen's is in services/screen_adaptation.h.
    int MDI_LARGEUR = 0;
    int MDI_HAUTEUR = 0;
    /// Dialogs place themselves with these (twips); WorkAreaHeight stays 0.
    int WorkAreaTop = 0;
    int WorkAreaHeight = 0;
    /// Number of this module once the change log was asked for; 0 before.
    int NUMAPPLI_COURANT = 0;
    /// Local parameters; the calendar's is in services/calendar_settings.h.
    bool MIRE_ACTIVE = true;
    QString MIRE_VEH;
    QString PARAM_DEVCAL;
    QString PARAM_SITE;
    /// A hook of the letters: sends F10 to Word's window. Nothing sets it.
    bool B_MENU_WORD = false;
};

[[nodiscard]] Session& TheSession();

}  // namespace quardele::shell
