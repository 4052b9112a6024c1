#include <shell/main_window.h>

#include <QAction>
#include <QMainWindow>

#include <basic/resume_next.h>
#include <forms/events.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/screen_adaptation.h>
#include <services/translation.h>
#include <shell/f_evolution.h>
#include <shell/session.h>

#include "control_appli.h"
#include "load_statements.h"
#include "local_params.h"
#include "structure_patch.h"
#include "ui_mdimenu_veh.h"

namespace quardele::shell {

namespace {

/// A screen of 800 x 600 in twips; the window takes all of its width.
constexpr int kSmallScreenWidth = 12000;
constexpr int kSmallScreenHeight = 9000;
/// What the window leaves free of the screen.
constexpr int kFreeWidth = 2445;
constexpr int kFreeHeight = 500;
/// What a child form leaves free of the window besides the status bar.
constexpr int kChildFreeHeight = 1500;
constexpr int kBlanksBeforeFolder = 26;
/// This module in the suite's table of modules.
constexpr int kModuleNumber = 10;

// Panels of the status bar.
constexpr int kSizePanel = 1;
constexpr int kVehiclesPanel = 2;
constexpr int kRemindersPanel = 3;

QString SizeText(const forms::Form& form) {
    return QStringLiteral("%1 x %2").arg(form.Height()).arg(form.Width());
}

QString VersionText() {
    return QStringLiteral("%1.%2.%3")
        .arg(forms::App::Major())
        .arg(forms::App::Minor())
        .arg(QStringLiteral("0%1").arg(forms::App::Revision()).right(2));
}

void RecordTranslationDatabase() {
    services::TranslationSettings& translation = services::Translation();
    translation.CHEMIN_TRAD = TheSession().CHEMIN_DONNEES;
    translation.NOM_BD_TRAD = QStringLiteral("BDTRAD.MDB");
    translation.TranslationFont.clear();
}

word::CatalogueKey CurrentCatalogueKey() {
    const forms::Form* const form = forms::Screen::ActiveForm();
    if (form == nullptr) {
        throw basic::RuntimeError(basic::error::kObjectNotSet);
    }
    return {TheSession().NUMAPPLI_COURANT, forms::ToText(form->Name())};
}

}  // namespace

MenuForms& TheMenuForms() {
    static MenuForms menuForms;
    return menuForms;
}

MDIMENU_VEH::MDIMENU_VEH() : MdiForm(QStringLiteral("MDIMENU_VEH")) {
    Ui::MDIMENU_VEH ui;
    ui.setupUi(MainWindow());
    PIC_STATUS = ui.PIC_STATUS;
    M_VEHIC = ui.M_VEHIC;
    M_RELANC = ui.M_RELANC;
    M_INFOS = ui.M_INFOS;
    M_PARAM = ui.M_PARAM;
    M_QUIT = ui.M_QUIT;
    AdoptLayout();

    forms::On(M_VEHIC, &QAction::triggered, this, [this](bool) { M_VEHIC_Click(); });
    forms::On(M_RELANC, &QAction::triggered, this, [this](bool) { M_RELANC_Click(); });
    forms::On(M_INFOS, &QAction::triggered, this, [](bool) { M_INFOS_Click(); });
    forms::On(M_PARAM, &QAction::triggered, this, [this](bool) { M_PARAM_Click(); });
    forms::On(M_QUIT, &QAction::triggered, this, [](bool) { M_QUIT_Click(); });
    forms::On(PIC_STATUS, &forms::StatusBar::PanelClick, this,
              [](forms::StatusPanel* panel) { PIC_STATUS_PanelClick(*panel); });
}

void MDIMENU_VEH::Form_Load() {
    LoadStatements statement;

    statement([] { Init_Params_Locaux(); });
    PlaceOnScreen(statement);
    ++statement.ETAPE;
    statement([] { CONTROL_APPLI(); });
    ++statement.ETAPE;
    statement([] { RecordTranslationDatabase(); });
    statement([this] { services::TranslateForm(*this); });
    ++statement.ETAPE;
    statement(
        [] { TheSession().OBJ_WORD = std::make_unique<word::GWORD>(CurrentCatalogueKey, forms::ShowBox); });
    statement([this] { ExtendCaption(); });
    ++statement.ETAPE;
    statement([] {
        if (PATCH_VEH()) {
            forms::EndProcess();
        }
    });
    SetUpStatusBar(statement);
}

void MDIMENU_VEH::PlaceOnScreen(basic::ResumeNext& statement) {
    Session& session = TheSession();
    services::ScreenSize& screen = services::ScreenAtStart();
    statement([&] { screen.ScreenWidth = forms::Screen::Width(); });
    statement([&] { screen.ScreenHeight = forms::Screen::Height(); });
    statement([&] {
        SetWidth(screen.ScreenWidth == kSmallScreenWidth ? screen.ScreenWidth
                                                         : screen.ScreenWidth - kFreeWidth);
    });
    // The designed height, which the next statement changes.
    statement([&] { session.WorkAreaTop = screen.ScreenHeight == kSmallScreenHeight ? 0 : Height() + 1; });
    statement([&] { SetHeight(screen.ScreenHeight - kFreeHeight); });
    statement([&] { SetTop(0); });
    statement([&] { SetLeft(0); });
    statement([&] { session.MDI_HAUTEUR = Height(); });
    statement([&] { session.MDI_LARGEUR = Width(); });
}

void MDIMENU_VEH::ExtendCaption() {
    SetCaption(Caption() + QStringLiteral("   V") + VersionText() + QString(kBlanksBeforeFolder, u' ') +
               TheSession().CHEMIN_DONNEES);
}

void MDIMENU_VEH::SetUpStatusBar(basic::ResumeNext& statement) {
    for (int index = kVehiclesPanel; index <= PIC_STATUS->Count(); ++index) {
        statement([&] { PIC_STATUS->Panels(index).SetVisible(false); });
    }
    statement([&] { PIC_STATUS->Panels(kSizePanel).SetVisible(true); });
    statement([&] { PIC_STATUS->Panels(kSizePanel).SetText(SizeText(*this)); });
}

void MDIMENU_VEH::Form_Resize() {
    PIC_STATUS->Panels(kSizePanel).SetText(SizeText(*this));
    if (WindowState() == forms::WindowState::Minimized) {
        return;
    }
    for (int index = 1; index < forms::Forms::Count(); ++index) {
        forms::Form& form = forms::Forms::Item(index);
        if (form.WindowState() == forms::WindowState::Normal) {
            form.SetHeight(Height() - PIC_STATUS->Height() - kChildFreeHeight);
            form.SetWidth(Width());
        }
    }
}

void MDIMENU_VEH::M_VEHIC_Click() {
    forms::Form& form = TheMenuForms().vehicles();
    form.Show();
    form.ZOrder(0);
    form.SetWindowState(forms::WindowState::Normal);
    ShowPanel(kVehiclesPanel, QStringLiteral("Suivi Véhicules"));
}

/// A minimized reminders form comes to the front and stays minimized, unlike the vehicle form.
void MDIMENU_VEH::M_RELANC_Click() {
    forms::Form& form = TheMenuForms().reminders();
    form.Show();
    form.ZOrder(0);
    ShowPanel(kRemindersPanel, QStringLiteral("Relances"));
}

void MDIMENU_VEH::M_INFOS_Click() {
    TheSession().NUMAPPLI_COURANT = kModuleNumber;
    forms::Instance<F_EVOLUTION>().Show(forms::ShowMode::Modal);
}

void MDIMENU_VEH::M_PARAM_Click() {
    forms::MsgBox(QStringLiteral("H: %1\r\nW: %2").arg(Height()).arg(Width()));
}

void MDIMENU_VEH::M_QUIT_Click() {
    forms::EndProcess();
}

void MDIMENU_VEH::PIC_STATUS_PanelClick(const forms::StatusPanel& panel) {
    switch (panel.Index()) {
        case kVehiclesPanel:
            TheMenuForms().vehicles().ZOrder(0);
            break;
        case kRemindersPanel:
            TheMenuForms().reminders().ZOrder(0);
            break;
        default:
            break;
    }
}

void MDIMENU_VEH::ShowPanel(int index, const QString& text) {
    forms::StatusPanel& panel = PIC_STATUS->Panels(index);
    panel.SetVisible(true);
    panel.SetText(text);
}

}  // namespace quardele::shell
