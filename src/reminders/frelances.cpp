#include <reminders/frelances.h>

#include <basic/conversion.h>
#include <basic/date.h>
#include <forms/events.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <listtools/grid_tools.h>
#include <services/calendar_picker.h>
#include <services/calendar_settings.h>
#include <shell/form_support.h>
#include <shell/main_window.h>
#include <shell/session.h>

#include "list_columns.h"
#include "session_objects.h"
#include "ui_frelances.h"

namespace quardele::reminders {

namespace {

constexpr int kKeyEnter = 13;
constexpr int kKeyF4 = 115;
/// With Ctrl or Alt a key belongs to the window, which F4 then closes.
constexpr int kWindowModifiers = 2 | 4;
/// Panel of the main window's status bar that says that this form is open.
constexpr int kRemindersPanel = 3;
constexpr int kCaptionGap = 20;

}  // namespace

FRELANCES::FRELANCES() : Form(QStringLiteral("FRELANCES"), forms::FormKind::MdiChild) {
    AdoptLayout();
    ConnectEvents();
}

FRELANCES::~FRELANCES() = default;

void FRELANCES::AdoptLayout() {
    Ui::FRELANCES layout;
    layout.setupUi(Surface());
    DBD_TVEH = layout.DBD_TVEH;
    DBD_SITE = layout.DBD_SITE;
    CTX_DATEREL = layout.CTX_DATEREL;
    Cmd_Cal_DateRef = layout.Cmd_Cal_DateRef;
    FRM_Site = layout.FRM_Site;
    DBC_SITE = layout.DBC_SITE;
    CMD_Site = forms::ControlArray<forms::Button>(Surface(), QStringLiteral("CMD_Site"));
    DBG_RELANCES = layout.DBG_RELANCES;
    Cmd_ToolBar = forms::ControlArray<forms::Button>(Surface(), QStringLiteral("Cmd_ToolBar"));
    Cmd_SelectAll = layout.Cmd_SelectAll;
    Cmd_DeSelectAll = layout.Cmd_DeSelectAll;
    Cmd_Editer = layout.Cmd_Editer;
    Cmd_Quitter = layout.Cmd_Quitter;
}

void FRELANCES::ConnectEvents() {
    using forms::Button;
    using forms::Grid;
    using forms::On;
    using forms::TextBox;
    On(CTX_DATEREL, &TextBox::GotFocus, this, [this] { CTX_DATEREL_GotFocus(); });
    On(CTX_DATEREL, &TextBox::KeyDown, this,
       [this](int& keyCode, int shift) { CTX_DATEREL_KeyDown(keyCode, shift); });
    On(Cmd_Cal_DateRef, &Button::Click, this, [this] { Cmd_Cal_DateRef_Click(); });
    On(DBG_RELANCES, &Grid::ButtonClicked, this,
       [this](int col, int row, int buttonDown) { DBG_RELANCES_ButtonClicked(col, row, buttonDown); });
    On(DBG_RELANCES, &Grid::DataFill, this,
       [this](int /*col*/, int row, int /*dataType*/, bool getData, bool& /*cancel*/) {
           DBG_RELANCES_DataFill(row, getData);
       });
    for (int index = 0; index <= CMD_Site.UBound(); ++index) {
        On(CMD_Site(index), &Button::Click, this, [this, index] { CMD_Site_Click(index); });
    }
    for (int index = 0; index <= Cmd_ToolBar.UBound(); ++index) {
        On(Cmd_ToolBar(index), &Button::Click, this, [this, index] { Cmd_ToolBar_Click(index); });
    }
    On(Cmd_SelectAll, &Button::Click, this, [this] { C_Coche_Editer(true); });
    On(Cmd_DeSelectAll, &Button::Click, this, [this] { C_Coche_Editer(false); });
    On(Cmd_Editer, &Button::Click, this, [this] { Cmd_Editer_Click(); });
    On(Cmd_Quitter, &Button::Click, this, [this] { Unload(); });
}

void FRELANCES::Form_Load() {
    const shell::Session& session = shell::TheSession();
    B_CHARGEMENT = true;
    CentreOnMainWindow();
    shell::Lier_Donnees_Form(*this, forms::ToQString(Existing(session.BD_DONNEES).Name()));
    SetCaption(Caption() + QString(kCaptionGap, u' ') + session.CHEMIN_DONNEES);
    DBG_RELANCES->SetCol(kSiteColumn);
    DBG_RELANCES->SetColHidden(true);
    FRM_Site->setVisible(false);
    OpenStockDatabase();
    ShowSites();
}

void FRELANCES::CentreOnMainWindow() {
    const forms::Form& mainWindow = forms::Forms::Item(0);
    SetTop((mainWindow.Height() - Height()) / 2);
    SetLeft((mainWindow.Width() - Width()) / 2);
}

void FRELANCES::OpenStockDatabase() {
    shell::Session& session = shell::TheSession();
    session.SITES_DISPO = false;
    // The stock database of an earlier opening of the form does not count.
    session.BD_STOCK.reset();
    if (session.CHEMIN_STOCK.isEmpty()) {
        return;
    }
    session.NOM_BD_STOCK = QStringLiteral("SERVANDA.MDB");
    session.BD_STOCK = dao::DBEngine::Instance().Workspaces(0).OpenDatabase(
        forms::ToText(session.CHEMIN_STOCK + session.NOM_BD_STOCK));
}

void FRELANCES::ShowSites() {
    shell::Session& session = shell::TheSession();
    if (session.BD_STOCK == nullptr) {
        DBD_SITE->SetDatabaseName(QString());
        return;
    }
    DBD_SITE->SetDatabaseName(forms::ToQString(session.BD_STOCK->Name()));
    DBD_SITE->SetRecordSource(
        QStringLiteral("select * from TSITE where TSITE_Inactif = false order by TSITE_CODE"));
    DBD_SITE->Refresh();
    if (DBD_SITE->Recordset()->RecordCount() == 0) {
        return;
    }
    session.SITES_DISPO = true;
    DBG_RELANCES->SetCol(kSiteColumn);
    DBG_RELANCES->SetColHidden(false);
    FRM_Site->setVisible(true);
}

void FRELANCES::Form_Activate() {
    if (!B_CHARGEMENT) {
        return;
    }
    DBG_RELANCES->SetMaxRows(0);
    DBD_TVEH->SetRecordSource(QStringLiteral("Select * from TVEH where false;"));
    DBD_TVEH->Refresh();
    DBC_SITE->Clear();
    B_CHARGEMENT = false;
}

void FRELANCES::Form_Unload(bool& /*cancel*/) {
    forms::Instance<shell::MDIMENU_VEH>().PIC_STATUS->Panels(kRemindersPanel).SetVisible(false);
}

void FRELANCES::CTX_DATEREL_GotFocus() {
    if (CTX_DATEREL->Text().isEmpty()) {
        CTX_DATEREL->SetText(forms::ToQString(basic::CStr(basic::Today())));
    }
    shell::Selection_Texte();
}

void FRELANCES::CTX_DATEREL_KeyDown(int& keyCode, int shift) {
    if (keyCode == kKeyEnter) {
        ListDueVisits();
    } else if (keyCode == kKeyF4 && (shift & kWindowModifiers) == 0) {
        services::TheCalendarSettings().calendarOpen = true;
        keyCode = 0;
        services::OpenCalendar();
    }
}

void FRELANCES::Cmd_Cal_DateRef_Click() {
    forms::SetFocus(CTX_DATEREL);
    forms::SendKeys(QStringLiteral("{F4}"));
}

void FRELANCES::Cmd_ToolBar_Click(int index) {
    listtools::GridToolAction(index, *DBG_RELANCES, DBD_TVEH);
}

/// Rows that the site filter hides keep their tick.
void FRELANCES::C_Coche_Editer(bool ticked) {
    for (int row = 1; row <= DBG_RELANCES->MaxRows(); ++row) {
        Address(*DBG_RELANCES, kLetterColumn, row);
        if (!DBG_RELANCES->RowHidden()) {
            DBG_RELANCES->SetValue(ticked ? -1 : 0);
        }
    }
}

}  // namespace quardele::reminders
