#include "due_list.h"

#include <basic/conversion.h>
#include <basic/date.h>
#include <forms/msg_box.h>
#include <forms/strings.h>
#include <services/translation.h>
#include <shell/session.h>

#include <reminders/frelances.h>

namespace quardele::reminders {

using services::TRAD;

QString DueVisitsQuery(const QString& referenceDate) {
    return QStringLiteral(
               "SELECT DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]) AS DatePrev, "
               "TVEH_DETAIL.TVEH_DETAIL_PERIOD, TVEH_DETAIL.TVEH_DETAIL_DATVIS, "
               "TVEH.TVEH_MARQUE,TVEH.TVEH_IMMAT, TVEH.TVEH_EDIT, TVEH.TVEH_CODCLI, "
               "TVEH_DETAIL.TVEH_DETAIL_TypTrav "
               "FROM TVEH_DETAIL LEFT JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
               "WHERE (((DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]))<#") +
           forms::ToQString(basic::Format(forms::ToText(referenceDate), u"mm/dd/yyyy")) +
           QStringLiteral(
               "#)) AND [TVEH_DETAIL_PERIOD]<> 0 "
               "ORDER BY TVEH.TVEH_CODCLI, TVEH.TVEH_IMMAT, TVEH_DETAIL.TVEH_DETAIL_TypTrav;");
}

namespace {

/// Whether the operator's text can be taken as a date; an empty one is left to the next step.
bool IsAcceptable(const QString& referenceDate) {
    if (referenceDate.isEmpty()) {
        return true;
    }
    try {
        (void)basic::CDate(forms::ToText(referenceDate));
        return true;
    } catch (const basic::RuntimeError&) {
        return false;
    }
}

}  // namespace

/// Enter in the box of the reference date.
void FRELANCES::ListDueVisits() {
    if (!IsAcceptable(CTX_DATEREL->Text())) {
        forms::MsgBox(TRAD(QStringLiteral("Date erronnée")));
        return;
    }
    try {
        RewriteReferenceDate();
        ShowDueVisits();
    } catch (const basic::RuntimeError& error) {
        forms::MsgBox(QStringLiteral("Procédure CTX_DATREL_CLICK  Erreur %1 : ").arg(error.Number()) +
                      forms::ToQString(error.Description()));
    }
}

/// In the short form of the workstation; fails for an empty text.
void FRELANCES::RewriteReferenceDate() {
    const basic::Date date = basic::CDate(forms::ToText(CTX_DATEREL->Text()));
    CTX_DATEREL->SetText(forms::ToQString(basic::CStr(date)));
}

void FRELANCES::ShowDueVisits() {
    DBG_RELANCES->SetMaxRows(0);
    DBD_TVEH->SetRecordSource(DueVisitsQuery(CTX_DATEREL->Text()));
    DBD_TVEH->Refresh();
    if (DBD_TVEH->Recordset()->RecordCount() == 0) {
        forms::MsgBox(TRAD(QStringLiteral("Aucune relance à effectuer")));
    } else {
        forms::SetFocus(DBG_RELANCES);
    }
    if (shell::TheSession().SITES_DISPO) {
        OpenSites();
    }
}

}  // namespace quardele::reminders
