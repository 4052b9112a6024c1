// The search in a list.
#pragma once

#include <QString>

#include <forms/control.h>
#include <forms/controls.h>
#include <forms/form.h>
#include <forms/option_button.h>

namespace quardele::listtools {

/// Dialog that makes the next record current whose field of a list's active column matches a value. The text
/// of its button says whether the search goes on from the current record. Works on the list of
/// ListToolContext.
class FCHERCHE : public forms::Form {
    Q_OBJECT
 public:
    FCHERCHE();

    forms::TextBox* CTX3_CHERCHE = nullptr;  ///< the value
    forms::ControlArray<forms::OptionButton> FND3_OPTRECH;
    forms::Button* Cmd_GoCherche = nullptr;
    forms::Button* Cmd_FinCherche = nullptr;

 protected:
    void Form_Load() override;

 private:
    void ConnectEvents();
    void Cmd_GoCherche_Click();
    void Cmd_FinCherche_Click();
    void CTX3_CHERCHE_Change();
    void CTX3_CHERCHE_LostFocus();

    void Search(const QString& criterion);
    void CheckDate();
    void CheckNumber();

    // Criteria, by the kind of the column; empty for a value that is not searched for.
    [[nodiscard]] QString Criterion();
    [[nodiscard]] QString TickCriterion();
    [[nodiscard]] QString TextCriterion() const;
};

}  // namespace quardele::listtools
