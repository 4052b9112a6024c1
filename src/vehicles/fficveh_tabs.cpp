// The vehicle form's two tabs, and the guard that holds the operator on a record with an unsaved change.
#include <forms/data_control.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <forms/msg_box.h>
#include <services/translation.h>
#include <shell/form_support.h>
#include <vehicles/fficveh.h>

#include "tabs.h"
#include "ui_fficveh.h"

namespace quardele::vehicles {

void FFICVEH::ConnectTabs() {
    forms::On(ui_->SST_ONGLET, &forms::TabControl::Click, this,
              [this](int previousTab) { SST_ONGLET_Click(previousTab); });
}

void FFICVEH::SST_ONGLET_Click(int previousTab) {
    if (ui_->SST_ONGLET->Tab() == kRecordTab) {
        EnterRecord();
        return;
    }
    if (shell::Saisie_En_Cours(*this)) {
        // Going back enters the record again, visits included, before the box is shown.
        ui_->SST_ONGLET->SetTab(previousTab);
        forms::MsgBox(services::TRAD(QStringLiteral("Enregistrez ou annulez d'abord votre saisie")));
        return;
    }
    EnterList();
}

void FFICVEH::EnterList() {
    forms::SetFocus(ui_->DBG_Liste);
    ShowRecordButtons(false);
    ui_->FRM_HISTO->setVisible(false);
}

/// The boxes have followed the list by themselves; the customer's name and the visits have not.
void FFICVEH::EnterRecord() {
    ui_->CTX_RSCLI->SetText(FindClient() ? ClientName() : QString());
    ui_->DBG_DETAIL->SetMaxRows(0);
    AskForVisits();
    ui_->DBD_DETAIL->Refresh();
    ShowRecordButtons(true);
    forms::SetFocus(ui_->CTX_IMMAT);
}

/// The next refresh brings the visits of the registration in the box.
void FFICVEH::AskForVisits() {
    ui_->DBD_DETAIL->SetRecordSource(QStringLiteral("Select * from TVEH_DETAIL where TVEH_DETAIL_Immat ='") +
                                     ui_->CTX_IMMAT->Text() + QStringLiteral("'"));
}

void FFICVEH::ShowRecordButtons(bool visible) {
    ui_->Pic_boutons_2->setVisible(visible);
    ui_->Pic_Boutons_3->setVisible(visible);
}

}  // namespace quardele::vehicles
