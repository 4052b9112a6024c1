// Saving and cancelling a vehicle's record together with its visits.
#include <basic/conversion.h>
#include <forms/data_control.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <forms/msg_box.h>
#include <forms/strings.h>
#include <vehicles/fficveh.h>

#include "ui_fficveh.h"
#include "visit_columns.h"

namespace quardele::vehicles {

namespace {

constexpr int kWholeRow = -1;
constexpr int kSaveRows = 15;

/// In the words of the runtime, which no translation reaches.
void TellFailure(const QString& prefix, const basic::RuntimeError& error) {
    forms::MsgBox(prefix + QString::number(error.Number()) + QStringLiteral(" : ") +
                      forms::ToQString(error.Description()),
                  forms::BoxButtons::Ok, forms::BoxIcon::Critical);
}

void FlagWholeRow(forms::Grid& grid, int row, bool changed) {
    grid.SetRow(row);
    grid.SetCol(kWholeRow);
    grid.SetChangedFlag(changed);
}

QString NormalDate(const QString& text) {
    return forms::ToQString(basic::Joined(basic::CDate(forms::ToText(text))));
}

}  // namespace

void FFICVEH::ConnectSaving() {
    forms::On(ui_->Cmd_Update, &forms::Button::Click, this, [this] { Cmd_Update_Click(); });
    forms::On(ui_->Cmd_Annul, &forms::Button::Click, this, [this] { Cmd_Annul_Click(); });
}

// Saving. First the record, then its visits, which carry its registration; each write stands alone.

void FFICVEH::Cmd_Update_Click() {
    try {
        SaveVehicle();
        SaveVisits();
        NewEntry = false;
    } catch (const basic::RuntimeError& error) {
        TellFailure(QStringLiteral("Cmd_Update Err. "), error);
    }
}

void FFICVEH::SaveVehicle() {
    dao::Recordset& vehicles = ui_->DBD_TVEH->Opened();
    if (vehicles.EditMode() == dao::EditMode::Add) {
        ui_->DBD_TVEH->UpdateRecord();
    } else {
        vehicles.Edit();
        vehicles.Update();
    }
    // The saved record is the current one, wherever its key has put it.
    vehicles.SetBookmark(vehicles.LastModified());
}

/// Every visit is written, changed or not: the registration may be another one. A row without a type of work
/// is none; at the end it goes, between others it stays.
void FFICVEH::SaveVisits() {
    forms::Grid& visits = *ui_->DBG_DETAIL;
    const int rows = visits.MaxRows();
    for (int row = 1; row <= rows; ++row) {
        visits.SetRow(row);
        visits.SetCol(kVisitTypeColumn);
        if (!visits.Text().isEmpty()) {
            FlagVisit(row);
        } else if (row == visits.MaxRows()) {
            visits.SetMaxRows(row - 1);
            break;
        } else {
            // What was typed beside the missing type of work is not to reach the table.
            FlagWholeRow(visits, row, false);
        }
    }
    visits.Action(kSaveRows);
    visits.SetChangeMade(false);
    visits.SetMaxRows(visits.DataRowCnt());
}

void FFICVEH::FlagVisit(int row) {
    forms::Grid& visits = *ui_->DBG_DETAIL;
    visits.SetRow(row);
    visits.SetCol(kVisitDateColumn);
    if (!visits.Text().isEmpty()) {
        visits.SetText(NormalDate(visits.Text()));
    }
    visits.SetCol(kVisitLinkColumn);
    visits.SetText(ui_->CTX_IMMAT->Text());
    FlagWholeRow(visits, row, true);
}

// Cancelling.

void FFICVEH::Cmd_Annul_Click() {
    try {
        CancelVehicle();
        NewEntry = false;
        CancelVisits();
        ShowClient();
    } catch (const basic::RuntimeError& error) {
        TellFailure(QStringLiteral("Cmd_Annul Err. "), error);
    }
}

void FFICVEH::CancelVehicle() {
    dao::Recordset& vehicles = ui_->DBD_TVEH->Opened();
    // Boxes may be changed without an edit; an edit is what can be cancelled.
    if (ui_->DBD_TVEH->EditMode() == dao::EditMode::None) {
        vehicles.Edit();
    }
    vehicles.CancelUpdate();
}

void FFICVEH::CancelVisits() {
    dao::Recordset& visits = ui_->DBD_DETAIL->Opened();
    if (visits.RecordCount() != 0) {
        if (ui_->DBD_DETAIL->EditMode() == dao::EditMode::None) {
            visits.Edit();
        }
        visits.CancelUpdate();
    }
    ui_->DBG_DETAIL->SetMaxRows(0);
    // The record on screen may be another one than when the visits were read: a new one, saved since.
    AskForVisits();
    ui_->DBD_DETAIL->Refresh();
    ui_->DBG_DETAIL->SetChangeMade(false);
}

void FFICVEH::ShowClient() {
    if (FindClient()) {
        ui_->CTX_RSCLI->SetText(ClientName());
    } else {
        forms::SetFocus(ui_->CTX_CODCLI);
        ui_->CTX_RSCLI->SetText(QString());
    }
}

}  // namespace quardele::vehicles
