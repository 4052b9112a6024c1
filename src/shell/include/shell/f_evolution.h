// The change log of the suite's modules.
#pragma once

#include <QString>

#include <forms/combo.h>
#include <forms/controls.h>
#include <forms/data_control.h>
#include <forms/form.h>

namespace quardele::shell {

class LogBox;

/// Dialog that shows the revisions of one module with their changes, newest first. The module is the one that
/// the command line names ("/10"), or else the session's; number 99 lets the operator choose one.
class F_EVOLUTION : public forms::Form {
    Q_OBJECT
 public:
    F_EVOLUTION();

    forms::Frame* FRM_Choix = nullptr;
    forms::ListCombo* DBC_Choix = nullptr;  ///< the modules
    forms::TextBox* CTX_Choix = nullptr;    ///< the number of the one that was chosen
    forms::MemoBox* CTX_EVOLUTION = nullptr;
    forms::DataControl* DBD_evolution = nullptr;
    forms::DataControl* DBD_Modules = nullptr;

 protected:
    void Form_Load() override;
    /// Adds the log to what stands in the box: coming back to the form would show it twice, but it is modal.
    void Form_Activate() override;
    void Form_Resize() override;

 private:
    void DBC_Choix_Click();
    void ChooseModule();
    [[nodiscard]] QString LogStatement() const;
    void ShowModule();
    void ShowTitle();
    void FillLog();

    /// CTX_EVOLUTION.
    LogBox* log_ = nullptr;
    /// The module shown; a text, since the command line may hold anything.
    QString NumAppli;
    /// Whether the operator may choose another module.
    bool ShowChoice = false;
};

}  // namespace quardele::shell
