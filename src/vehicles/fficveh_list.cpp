// The list of vehicles and its tools.
#include <forms/data_control.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <listtools/grid_tools.h>
#include <vehicles/fficveh.h>

#include "keys.h"
#include "tabs.h"
#include "ui_fficveh.h"

namespace quardele::vehicles {

namespace {

// Tools of the list, by the index of their button.
constexpr int kSearchTool = 1;
constexpr int kPrintTool = 3;

}  // namespace

void FFICVEH::ConnectList() {
    for (int index = 0; index <= Cmd_ToolBar.UBound(); ++index) {
        forms::On(Cmd_ToolBar(index), &forms::Button::Click, this, [=, this] { Cmd_ToolBar_Click(index); });
    }
    forms::Grid* const list = ui_->DBG_Liste;
    forms::On(list, &forms::Grid::Click, this, [list](int, int) { listtools::MarkActiveColumn(*list); });
    forms::On(list, &forms::Grid::DblClick, this, [this](int, int) { ui_->SST_ONGLET->SetTab(kRecordTab); });
    forms::On(list, &forms::Grid::KeyDown, this, [this](int& keyCode, int) { DBG_Liste_KeyDown(keyCode); });
    forms::On(list, &forms::Grid::RightClick, this, [this](int clickType, int col, int row, int x, int y) {
        listtools::GridRightClick(*this, *ui_->DBG_Liste, *ui_->DBD_TVEH, clickType, col, row, x, y);
    });
}

/// The search is reached by a right click; its button does nothing on this form.
void FFICVEH::Cmd_ToolBar_Click(int index) {
    switch (index) {
        case kSearchTool:
            break;
        case kPrintTool:
            PrintList();
            break;
        default:
            listtools::GridToolAction(index, *ui_->DBG_Liste, ui_->DBD_TVEH);
            break;
    }
}

void FFICVEH::PrintList() {
    const std::shared_ptr<dao::Recordset> vehicles = ui_->DBD_TVEH->Recordset();
    if (vehicles->RecordCount() != 0) {
        // Going to the end and back fetches all rows.
        vehicles->MoveLast();
        vehicles->MoveFirst();
        listtools::GridToolAction(kPrintTool, *ui_->DBG_Liste, ui_->DBD_TVEH);
        vehicles->MoveFirst();
    }
    forms::SetFocus(ui_->DBG_Liste);
}

void FFICVEH::DBG_Liste_KeyDown(int keyCode) {
    if (keyCode == kKeyEnter) {
        ui_->SST_ONGLET->SetTab(kRecordTab);
    }
}

}  // namespace quardele::vehicles
