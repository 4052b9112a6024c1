// The vehicle form's life: load, first activation, layout, unload.
#include <vehicles/fficveh.h>

#include <forms/data_control.h>
#include <forms/grid.h>
#include <forms/mdi_form.h>
#include <forms/strings.h>
#include <services/screen_adaptation.h>
#include <shell/form_support.h>
#include <shell/main_window.h>
#include <shell/session.h>

#include "keys.h"
#include "open_table.h"
#include "tabs.h"
#include "ui_fficveh.h"
#include "visit_columns.h"

namespace quardele::vehicles {

namespace {

// Twips.
constexpr int kMargin = 200;
constexpr int kFreeOfMainWindow = 1500;
constexpr int kFloatingFrameLeft = 100;

constexpr int kBlanksBeforeFolder = 20;

}  // namespace

FFICVEH::FFICVEH()
    : Form(QStringLiteral("FFICVEH"), forms::FormKind::MdiChild), ui_(std::make_unique<Ui::FFICVEH>()) {
    ui_->setupUi(Surface());
    Cmd_ToolBar = {Surface(), QStringLiteral("Cmd_ToolBar")};
    Cmd_ToolBar_Histo = {Surface(), QStringLiteral("Cmd_ToolBar_Histo")};
    Cmd_Imprimer = {Surface(), QStringLiteral("Cmd_Imprimer")};
    CTX_USER = {Surface(), QStringLiteral("CTX_USER")};
    CTL_USER = {Surface(), QStringLiteral("CTL_USER")};
    CTX_USERCHER = {Surface(), QStringLiteral("CTX_USERCHER")};
    CTL_USERCHER = {Surface(), QStringLiteral("CTL_USERCHER")};
    HideWhatStartsHidden();
    ConnectTabs();
    ConnectList();
    ConnectRecord();
    ConnectCommands();
    ConnectSaving();
    ConnectSheet();
    ConnectVisits();
    ConnectHistory();
    ConnectDateSelection();
    ConnectQuickSearch();
}

FFICVEH::~FFICVEH() = default;

/// The layout shows everything; what stands in front, or belongs to the record alone, starts hidden. So does
/// the column that links a visit to its vehicle, for good.
void FFICVEH::HideWhatStartsHidden() {
    for (QWidget* frame : std::initializer_list<QWidget*>{
             ui_->Frm_ChercheVeh, ui_->Frm_TypTrav, ui_->FRM_HISTO, ui_->FRM_SelDate, ui_->FRM_DETAIL}) {
        frame->setVisible(false);
    }
    ShowRecordButtons(false);
    ui_->DBG_DETAIL->SetCol(kVisitLinkColumn);
    ui_->DBG_DETAIL->SetColHidden(true);
}

void FFICVEH::Form_Load() {
    FirstActivate = true;
    ScreenResult = services::AdjustForm(*this, services::kFitToMainWindow);
    const auto& mainWindow = forms::Instance<shell::MDIMENU_VEH>();
    SetHeight(mainWindow.Height() - mainWindow.PIC_STATUS->Height() - kFreeOfMainWindow);
    LayOut();
    shell::Lier_Donnees_Form(*this, forms::ToQString(DataDatabase().Name()));
    ClientTable = OpenTable(u"TCLI");
    VehicleTable = OpenTable(u"TVEH");
    init_user();
    SetCaption(Caption() + QString(kBlanksBeforeFolder, u' ') + shell::TheSession().CHEMIN_DONNEES);
}

/// Everything here happens once: coming back to the form leaves tab, position and focus alone.
void FFICVEH::Form_Activate() {
    if (!FirstActivate) {
        return;
    }
    ui_->SST_ONGLET->SetTab(kListTab);
    forms::SetFocus(ui_->DBG_Liste);
    forms::SetLeft(ui_->FRM_HISTO, kFloatingFrameLeft);
    forms::SetLeft(ui_->FRM_DETAIL, kFloatingFrameLeft);
    forms::SetWidth(ui_->DBG_Liste, forms::Width(ui_->SST_ONGLET) - kMargin);
    SetMaxLengths();
    FirstActivate = false;
}

void FFICVEH::Form_Resize() {
    DockButtonBar();
    if (!FirstActivate) {
        LayOut();
    }
}

void FFICVEH::Form_Unload(bool& /*cancel*/) {
    constexpr int kVehiclesPanel = 2;
    forms::Instance<shell::MDIMENU_VEH>().PIC_STATUS->Panels(kVehiclesPanel).SetVisible(false);
}

void FFICVEH::Form_KeyDown(int& keyCode, int /*shift*/) {
    if (keyCode == kKeyF8 && ui_->SST_ONGLET->Tab() != kListTab) {
        ui_->SST_ONGLET->SetTab(kListTab);
    }
}

/// The bar stands at the bottom edge and runs across the form.
void FFICVEH::DockButtonBar() {
    QWidget* const bar = ui_->Frm_Boutons_Barre;
    forms::SetLeft(bar, 0);
    forms::SetTop(bar, ScaleHeight() - forms::Height(bar));
    forms::SetWidth(bar, ScaleWidth());
}

void FFICVEH::LayOut() {
    if (WindowState() == forms::WindowState::Minimized) {
        return;
    }
    const int tabHeight = ui_->SST_ONGLET->TabHeight();
    forms::SetWidth(ui_->SST_ONGLET, Width() - kMargin);
    forms::SetHeight(ui_->SST_ONGLET, Height() - forms::Height(ui_->Frm_Boutons_Barre) - tabHeight - kMargin);
    forms::SetHeight(ui_->DBG_Liste, forms::Height(ui_->SST_ONGLET) - tabHeight - kMargin);
    forms::SetWidth(ui_->DBG_Liste, forms::Width(ui_->SST_ONGLET) - kMargin);
}

/// The limits come from the database, so that a field widened there needs no change here.
void FFICVEH::SetMaxLengths() {
    const auto sizeOf = [this](basic::TextView field) { return VehicleTable->FieldNamed(field).Size(); };
    ui_->CTX_IMMAT->SetMaxLength(sizeOf(u"TVEH_IMMAT"));
    ui_->CTX_MARQUE->SetMaxLength(sizeOf(u"TVEH_MARQUE"));
    ui_->CTX_ComplIdent->SetMaxLength(sizeOf(u"TVEH_COMPLIDENT"));
    ui_->CTX_CODCLI->SetMaxLength(sizeOf(u"TVEH_CODCLI"));
    ui_->CTX_Note1->SetMaxLength(sizeOf(u"TVEH_NOTE1"));
    ui_->CTX_Note2->SetMaxLength(sizeOf(u"TVEH_NOTE2"));
    for (int number = 1; number <= kUserFields; ++number) {
        const QString field = QStringLiteral("TVEH_USER%1").arg(number);
        CTX_USER(number)->SetMaxLength(sizeOf(forms::ToText(field)));
    }
}

}  // namespace quardele::vehicles
