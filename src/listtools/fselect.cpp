#include <listtools/fselect.h>

#include <forms/events.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <listtools/list_tool_context.h>
#include <services/translation.h>

#include "dialog.h"
#include "pointer.h"
#include "texts.h"
#include "ui_fselect.h"

namespace quardele::listtools {

namespace {

using services::TRAD;

/// A failure does not stop the selection: it is told, and the next statement runs.
void ReportFailure(const basic::RuntimeError& error) {
    forms::Screen::SetMousePointer(kNormalPointer);
    ReportError(QStringLiteral("SELECTION (ERREUR "), error);
}

/// The statement of the clauses in force.
QString Statement(const ListToolContext& context) {
    QString sql = context.SelectPart;
    if (!context.WherePart.isEmpty()) {
        sql += QStringLiteral(" Where ") + Trimmed(context.WherePart) + u' ';
    }
    if (!context.OrderPart.isEmpty()) {
        sql += QStringLiteral(" Order by ") + Trimmed(context.OrderPart);
    }
    return sql + u';';
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
    basic::ResumeNext statement(ReportFailure);
    const std::optional<QString> comparison = ComparisonWord();
    if (!comparison) {
        statement([this] { forms::SetFocus(DBC3_SELECTION); });
        return;
    }
    Condition condition = Condition::Ready;
    if (CTX3_SELECTION->Text().isEmpty()) {
        statement(BringBackStartingFilter);
    } else {
        statement([&] { condition = AddCondition(*comparison); });
    }
    if (condition == Condition::NotConvertible) {
        return;
    }
    if (condition == Condition::Ready) {
        Refill(statement);
    } else {
        forms::MsgBox(TRAD(QStringLiteral("Ce mode de sélection est impossible sur ce type colonne...")));
    }
    Unload();
    forms::Screen::SetMousePointer(kNormalPointer);
}

void FSELECT::BringBackStartingFilter() {
    constexpr int kBehindTheCaller = 2;
    const QString filter = forms::Forms::Item(forms::Forms::Count() - kBehindTheCaller).Tag();
    TheListToolContext().WherePart = filter == kNoFilter ? QString() : filter;
}

void FSELECT::Refill(basic::ResumeNext& statement) {
    const ListToolContext& context = TheListToolContext();
    forms::Grid& grid = GridOf(context);
    forms::DataControl& data = DataOf(context);
    statement([&] { grid.SetReDraw(false); });
    statement([&] { data.SetRecordSource(Statement(context)); });
    statement([&] {
        if (grid.VirtualMode()) {
            grid.SetVirtualMaxRows(-1);
        } else {
            grid.SetMaxRows(0);
        }
    });
    statement([&] { data.Refresh(); });
    ShowRows(statement);
}

/// A list without rows is not drawn anew until another selection finds some. Where it is unknown whether
/// there are rows the statements for a list with rows run.
void FSELECT::ShowRows(basic::ResumeNext& statement) {
    const ListToolContext& context = TheListToolContext();
    forms::Grid& grid = GridOf(context);
    bool empty = false;
    statement([&] { empty = DataOf(context).Opened().RecordCount() == 0; });
    if (empty) {
        forms::MsgBox(TRAD(QStringLiteral("Sélection vide.")));
        return;
    }
    statement([&] { grid.SetRow(1); });
    statement([&] { grid.SetCol(context.ActiveCol); });
    statement([&] { grid.Action(0); });
    statement([&] { grid.SetReDraw(true); });
}

}  // namespace quardele::listtools
