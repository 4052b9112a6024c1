// The reminders: which periodic visits fall due before a date, and the letters about them.
#pragma once

#include <memory>

#include <automation/object.h>
#include <dao/dao.h>
#include <forms/combo.h>
#include <forms/control.h>
#include <forms/controls.h>
#include <forms/data_control.h>
#include <forms/form.h>
#include <forms/grid.h>

namespace quardele::reminders {

/// Child form of the main window. The letters are made from what the cells of DBG_RELANCES hold.
class FRELANCES : public forms::Form {
    Q_OBJECT
 public:
    FRELANCES();
    ~FRELANCES() override;

    forms::DataControl* DBD_TVEH = nullptr;
    forms::DataControl* DBD_SITE = nullptr;
    forms::TextBox* CTX_DATEREL = nullptr;
    forms::Button* Cmd_Cal_DateRef = nullptr;
    forms::Frame* FRM_Site = nullptr;
    forms::ListCombo* DBC_SITE = nullptr;
    forms::ControlArray<forms::Button> CMD_Site;  ///< 0 applies the site filter, 1 clears it
    forms::Grid* DBG_RELANCES = nullptr;
    forms::ControlArray<forms::Button> Cmd_ToolBar;  ///< by the number of the list tool
    forms::Button* Cmd_SelectAll = nullptr;
    forms::Button* Cmd_DeSelectAll = nullptr;
    forms::Button* Cmd_Editer = nullptr;
    forms::Button* Cmd_Quitter = nullptr;

 protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload(bool& cancel) override;

 private:
    void AdoptLayout();
    void ConnectEvents();

    void CentreOnMainWindow();
    void OpenStockDatabase();
    void ShowSites();

    void CTX_DATEREL_GotFocus();
    void CTX_DATEREL_KeyDown(int& keyCode, int shift);
    void Cmd_Cal_DateRef_Click();
    void Cmd_ToolBar_Click(int index);
    void C_Coche_Editer(bool ticked);

    void ListDueVisits();
    void RewriteReferenceDate();
    void ShowDueVisits();

    void DBG_RELANCES_DataFill(int row, bool getData);
    void OpenSites();
    void FillSite(int row);

    void DBG_RELANCES_ButtonClicked(int col, int row, int buttonDown);
    void Abandon(int row);

    void CMD_Site_Click(int index);
    void Cmd_Editer_Click();

    /// True from Load until the first Activate has run.
    bool B_CHARGEMENT = false;
    /// Vehicles and their sites; null until first needed, then kept for the life of the form.
    std::shared_ptr<dao::Recordset> RS_SITE;
    /// The Word application of the last letter. Dropping it leaves Word and the letter open.
    automation::ObjectPtr APPLI_WORD;
};

}  // namespace quardele::reminders
