#include <reminders/fchxmodl.h>

#include <basic/paths.h>
#include <forms/events.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/translation.h>
#include <shell/session.h>

#include "ui_fchxmodl.h"

namespace quardele::reminders {

namespace {

constexpr int kKeyEnter = 13;
constexpr int kKeyEscape = 27;
constexpr int kNameColumn = 1;
/// Length of ".dot"; the point of a longer extension stays in the name.
constexpr int kExtensionLength = 4;

/// The row of the template that bears the prefix alone.
constexpr QStringView kStandardRow = u"*Standard*";

}  // namespace

FCHXMODL::FCHXMODL() : Form(QStringLiteral("FCHXMODL"), forms::FormKind::Dialog) {
    Ui::FCHXMODL layout;
    layout.setupUi(Surface());
    DBG_Liste = layout.DBG_Liste;
    CTX_PATH = layout.CTX_PATH;
    CTX_PREFDOT = layout.CTX_PREFDOT;
    CTX_NOMDOT = layout.CTX_NOMDOT;
    Cmd_Ok = layout.Cmd_Ok;
    Cmd_Annule = layout.Cmd_Annule;

    using forms::Button;
    using forms::Grid;
    using forms::On;
    On(DBG_Liste, &Grid::LeaveRow, this,
       [this](int /*row*/, int newRow, bool& /*cancel*/) { DBG_Liste_LeaveRow(newRow); });
    On(DBG_Liste, &Grid::KeyDown, this, [this](int& keyCode, int /*shift*/) { DBG_Liste_KeyDown(keyCode); });
    On(DBG_Liste, &Grid::DblClick, this, [this](int /*col*/, int /*row*/) { Cmd_Ok_Click(); });
    On(Cmd_Ok, &Button::Click, this, [this] { Cmd_Ok_Click(); });
    On(Cmd_Annule, &Button::Click, this, [this] { Cmd_Annule_Click(); });
}

void FCHXMODL::Form_Load() {
    const shell::Session& session = shell::TheSession();
    SetTop((session.WorkAreaHeight - Height()) / 2 + session.WorkAreaTop);
    SetLeft((forms::Forms::Item(0).Width() - Width()) / 2);
    services::TranslateForm(*this);
}

/// Lists the variants in the order of the folder. The mask takes in the newer kinds of template, unlike the
/// count that led here.
void FCHXMODL::Form_Activate() {
    DBG_Liste->SetMaxRows(0);
    const std::vector<basic::Text> names =
        basic::DirAll(forms::ToText(PathStart() + QStringLiteral("*.dot*")));
    CTX_NOMDOT->SetText(CTX_PATH->Text().remove(QStringLiteral(".dot")));
    for (const basic::Text& name : names) {
        AddTemplate(forms::ToQString(name));
    }
    services::TranslateForm(*this);
}

void FCHXMODL::AddTemplate(const QString& fileName) {
    const QString prefix = CTX_PREFDOT->Text();
    DBG_Liste->SetMaxRows(DBG_Liste->MaxRows() + 1);
    DBG_Liste->SetRow(DBG_Liste->MaxRows());
    DBG_Liste->SetCol(kNameColumn);
    const basic::Text variant = basic::Mid(forms::ToText(fileName), prefix.size() + 1,
                                           fileName.size() - prefix.size() - kExtensionLength);
    const bool standard = basic::Trim(variant).empty() || variant == u".";
    DBG_Liste->SetText(standard ? kStandardRow.toString() : forms::ToQString(variant));
}

QString FCHXMODL::PathStart() const {
    return CTX_PATH->Text() + CTX_PREFDOT->Text();
}

/// Shows where the cursor goes, the row's text as it stands.
void FCHXMODL::DBG_Liste_LeaveRow(int newRow) {
    DBG_Liste->SetRow(newRow);
    DBG_Liste->SetCol(kNameColumn);
    CTX_NOMDOT->SetText(PathStart() + DBG_Liste->Text());
}

void FCHXMODL::DBG_Liste_KeyDown(int& keyCode) {
    if (keyCode == kKeyEnter) {
        keyCode = 0;
        Cmd_Ok_Click();
    } else if (keyCode == kKeyEscape) {
        Cmd_Annule_Click();
    }
}

void FCHXMODL::Cmd_Ok_Click() {
    DBG_Liste->SetRow(DBG_Liste->ActiveRow());
    DBG_Liste->SetCol(kNameColumn);
    const QString variant = DBG_Liste->Text();
    CTX_NOMDOT->SetText(PathStart() + (variant == kStandardRow ? QString() : variant));
    Hide();
}

void FCHXMODL::Cmd_Annule_Click() {
    CTX_NOMDOT->SetText(QString());
    Hide();
}

}  // namespace quardele::reminders
