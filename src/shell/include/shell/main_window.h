// The main window: menu, child forms, status bar, and the road from process start to idle.
#pragma once

#include <functional>

#include <forms/mdi_form.h>
#include <forms/status_bar.h>

class QAction;

namespace quardele::basic {
class ResumeNext;
}

namespace quardele::shell {

/// The forms that the menu opens lie in rooms of their own; the program's start says here how to reach them.
/// Each gives the form's one instance, creating it at first use.
struct MenuForms {
    std::function<forms::Form&()> vehicles;
    std::function<forms::Form&()> reminders;
};
[[nodiscard]] MenuForms& TheMenuForms();

class MDIMENU_VEH : public forms::MdiForm {
    Q_OBJECT
 public:
    MDIMENU_VEH();

    forms::StatusBar* PIC_STATUS = nullptr;
    QAction* M_VEHIC = nullptr;
    QAction* M_RELANC = nullptr;
    QAction* M_INFOS = nullptr;
    QAction* M_PARAM = nullptr;
    QAction* M_QUIT = nullptr;

 protected:
    void Form_Load() override;
    void Form_Resize() override;

 private:
    // Parts of Load; each statement stands alone.
    void PlaceOnScreen(basic::ResumeNext& statement);
    void ExtendCaption();
    void SetUpStatusBar(basic::ResumeNext& statement);
    void ShowPanel(int index, const QString& text);

    void M_VEHIC_Click();
    void M_RELANC_Click();
    static void M_INFOS_Click();
    void M_PARAM_Click();
    static void M_QUIT_Click();
    static void PIC_STATUS_PanelClick(const forms::StatusPanel& panel);
};

}  // namespace quardele::shell
