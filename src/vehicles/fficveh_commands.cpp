// The commands on a vehicle's record that do not save it: a new one, delete, refresh, documents, quit.
#include <forms/data_control.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <forms/msg_box.h>
#include <forms/strings.h>
#include <services/translation.h>
#include <shell/document_links.h>
#include <shell/form_support.h>
#include <vehicles/fficveh.h>

#include "tabs.h"
#include "ui_fficveh.h"

namespace quardele::vehicles {

using services::TRAD;

void FFICVEH::ConnectCommands() {
    forms::On(ui_->Cmd_ADD, &forms::Button::Click, this, [this] { Cmd_ADD_Click(); });
    forms::On(ui_->Cmd_Delete, &forms::Button::Click, this, [this] { Cmd_Delete_Click(); });
    forms::On(ui_->CMD_REFRESH, &forms::Button::Click, this, [this] { CMD_REFRESH_Click(); });
    forms::On(ui_->Cmd_Quitter, &forms::Button::Click, this, [this] { Cmd_Quitter_Click(); });
    forms::On(ui_->Cmd_Images, &forms::Button::Click, this, [this] { Cmd_Images_Click(); });
}

/// Asks for no pending entry: the data control saves what was changed in the record that is left. The name of
/// that record's customer stays until a new code is entered.
void FFICVEH::Cmd_ADD_Click() {
    if (ui_->SST_ONGLET->Tab() != kRecordTab) {
        ui_->SST_ONGLET->SetTab(kRecordTab);
    }
    NewEntry = true;
    ui_->DBG_DETAIL->SetMaxRows(0);
    ui_->DBD_TVEH->Opened().AddNew();
}

/// Leaves the vehicle's visits in their table. The list goes to the vehicle behind the deleted one, or to the
/// first when there is none.
void FFICVEH::Cmd_Delete_Click() {
    const QString registration = ui_->CTX_IMMAT->Text();
    if (shell::Saisie_En_Cours(*this)) {
        forms::MsgBox(TRAD(QStringLiteral("Enregistrez ou annulez d'abord votre saisie !")));
        return;
    }
    if (forms::MsgBox(TRAD(QStringLiteral("Confirmez-vous la suppression de cette fiche ?")),
                      forms::BoxButtons::YesNo) != forms::BoxAnswer::Yes) {
        return;
    }
    ui_->DBD_TVEH->Opened().Delete();
    ReloadVehicles();
    dao::Recordset& vehicles = ui_->DBD_TVEH->Opened();
    if (vehicles.RecordCount() != 0) {
        vehicles.FindFirst(forms::ToText(QStringLiteral("TVEH_IMMAT>='%1'").arg(registration)));
        if (vehicles.Eof()) {
            vehicles.MoveFirst();
        }
    }
}

void FFICVEH::CMD_REFRESH_Click() {
    if (shell::Saisie_En_Cours(*this)) {
        forms::MsgBox(TRAD(QStringLiteral("Enregistrez ou annulez d'abord votre saisie !")),
                      forms::BoxButtons::Ok, forms::BoxIcon::Exclamation);
        return;
    }
    ReloadVehicles();
}

void FFICVEH::ReloadVehicles() {
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

void FFICVEH::Cmd_Images_Click() {
    shell::OpenDocumentLinks(QStringLiteral("TARVOLE-VEHICULES"), ui_->CTX_IMMAT->Text());
}

}  // namespace quardele::vehicles
