// The visits of a vehicle: a grid that is typed into in place, and the picker of work types in front of it.
#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/text.h>
#include <forms/data_control.h>
#include <forms/escape.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <vehicles/fficveh.h>

#include "keys.h"
#include "ui_fficveh.h"
#include "visit_columns.h"

namespace quardele::vehicles {

namespace {

constexpr int kActivate = 0;
/// In front of a row: the grid's own step behind Enter then lands on column 1.
constexpr int kBeforeRow = 0;
constexpr int kCodeColumn = 1;

QString TextAt(forms::Grid& grid, int column, int row) {
    grid.SetCol(column);
    grid.SetRow(row);
    return grid.Text();
}

/// A value of the program's that must reach the table.
void PutInto(forms::Grid& grid, int column, int row, const QString& text) {
    grid.SetCol(column);
    grid.SetRow(row);
    grid.SetText(text);
    grid.SetChangedFlag(true);
}

QString ShownDate(basic::Date date) {
    return forms::ToQString(basic::Joined(date));
}

/// Calendar months; empty while the period or the date is missing.
QString NextVisit(const QString& period, const QString& lastVisit) {
    if (period.isEmpty() || lastVisit.isEmpty()) {
        return {};
    }
    const std::int16_t months = basic::CInt(forms::ToText(period));
    return ShownDate(basic::DateAdd(u"m", months, basic::CDate(forms::ToText(lastVisit))));
}

}  // namespace

void FFICVEH::ConnectVisits() {
    forms::Grid* const visits = ui_->DBG_DETAIL;
    forms::On(visits, &forms::Grid::GotFocus, this, [this] { DBG_DETAIL_GotFocus(); });
    forms::On(visits, &forms::Grid::DataFill, this,
              [this](int col, int row, int, bool, bool&) { DBG_DETAIL_DataFill(col, row); });
    forms::On(visits, &forms::Grid::KeyDown, this,
              [this](int& keyCode, int shift) { DBG_DETAIL_KeyDown(keyCode, shift); });
    forms::On(visits, &forms::Grid::LeaveCell, this,
              [this](int col, int row, int, int, bool& cancel) { DBG_DETAIL_LeaveCell(col, row, cancel); });
    forms::On(ui_->DBG_TypTrav, &forms::Grid::DblClick, this,
              [this](int col, int row) { DBG_TypTrav_DblClick(col, row); });
    forms::On(ui_->DBG_TypTrav, &forms::Grid::KeyDown, this,
              [this](int& keyCode, int) { DBG_TypTrav_KeyDown(keyCode); });
    forms::On(ui_->Cmd_Fermer_TypTrav, &forms::Button::Click, this, [this] { Cmd_Fermer_TypTrav_Click(); });
    forms::OnEscape(ui_->Frm_TypTrav, [this] { CloseWorkTypes(); });
}

// The grid.

/// An empty grid gets a blank row to type into.
void FFICVEH::DBG_DETAIL_GotFocus() {
    forms::Grid& visits = *ui_->DBG_DETAIL;
    if (visits.MaxRows() != 0) {
        return;
    }
    visits.SetMaxRows(1);
    visits.SetEditModePermanent(true);
    visits.SetEditModeReplace(true);
    visits.SetCol(kVisitTypeColumn);
    visits.SetRow(visits.MaxRows());
    visits.Action(kActivate);
}

/// The last bound cell of a row: period and date are there by then.
void FFICVEH::DBG_DETAIL_DataFill(int col, int row) {
    if (col != kVisitLinkColumn) {
        return;
    }
    forms::Grid& visits = *ui_->DBG_DETAIL;
    const QString period = TextAt(visits, kVisitPeriodColumn, row);
    const QString next = NextVisit(period, TextAt(visits, kVisitDateColumn, row));
    visits.SetCol(kNextVisitColumn);
    visits.SetText(next);
}

void FFICVEH::DBG_DETAIL_KeyDown(int keyCode, int shift) {
    const forms::Grid& visits = *ui_->DBG_DETAIL;
    const bool inLastDate = visits.ActiveCol() == kVisitDateColumn && visits.ActiveRow() == visits.MaxRows();
    // Alt+F4 is the desktop's: it closes the program.
    const bool withAlt = (shift & kShiftAlt) != 0;
    if (keyCode == kKeyEnter && inLastDate) {
        OpenNextVisit();
    } else if (keyCode == kKeyF4 && !withAlt && visits.ActiveCol() == kVisitTypeColumn) {
        OpenWorkTypes();
    }
}

void FFICVEH::OpenNextVisit() {
    forms::Grid& visits = *ui_->DBG_DETAIL;
    FillInToday(visits.ActiveRow());
    visits.SetMaxRows(visits.MaxRows() + 1);
    visits.SetRow(visits.MaxRows());
    visits.SetCol(kBeforeRow);
    visits.Action(kActivate);
}

void FFICVEH::FillInToday(int row) {
    forms::Grid& visits = *ui_->DBG_DETAIL;
    if (TextAt(visits, kVisitDateColumn, row).isEmpty()) {
        PutInto(visits, kVisitDateColumn, row, ShownDate(basic::Today()));
    }
}

void FFICVEH::DBG_DETAIL_LeaveCell(int col, int row, bool& cancel) {
    switch (col) {
        case kVisitTypeColumn:
            cancel = !IsKnownWorkType(row);
            break;
        case kVisitPeriodColumn:
            CheckPeriod(row);
            break;
        case kVisitDateColumn:
            LinkToVehicle(row);
            FillInToday(row);
            break;
        default:
            break;
    }
}

/// A new visit gets its vehicle here, ahead of any save.
void FFICVEH::LinkToVehicle(int row) {
    forms::Grid& visits = *ui_->DBG_DETAIL;
    visits.SetCol(kVisitLinkColumn);
    visits.SetRow(row);
    visits.SetText(ui_->CTX_IMMAT->Text());
}

/// No period is 0: a work type without a reminder.
void FFICVEH::CheckPeriod(int row) {
    forms::Grid& visits = *ui_->DBG_DETAIL;
    const QString period = TextAt(visits, kVisitPeriodColumn, row);
    if (period.isEmpty() || !basic::IsNumeric(forms::ToText(period))) {
        PutInto(visits, kVisitPeriodColumn, row, QStringLiteral("0"));
    }
}

/// An unknown code holds the cursor; the picker opens on the nearest one.
bool FFICVEH::IsKnownWorkType(int row) {
    forms::Grid& visits = *ui_->DBG_DETAIL;
    const basic::Text code = basic::Trim(forms::ToText(TextAt(visits, kVisitTypeColumn, row)));
    if (code.empty()) {
        return true;
    }
    dao::Recordset& workTypes = ui_->DBD_TTYP->Opened();
    workTypes.FindFirst(u"TTYP_CODE='" + code + u"'");
    if (!workTypes.NoMatch()) {
        return true;
    }
    visits.SetActiveCell(kVisitTypeColumn, row);
    workTypes.FindFirst(u"TTYP_CODE>='" + code + u"'");
    OpenWorkTypes();
    return false;
}

// The picker.

void FFICVEH::OpenWorkTypes() {
    ui_->Frm_TypTrav->setVisible(true);
    ui_->Frm_TypTrav->ZOrder(0);
    forms::SetFocus(ui_->DBG_TypTrav);
}

void FFICVEH::CloseWorkTypes() {
    ui_->Frm_TypTrav->setVisible(false);
    forms::SetFocus(ui_->DBG_DETAIL);
}

/// The heading is no choice: without a type of work there is nothing else to point at.
void FFICVEH::DBG_TypTrav_DblClick(int /*col*/, int row) {
    if (row < 1) {
        return;
    }
    forms::Grid& visits = *ui_->DBG_DETAIL;
    const QString code = TextAt(*ui_->DBG_TypTrav, kCodeColumn, row);
    visits.SetRow(visits.ActiveRow());
    visits.SetCol(kVisitTypeColumn);
    visits.SetText(code);
    CloseWorkTypes();
}

void FFICVEH::DBG_TypTrav_KeyDown(int keyCode) {
    const forms::Grid& workTypes = *ui_->DBG_TypTrav;
    if (keyCode == kKeyEnter) {
        DBG_TypTrav_DblClick(workTypes.ActiveCol(), workTypes.ActiveRow());
    }
}

/// By the same way as Escape.
void FFICVEH::Cmd_Fermer_TypTrav_Click() {
    forms::SetFocus(ui_->DBG_TypTrav);
    forms::SendKeys(QStringLiteral("{ESC}"));
}

}  // namespace quardele::vehicles
