// The record of a vehicle: its boxes.
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
#include "open_table.h"
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
    forms::On(ui_->CTX_IMMAT, &forms::TextBox::LostFocus, this, [this] { CTX_IMMAT_LostFocus(); });
    forms::On(ui_->CTX_CODCLI, &forms::TextBox::LostFocus, this, [this] { CTX_CODCLI_LostFocus(); });
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

bool FFICVEH::IsRegistrationTaken() const {
    // A table of its own: the recordset of the list stands in its new record.
    const std::shared_ptr<dao::Recordset> vehicles = OpenTable(u"TVEH");
    if (ui_->DBD_TVEH->EditMode() != dao::EditMode::Add) {
        return false;
    }
    vehicles->Seek(u"=", {forms::ToText(ui_->CTX_IMMAT->Text())});
    dao::DBEngine::Instance().Idle(1);
    return !vehicles->NoMatch();
}

/// Only a new record is held back here; a changed registration is left to the save.
void FFICVEH::CTX_IMMAT_LostFocus() {
    if (ui_->CTX_IMMAT->Text().isEmpty() || !IsRegistrationTaken()) {
        return;
    }
    forms::Beep();
    forms::SetFocus(ui_->CTX_IMMAT);
    forms::MsgBox(TRAD(QStringLiteral("Ce véhicule existe déjà !!! ")));
    ui_->CTX_IMMAT->SetText(QString());
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

}  // namespace quardele::vehicles
