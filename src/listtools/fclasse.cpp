#include <listtools/fclasse.h>

#include <forms/events.h>
#include <forms/runtime.h>
#include <listtools/list_tool_context.h>
#include <services/translation.h>

#include "dialog.h"
#include "pointer.h"
#include "texts.h"
#include "ui_fclasse.h"

namespace quardele::listtools {

namespace {

constexpr int kAscending = 0;
constexpr int kDescending = 1;

}  // namespace

FCLASSE::FCLASSE() : Form(QStringLiteral("FCLASSE"), forms::FormKind::Dialog) {
    Ui::FCLASSE layout;
    layout.setupUi(Surface());
    FND3_OPTClasser = {Surface(), QStringLiteral("FND3_OPTClasser")};
    CHK_TYPTRI = layout.CHK_TYPTRI;
    Cmd_GoClasser = layout.Cmd_GoClasser;
    Cmd_FinClasser = layout.Cmd_FinClasser;

    using forms::Button;
    using forms::On;
    for (int index = 0; index <= FND3_OPTClasser.UBound(); ++index) {
        On(FND3_OPTClasser(index), &forms::OptionButton::KeyPress, this, EnterAsTab);
    }
    On(Cmd_GoClasser, &Button::Click, this, [this] { Cmd_GoClasser_Click(); });
    On(Cmd_FinClasser, &Button::Click, this, [this] { Unload(); });
    ShowPressing(Cmd_GoClasser, this);
}

void FCLASSE::Form_Load() {
    PlaceDialog(*this);
    if (!FND3_OPTClasser(kAscending)->Value() && !FND3_OPTClasser(kDescending)->Value()) {
        FND3_OPTClasser(kAscending)->SetValue(true);
    }
    SetCaption(TitleOn(QStringLiteral("Classer sur [")));
    services::TranslateForm(*this);
}

/// Closes whatever happened.
void FCLASSE::Cmd_GoClasser_Click() {
    forms::Screen::SetMousePointer(kBusyPointer);
    try {
        Sort();
    } catch (const basic::RuntimeError& error) {
        ReportError(QStringLiteral("CLASSER (ERR. "), error);
    }
    Unload();
    forms::Screen::SetMousePointer(kNormalPointer);
}

/// The column that is the whole sort already is not sorted on again.
void FCLASSE::Sort() {
    ListToolContext& context = TheListToolContext();
    const QString old = context.OrderPart;
    QString sql = context.SelectPart;
    if (!context.FieldName.isEmpty()) {
        context.OrderPart = context.FieldName;
    }
    if (!context.WherePart.isEmpty()) {
        sql += QStringLiteral(" Where ") + Trimmed(context.WherePart) + u' ';
    }
    if (FND3_OPTClasser(kDescending)->Value()) {
        context.OrderPart += QStringLiteral(" DESC");
    }
    sql += QStringLiteral(" Order by ");
    if (CHK_TYPTRI->Value() == 1 && !old.isEmpty()) {
        sql += old + QStringLiteral(", ");
    }
    sql += context.OrderPart + u';';
    if (context.OrderPart != old) {
        DataOf(context).SetRecordSource(sql);
        DataOf(context).Refresh();
    }
}

}  // namespace quardele::listtools
