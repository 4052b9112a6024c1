// The choice of a letter template among several variants.
#pragma once

#include <forms/controls.h>
#include <forms/form.h>
#include <forms/grid.h>

namespace quardele::reminders {

/// Dialog for one question: the caller fills CTX_PATH and CTX_PREFDOT, shows it modally, reads CTX_NOMDOT
/// after it was hidden, and unloads it.
class FCHXMODL : public forms::Form {
    Q_OBJECT
 public:
    FCHXMODL();

    forms::Grid* DBG_Liste = nullptr;
    forms::TextBox* CTX_PATH = nullptr;     ///< folder of the templates, with a trailing backslash
    forms::TextBox* CTX_PREFDOT = nullptr;  ///< start of their names
    forms::TextBox* CTX_NOMDOT = nullptr;   ///< the answer: path without extension, empty when given up
    forms::Button* Cmd_Ok = nullptr;
    forms::Button* Cmd_Annule = nullptr;

 protected:
    void Form_Load() override;
    void Form_Activate() override;

 private:
    void DBG_Liste_LeaveRow(int newRow);
    void DBG_Liste_KeyDown(int& keyCode);
    void Cmd_Ok_Click();
    void Cmd_Annule_Click();

    void AddTemplate(const QString& fileName);
    /// Folder and prefix: what the name of every variant starts with.
    [[nodiscard]] QString PathStart() const;
};

}  // namespace quardele::reminders
