// The history of a vehicle: its jobs in a frame in front of the record, the details of one in another frame.
#include <forms/data_control.h>
#include <forms/escape.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <listtools/grid_tools.h>
#include <vehicles/fficveh.h>

#include "history_query.h"
#include "keys.h"
#include "ui_fficveh.h"

namespace quardele::vehicles {

namespace {

constexpr int kDateColumn = 1;
constexpr int kDetailColumn = 5;

// Tools of the list, by the index of their button.
constexpr int kSelectionTool = 0;
constexpr int kPrintTool = 3;

}  // namespace

void FFICVEH::ConnectHistory() {
    forms::On(ui_->CMD_HistoVis, &forms::Button::Click, this, [this] { CMD_HistoVis_Click(); });
    for (int index = 0; index <= Cmd_ToolBar_Histo.UBound(); ++index) {
        forms::On(Cmd_ToolBar_Histo(index), &forms::Button::Click, this,
                  [=, this] { Cmd_ToolBar_Histo_Click(index); });
    }
    forms::Grid* const jobs = ui_->DBG_HISTO;
    forms::On(jobs, &forms::Grid::Click, this, [this](int col, int) { DBG_HISTO_Click(col); });
    // The space bar presses a button cell without a click; for the mouse this comes ahead of the click.
    forms::On(jobs, &forms::Grid::ButtonClicked, this, [this](int, int, int) { OpenJobDetail(); });
    forms::On(ui_->Cmd_CloseHisto, &forms::Button::Click, this, [this] { CloseHistory(); });
    forms::OnEscape(ui_->FRM_HISTO, [this] { CloseHistory(); });
    forms::On(ui_->Cmd_CloseDetail, &forms::Button::Click, this, [this] { CloseJobDetail(); });
    forms::OnEscape(ui_->FRM_DETAIL, [this] { CloseJobDetail(); });
}

void FFICVEH::CMD_HistoVis_Click() {
    const QString registration = ui_->CTX_IMMAT->Text();
    if (registration.isEmpty()) {
        return;
    }
    ui_->DBG_HISTO->SetMaxRows(0);
    ui_->DBD_HISTO->SetRecordSource(HistoryOf(registration));
    ui_->DBD_HISTO->Refresh();
    ui_->FRM_HISTO->setVisible(true);
    ui_->FRM_HISTO->ZOrder(0);
    forms::SetFocus(ui_->DBG_HISTO);
}

/// The date shown is computed, which the selection dialog cannot work on: it has a frame of its own.
void FFICVEH::Cmd_ToolBar_Histo_Click(int index) {
    if (index == kPrintTool) {
        PrintHistory();
    } else if (index == kSelectionTool && ui_->DBG_HISTO->ActiveCol() == kDateColumn) {
        OpenDateSelection();
    } else {
        listtools::GridToolAction(index, *ui_->DBG_HISTO, ui_->DBD_HISTO);
    }
}

void FFICVEH::PrintHistory() {
    constexpr int kPrintAll = 1;
    ui_->DBG_HISTO->SetPrintHeader(QStringLiteral("/c/fb1/fz\"14\"Immatriculation : ") +
                                   ui_->CTX_IMMAT->Text() + QStringLiteral("          Marque : ") +
                                   ui_->CTX_MARQUE->Text() + QStringLiteral(" /n/n"));
    ui_->DBG_HISTO->PrintSheet(kPrintAll);
}

/// In a heading too: only the column counts.
void FFICVEH::DBG_HISTO_Click(int col) {
    if (col == kDetailColumn) {
        OpenJobDetail();
    } else {
        listtools::MarkActiveColumn(*ui_->DBG_HISTO);
    }
}

/// The box is bound: it shows the current job.
void FFICVEH::OpenJobDetail() {
    ui_->FRM_DETAIL->ZOrder(0);
    ui_->FRM_DETAIL->setVisible(true);
    forms::SetFocus(ui_->CTX_DETAILAFF);
}

/// The operator is back at the button that has opened it.
void FFICVEH::CloseHistory() {
    ui_->FRM_HISTO->setVisible(false);
    forms::SetFocus(ui_->CMD_HistoVis);
}

void FFICVEH::CloseJobDetail() {
    ui_->FRM_DETAIL->setVisible(false);
    GoOnInHistory();
}

/// Behind a frame in front of the list of jobs, as long as that is there.
void FFICVEH::GoOnInHistory() {
    if (ui_->DBG_HISTO->isVisible()) {
        forms::SetFocus(ui_->DBG_HISTO);
    }
}

}  // namespace quardele::vehicles
