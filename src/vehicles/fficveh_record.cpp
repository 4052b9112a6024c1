// The record of a vehicle: its boxes and the commands on it.
#include <basic/conversion.h>
#include <forms/data_control.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/translation.h>
#include <shell/form_support.h>
#include <vehicles/fficveh.h>

#include "keys.h"
#include "ui_fficveh.h"

namespace quardele::vehicles {

using services::TRAD;

void FFICVEH::ConnectRecord() {
    for (forms::TextBox* box : {ui_->CTX_IMMAT, ui_->CTX_CODCLI, ui_->CTX_MARQUE, ui_->CTX_ComplIdent}) {
        ConnectField(box);
    }
    for (int number = 1; number <= kUserFields; ++number) {
        ConnectField(CTX_USER(number));
    }
    forms::On(ui_->CTX_CODCLI, &forms::TextBox::LostFocus, this, [this] { CTX_CODCLI_LostFocus(); });
    forms::On(ui_->CMD_REFRESH, &forms::Button::Click, this, [this] { CMD_REFRESH_Click(); });
    forms::On(ui_->Cmd_Quitter, &forms::Button::Click, this, [this] { Cmd_Quitter_Click(); });
}

/// A field of the record: selected whole when entered, left by Enter.
void FFICVEH::ConnectField(forms::TextBox* box) {
    forms::On(box, &forms::TextBox::GotFocus, this, [] { shell::Selection_Texte(); });
    forms::On(box, &forms::TextBox::KeyPress, this, [](int& character) {
        if (character == kKeyEnter) {
            character = 0;
            forms::SendKeys(QStringLiteral("{TAB}"));
        }
    });
}

bool FFICVEH::FindClient() {
    ClientTable->Seek(u"=", {forms::ToText(ui_->CTX_CODCLI->Text())});
    dao::DBEngine::Instance().Idle(1);
    return !ClientTable->NoMatch();
}

QString FFICVEH::ClientName() const {
    return forms::ToQString(basic::Joined(ClientTable->Value(u"TCLI_RS")));
}

/// Warns of an unknown customer and lets the code stand.
void FFICVEH::CTX_CODCLI_LostFocus() {
    if (ui_->CTX_CODCLI->Text().isEmpty() || !ui_->CTX_CODCLI->DataChanged()) {
        return;
    }
    if (FindClient()) {
        ui_->CTX_RSCLI->SetText(ClientName());
    } else {
        forms::MsgBox(TRAD(QStringLiteral("Ce code client est inconnu dans la table des Clients !")),
                      forms::BoxButtons::Ok, forms::BoxIcon::Exclamation);
    }
}

void FFICVEH::CMD_REFRESH_Click() {
    if (shell::Saisie_En_Cours(*this)) {
        forms::MsgBox(TRAD(QStringLiteral("Enregistrez ou annulez d'abord votre saisie !")),
                      forms::BoxButtons::Ok, forms::BoxIcon::Exclamation);
        return;
    }
    ui_->DBG_Liste->SetMaxRows(0);
    ui_->DBD_TVEH->Refresh();
}

void FFICVEH::Cmd_Quitter_Click() {
    if (shell::Saisie_En_Cours(*this)) {
        forms::MsgBox(TRAD(QStringLiteral("Enregistrez ou annulez d'abord votre saisie")),
                      forms::BoxButtons::Ok, forms::BoxIcon::Exclamation);
        return;
    }
    Unload();
}

}  // namespace quardele::vehicles
