#include <basic/conversion.h>
#include <forms/msg_box.h>
#include <forms/strings.h>
#include <services/translation.h>

#include <reminders/frelances.h>
#include "list_columns.h"
#include "session_objects.h"

namespace quardele::reminders {

using services::TRAD;

/// Ticking the column of abandoned reminders asks first; unticking does nothing.
void FRELANCES::DBG_RELANCES_ButtonClicked(int col, int row, int buttonDown) {
    if (col != kAbandonColumn || buttonDown != 1) {
        return;
    }
    const forms::BoxAnswer answer =
        forms::MsgBox(TRAD(QStringLiteral("Confirmez l'abandon de cette relance")), forms::BoxButtons::YesNo);
    if (answer == forms::BoxAnswer::Yes) {
        Abandon(row);
    } else {
        Address(*DBG_RELANCES, kAbandonColumn, row);
        DBG_RELANCES->SetValue(0);
    }
}

/// A last visit so far ahead that the next one lies beyond every reference date; no other mark exists. The
/// row stays on screen until the next query.
void FRELANCES::Abandon(int row) {
    const QString registration = CellText(*DBG_RELANCES, kRegistrationColumn, row);
    const QString workType = CellText(*DBG_RELANCES, kWorkTypeColumn, row);
    dao::Recordset& visits = Existing(DBD_TVEH->Recordset());
    visits.FindFirst(forms::ToText(QStringLiteral("TVEH_Immat ='") + registration +
                                   QStringLiteral("' and TVEH_DETAIL_TYPTRAV = '") + workType +
                                   QStringLiteral("'")));
    if (visits.NoMatch()) {
        return;
    }
    visits.Edit();
    visits.SetValue(u"TVEH_DETAIL_datvis", basic::CDate(u"01/01/2100"));
    visits.Update();
}

}  // namespace quardele::reminders
