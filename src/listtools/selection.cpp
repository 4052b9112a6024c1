#include <listtools/selection.h>

#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <listtools/list_tool_context.h>
#include <services/translation.h>

#include "dialog.h"
#include "pointer.h"
#include "texts.h"

namespace quardele::listtools {

namespace {

QString StatementInForce() {
    const ListToolContext& context = TheListToolContext();
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

void KeepStartingFilter(forms::Form& form) {
    if (!Trimmed(form.Tag()).isEmpty()) {
        return;
    }
    const QString& where = TheListToolContext().WherePart;
    form.SetTag(Trimmed(where).isEmpty() ? kNoFilter.toString() : where);
}

void BringBackStartingFilter(const forms::Form& form) {
    const QString filter = form.Tag();
    TheListToolContext().WherePart = filter == kNoFilter ? QString() : filter;
}

void JoinToConditions() {
    QString& where = TheListToolContext().WherePart;
    if (!where.isEmpty()) {
        where = Trimmed(where) + QStringLiteral(" and ");
    }
}

void ReportSelectionFailure(const basic::RuntimeError& error) {
    forms::Screen::SetMousePointer(kNormalPointer);
    ReportError(QStringLiteral("SELECTION (ERREUR "), error);
}

void Refill(forms::Grid& grid, forms::DataControl& data, basic::ResumeNext& statement) {
    statement([&] { grid.SetReDraw(false); });
    statement([&] { data.SetRecordSource(StatementInForce()); });
    statement([&] {
        if (grid.VirtualMode()) {
            grid.SetVirtualMaxRows(-1);
        } else {
            grid.SetMaxRows(0);
        }
    });
    statement([&] { data.Refresh(); });
}

/// Where it is unknown whether there are rows the statements for a list with rows run.
void ShowRows(forms::Grid& grid, const forms::DataControl& data, basic::ResumeNext& statement) {
    bool empty = false;
    statement([&] { empty = data.Opened().RecordCount() == 0; });
    if (empty) {
        forms::MsgBox(services::TRAD(QStringLiteral("Sélection vide.")));
        return;
    }
    statement([&] { grid.SetRow(1); });
    statement([&] { grid.SetCol(TheListToolContext().ActiveCol); });
    statement([&] { grid.Action(0); });
    statement([&] { grid.SetReDraw(true); });
}

}  // namespace quardele::listtools
