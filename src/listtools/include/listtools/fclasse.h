// The sort of a list.
#pragma once

#include <forms/control.h>
#include <forms/controls.h>
#include <forms/form.h>
#include <forms/option_button.h>

namespace quardele::listtools {

/// Dialog that sorts a list on its active column, in place of the sort in force or behind it. Conditions stay
/// as they are. Works on the list of ListToolContext.
class FCLASSE : public forms::Form {
    Q_OBJECT
 public:
    FCLASSE();

    forms::ControlArray<forms::OptionButton> FND3_OPTClasser;
    forms::CheckBox* CHK_TYPTRI = nullptr;
    forms::Button* Cmd_GoClasser = nullptr;
    forms::Button* Cmd_FinClasser = nullptr;

 protected:
    void Form_Load() override;

 private:
    void Cmd_GoClasser_Click();
    void Sort();
};

}  // namespace quardele::listtools
