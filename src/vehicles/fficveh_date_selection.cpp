// The selection of jobs by date, in a frame inside the history. A condition binds to the second half of the
// history's own OR only, so that jobs found through a detail line stay in the list whatever their date.
#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/resume_next.h>
#include <basic/text.h>
#include <forms/data_control.h>
#include <forms/escape.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <listtools/list_tool_context.h>
#include <listtools/selection.h>
#include <services/translation.h>
#include <shell/form_support.h>
#include <vehicles/fficveh.h>

#include "history_query.h"
#include "keys.h"
#include "ui_fficveh.h"

namespace quardele::vehicles {

namespace {

using forms::CellType;
using services::TRAD;

constexpr int kNormalPointer = 0;
constexpr int kBusyPointer = 11;
constexpr int kNothingChosen = -1;

QString& Conditions() {
    return listtools::TheListToolContext().WherePart;
}

/// Enter leads on to the next control, and is left to this one as well.
void TabAfterEnter(int character) {
    if (character == kKeyEnter) {
        forms::SendKeys(QStringLiteral("{TAB}"));
    }
}

/// Compares the first characters of the date as text.
void AddTextCondition(const QString& value) {
    listtools::JoinToConditions();
    Conditions() += QStringLiteral("left(") + listtools::TheListToolContext().FieldName + u',' +
                    QString::number(value.size()) + QStringLiteral(") = '") + value + QStringLiteral("' ");
}

/// The value of a condition as SQL. Throws RuntimeError 13 for a text that is no date.
QString DateLiteral(const QString& value) {
    const basic::Text upperCase = basic::UCase(forms::ToText(value));
    if (upperCase == u"NULL" || upperCase == u"VIDE") {
        return QStringLiteral(" Null ");
    }
    const basic::Date date = basic::CDate(forms::ToText(value));
    return QStringLiteral(" #") + forms::ToQString(basic::Format(date, u"mm/dd/yy")) + QStringLiteral("# ");
}

}  // namespace

void FFICVEH::ConnectDateSelection() {
    forms::On(ui_->BXC_ChoixDate, &forms::DropDown::KeyPress, this,
              [](int& character) { TabAfterEnter(character); });
    forms::On(ui_->CTX_ChoixDate, &forms::TextBox::KeyPress, this,
              [](int& character) { TabAfterEnter(character); });
    forms::On(ui_->CTX_ChoixDate, &forms::TextBox::GotFocus, this, [] { shell::Selection_Texte(); });
    forms::On(ui_->CTX_ChoixDate, &forms::TextBox::LostFocus, this, [this] { CTX_ChoixDate_LostFocus(); });
    forms::On(ui_->Cmd_SelDate_Select, &forms::Button::Click, this, [this] { Cmd_SelDate_Select_Click(); });
    forms::On(ui_->Cmd_SelDate_Close, &forms::Button::Click, this, [this] { CloseDateSelection(); });
    forms::OnEscape(ui_->FRM_SelDate, [this] { CloseDateSelection(); });
}

void FFICVEH::OpenDateSelection() {
    ui_->BXC_ChoixDate->SetListIndex(kNothingChosen);
    ui_->CTX_ChoixDate->SetText(QString());
    ui_->FRM_SelDate->setVisible(true);
    ui_->FRM_SelDate->ZOrder(0);
}

void FFICVEH::CloseDateSelection() {
    ui_->FRM_SelDate->setVisible(false);
    GoOnInHistory();
}

/// Holds the operator until the date can be read; a frame that has gone by then holds nobody.
void FFICVEH::CTX_ChoixDate_LostFocus() {
    forms::TextBox* const box = ui_->CTX_ChoixDate;
    if (box->Text().isEmpty()) {
        return;
    }
    try {
        const basic::Date date = basic::CDate(forms::ToText(box->Text()));
        box->SetText(forms::ToQString(basic::CStr(date)));
    } catch (const basic::RuntimeError&) {
        forms::MsgBox(TRAD(QStringLiteral("Saisie d'une date attendue (JJ/MM/AA).")));
        if (box->isVisible()) {
            forms::SetFocus(box);
        }
    }
}

/// The clauses in force are those of the list, so that conditions add up. The pointer stays busy when no
/// comparison is known; after a value that is no date the frame stays open for another try.
void FFICVEH::Cmd_SelDate_Select_Click() {
    listtools::ListToolContext& context = listtools::TheListToolContext();
    basic::ResumeNext statement(listtools::ReportSelectionFailure);
    statement([&] {
        shell::SplitRecordSource(ui_->DBD_HISTO->RecordSource(), context.SelectPart, context.WherePart,
                                 context.OrderPart);
    });
    statement([&] { listtools::KeepStartingFilter(*this); });
    context.FieldName = SortedDateOfJob();
    forms::Screen::SetMousePointer(kBusyPointer);
    const std::optional<QString> comparison = DateComparison();
    if (!comparison) {
        statement([this] { forms::SetFocus(ui_->BXC_ChoixDate); });
        return;
    }
    if (AddDateCondition(*comparison)) {
        ShowSelectedJobs(statement);
        ui_->FRM_SelDate->setVisible(false);
    }
    forms::Screen::SetMousePointer(kNormalPointer);
}

/// Nothing for an entry that the list of comparisons does not have.
std::optional<QString> FFICVEH::DateComparison() const {
    switch (ui_->BXC_ChoixDate->ListIndex()) {
        case 0:
            return QStringLiteral(">");
        case 1:
            return QStringLiteral("<");
        case 2:
            return QStringLiteral("=");
        case kNothingChosen:
            return listtools::TheListToolContext().ColumnType == CellType::Edit ? QString()
                                                                                : QStringLiteral("=");
        default:
            return std::nullopt;
    }
}

/// False for a value that is no date, which the operator is told. The kind of the column is that of the last
/// list tool on any list; another kind than a date adds nothing.
bool FFICVEH::AddDateCondition(const QString& comparison) const {
    const listtools::ListToolContext& context = listtools::TheListToolContext();
    const QString value = ui_->CTX_ChoixDate->Text();
    if (value.isEmpty()) {
        listtools::BringBackStartingFilter(*this);
    } else if (comparison.isEmpty()) {
        AddTextCondition(value);
    } else if (context.ColumnType == CellType::Date) {
        listtools::JoinToConditions();
        try {
            Conditions() += context.FieldName + comparison + DateLiteral(value);
        } catch (const basic::RuntimeError& error) {
            forms::MsgBox(QStringLiteral("SELECTION ERR. ") + QString::number(error.Number()) +
                          TRAD(QStringLiteral(" Saisie d'une date attendue ")));
            return false;
        }
    }
    return true;
}

void FFICVEH::ShowSelectedJobs(basic::ResumeNext& statement) {
    listtools::Refill(*ui_->DBG_HISTO, *ui_->DBD_HISTO, statement);
    statement([this] { forms::SetFocus(ui_->DBG_HISTO); });
    listtools::ShowRows(*ui_->DBG_HISTO, *ui_->DBD_HISTO, statement);
}

}  // namespace quardele::vehicles
