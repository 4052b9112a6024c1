#include <basic/conversion.h>
#include <forms/strings.h>

#include <reminders/frelances.h>
#include "list_columns.h"
#include "session_objects.h"

namespace quardele::reminders {

namespace {

constexpr int kAllSites = 1;

/// By containment: a code that is part of another site's code finds that site's rows too.
void ShowRowsOfSite(forms::Grid& list, const QString& code) {
    for (int row = 1; row <= list.MaxRows(); ++row) {
        const bool shown = CellText(list, kSiteColumn, row).contains(code);
        Address(list, kSiteColumn, row);
        list.SetRowHidden(!shown);
    }
}

void ShowAllRows(forms::Grid& list) {
    for (int row = 1; row <= list.MaxRows(); ++row) {
        list.SetRow(row);
        list.SetRowHidden(false);
    }
}

}  // namespace

/// The site is the one that DBD_SITE stands on, not the one that the text of the combo names.
void FRELANCES::CMD_Site_Click(int index) {
    if (index == kAllSites) {
        DBC_SITE->Clear();
    }
    if (DBC_SITE->Text().isEmpty()) {
        ShowAllRows(*DBG_RELANCES);
    } else {
        const basic::Text code = basic::CStr(Existing(DBD_SITE->Recordset()).Value(u"TSITE_Code"));
        ShowRowsOfSite(*DBG_RELANCES, forms::ToQString(code));
    }
    forms::SetFocus(DBG_RELANCES);
}

}  // namespace quardele::reminders
