// The vehicle file: the list of all vehicles and the record of the current one, on two tabs.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <dao/dao.h>
#include <forms/controls.h>
#include <forms/form.h>

namespace Ui {
class FFICVEH;
}

namespace quardele::basic {
class ResumeNext;
}

namespace quardele::reports {
struct ReportRequest;
}

namespace quardele::vehicles {

struct QuickSearchTerm;

/// Child form of the main window. The list moves the current record of DBD_TVEH, and the bound boxes of the
/// record follow; the customer's name and the visits are read anew each time the record is entered. The
/// operator does not leave a record with an unsaved change.
class FFICVEH : public forms::Form {
    Q_OBJECT
 public:
    FFICVEH();
    ~FFICVEH() override;

    /// Opens the search for a vehicle by its user fields, which stands on the list's tab. Nothing calls it in
    /// this edition, whose list has no button for it.
    void OpenQuickSearch();
    /// Opens the search in the list's active column. Nothing calls it either: a right click does the same.
    void OpenListSearch();

 protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Resize() override;
    void Form_Unload(bool& cancel) override;
    void Form_KeyDown(int& keyCode, int shift) override;

 private:
    static constexpr int kUserFields = 22;
    /// The site's parameters name this many of the user fields.
    static constexpr int kNamedUserFields = 15;

    /// What the site has made of the user fields, by number; slot 0 and those behind kNamedUserFields stay
    /// empty.
    struct UserFields {
        std::array<QString, kUserFields + 1> UserLabel;
        std::array<QString, kUserFields + 1> UserType;
        std::array<std::int16_t, kUserFields + 1> UserLength{};
        std::array<std::int16_t, kUserFields + 1> UserDecimals{};
        std::array<QString, kUserFields + 1> UserTable;
        std::array<std::shared_ptr<dao::Recordset>, kUserFields + 1> UserRecordset;
        /// Lookup tables of values. Nothing switches them on in this edition.
        bool UserTableSwitch = false;
        std::shared_ptr<dao::Database> UserDatabase;
    };

    // Load, activation, layout.
    void HideWhatStartsHidden();
    void DockButtonBar();
    void LayOut();
    void SetMaxLengths();

    // Tabs.
    void ConnectTabs();
    void SST_ONGLET_Click(int previousTab);
    void EnterList();
    void EnterRecord();
    void AskForVisits();
    void ShowRecordButtons(bool visible);

    // List.
    void ConnectList();
    void Cmd_ToolBar_Click(int index);
    void PrintList();
    void DBG_Liste_KeyDown(int keyCode);

    // Record: its boxes.
    void ConnectRecord();
    void ConnectField(forms::TextBox* box);
    void CTX_IMMAT_LostFocus();
    void CTX_CODCLI_LostFocus();
    /// Whether another vehicle has the registration in the box; asked for new records only.
    [[nodiscard]] bool IsRegistrationTaken() const;
    /// Whether the customer of the box's code exists; ClientTable stands on it then.
    [[nodiscard]] bool FindClient();
    [[nodiscard]] QString ClientName() const;

    // Record: the commands.
    void ConnectCommands();
    void Cmd_ADD_Click();
    void Cmd_Delete_Click();
    void CMD_REFRESH_Click();
    void Cmd_Quitter_Click();
    void Cmd_Images_Click();
    void ReloadVehicles();

    // Record: its printed sheet.
    void ConnectSheet();
    void Cmd_Imprimer_Click(int index);
    void AskForSheet() const;
    void SendUserField(reports::ReportRequest& request, int number) const;

    // Record: saving and cancelling it together with its visits.
    void ConnectSaving();
    void Cmd_Update_Click();
    void SaveVehicle();
    void SaveVisits();
    void FlagVisit(int row);
    void Cmd_Annul_Click();
    void CancelVehicle();
    void CancelVisits();
    void ShowClient();

    // Visits.
    void ConnectVisits();
    void DBG_DETAIL_GotFocus();
    void DBG_DETAIL_DataFill(int col, int row);
    void DBG_DETAIL_KeyDown(int keyCode, int shift);
    void DBG_DETAIL_LeaveCell(int col, int row, bool& cancel);
    void OpenNextVisit();
    /// An empty date of the last visit becomes today's.
    void FillInToday(int row);
    void LinkToVehicle(int row);
    void CheckPeriod(int row);
    [[nodiscard]] bool IsKnownWorkType(int row);
    void OpenWorkTypes();
    void CloseWorkTypes();
    void DBG_TypTrav_DblClick(int col, int row);
    void DBG_TypTrav_KeyDown(int keyCode);
    void Cmd_Fermer_TypTrav_Click();

    // History of the vehicle's jobs.
    void ConnectHistory();
    void CMD_HistoVis_Click();
    void Cmd_ToolBar_Histo_Click(int index);
    void PrintHistory();
    void DBG_HISTO_Click(int col);
    void OpenJobDetail();
    void CloseHistory();
    void CloseJobDetail();
    void GoOnInHistory();

    // Selection of jobs by date.
    void ConnectDateSelection();
    void OpenDateSelection();
    void CloseDateSelection();
    void CTX_ChoixDate_LostFocus();
    void Cmd_SelDate_Select_Click();
    [[nodiscard]] std::optional<QString> DateComparison() const;
    [[nodiscard]] bool AddDateCondition(const QString& comparison) const;
    void ShowSelectedJobs(basic::ResumeNext& statement);

    // Quick search.
    void ConnectQuickSearch();
    void CloseQuickSearch();
    void Cmd_GoCherche_Click();
    [[nodiscard]] std::vector<QuickSearchTerm> QuickSearchTerms() const;

    // User fields.
    void init_user();
    void ReadUserParameters();
    void ReadUserField(const dao::Recordset& parameters, int number);
    void HeadUserColumns();
    void ShowUserField(int number);

    std::unique_ptr<Ui::FFICVEH> ui_;
    forms::ControlArray<forms::Button> Cmd_ToolBar;
    forms::ControlArray<forms::Button> Cmd_ToolBar_Histo;
    forms::ControlArray<forms::Button> Cmd_Imprimer;
    forms::ControlArray<forms::TextBox> CTX_USER;
    forms::ControlArray<forms::Label> CTL_USER;
    forms::ControlArray<forms::TextBox> CTX_USERCHER;
    forms::ControlArray<forms::Label> CTL_USERCHER;

    /// True from load until the first activation has run.
    bool FirstActivate = false;
    /// What the adaptation to the screen answered at load.
    std::int16_t ScreenResult = 0;
    /// Customers, for the lookup of names; vehicles, for the sizes of their fields.
    std::shared_ptr<dao::Recordset> ClientTable;
    std::shared_ptr<dao::Recordset> VehicleTable;
    /// True from the start of a new record until it is saved or cancelled. Nothing asks for it.
    bool NewEntry = false;
    UserFields user_;
};

}  // namespace quardele::vehicles
