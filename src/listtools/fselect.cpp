#include <listtools/fselect.h>

#include <forms/events.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <listtools/list_tool_context.h>
#include <listtools/selection.h>
#include <services/translation.h>

#include "dialog.h"
#include "pointer.h"
#include "ui_fselect.h"

namespace quardele::listtools {

namespace {

using services::TRAD;

/// The form that the dialog was opened from.
const forms::Form& Caller() {
    constexpr int kBehindTheCaller = 2;
    return forms::Forms::Item(forms::Forms::Count() - kBehindTheCaller);
}

}  // namespace

FSELECT::FSELECT() : Form(QStringLiteral("FSELECT"), forms::FormKind::Dialog) {
    Ui::FSELECT layout;
    layout.setupUi(Surface());
    DBC3_SELECTION = layout.DBC3_SELECTION;
    CTX3_SELECTION = layout.CTX3_SELECTION;
    Cmd_GoSelection = layout.Cmd_GoSelection;
    Cmd_FinSelection = layout.Cmd_FinSelection;

    using forms::Button;
    using forms::On;
    On(DBC3_SELECTION, &forms::DropDown::KeyPress, this, EnterAsTab);
    On(CTX3_SELECTION, &forms::TextBox::KeyPress, this,
       [this](int& character) { CTX3_SELECTION_KeyPress(character); });
    On(Cmd_GoSelection, &Button::Click, this, [this] { Cmd_GoSelection_Click(); });
    On(Cmd_FinSelection, &Button::Click, this, [this] { Unload(); });
    ShowPressing(Cmd_GoSelection, this);
}

void FSELECT::Form_Load() {
    PlaceDialog(*this);
    if (DBC3_SELECTION->ListIndex() == -1) {
        DBC3_SELECTION->SetListIndex(0);
    }
    CTX3_SELECTION->SetText(QString());
    SetCaption(TitleOn(QStringLiteral("Sélection sur [")));
    services::TranslateForm(*this);
}

/// Enter only leads to the button: the selection waits until that is pressed.
void FSELECT::CTX3_SELECTION_KeyPress(int& character) {
    if (character == kKeyEnter) {
        character = 0;
        forms::SetFocus(Cmd_GoSelection);
    } else if (character == kKeyEscape) {
        character = 0;
        Unload();
    }
}

/// The pointer stays busy when no comparison is chosen. After a value that is no date or no number the dialog
/// stays open for another try.
void FSELECT::Cmd_GoSelection_Click() {
    forms::Screen::SetMousePointer(kBusyPointer);
    basic::ResumeNext statement(ReportSelectionFailure);
    const std::optional<QString> comparison = ComparisonWord();
    if (!comparison) {
        statement([this] { forms::SetFocus(DBC3_SELECTION); });
        return;
    }
    Condition condition = Condition::Ready;
    if (CTX3_SELECTION->Text().isEmpty()) {
        statement([] { BringBackStartingFilter(Caller()); });
    } else {
        statement([&] { condition = AddCondition(*comparison); });
    }
    if (condition == Condition::NotConvertible) {
        return;
    }
    if (condition == Condition::Ready) {
        const ListToolContext& context = TheListToolContext();
        Refill(GridOf(context), DataOf(context), statement);
        ShowRows(GridOf(context), DataOf(context), statement);
    } else {
        forms::MsgBox(TRAD(QStringLiteral("Ce mode de sélection est impossible sur ce type colonne...")));
    }
    Unload();
    forms::Screen::SetMousePointer(kNormalPointer);
}

}  // namespace quardele::listtools
