// The selection of a list's rows by one column.
#pragma once

#include <optional>

#include <QString>

#include <forms/controls.h>
#include <forms/drop_down.h>
#include <forms/form.h>

namespace quardele::listtools {

/// Dialog that adds a condition on a list's active column to those in force, and fills the list anew. An
/// empty value brings back the filter that the form started with. Works on the list of ListToolContext.
class FSELECT : public forms::Form {
    Q_OBJECT
 public:
    FSELECT();

    forms::DropDown* DBC3_SELECTION = nullptr;  ///< the comparison
    forms::TextBox* CTX3_SELECTION = nullptr;   ///< the value
    forms::Button* Cmd_GoSelection = nullptr;
    forms::Button* Cmd_FinSelection = nullptr;

 protected:
    void Form_Load() override;

 private:
    /// What became of the condition.
    enum class Condition { Ready, Refused, NotConvertible };

    void CTX3_SELECTION_KeyPress(int& character);
    void Cmd_GoSelection_Click();

    /// Nothing when no comparison is chosen.
    [[nodiscard]] std::optional<QString> ComparisonWord() const;
    [[nodiscard]] bool Contains() const;

    // Conditions, by the kind of the column.
    [[nodiscard]] Condition AddCondition(const QString& comparison);
    [[nodiscard]] Condition AddDateCondition(const QString& comparison) const;
    [[nodiscard]] Condition AddTickCondition();
    [[nodiscard]] Condition AddNumberCondition(const QString& comparison) const;
    [[nodiscard]] Condition AddTextCondition(const QString& comparison) const;
};

}  // namespace quardele::listtools
