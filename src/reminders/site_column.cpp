#include <basic/conversion.h>
#include <forms/strings.h>
#include <shell/session.h>

#include <reminders/frelances.h>
#include "list_columns.h"
#include "session_objects.h"

namespace quardele::reminders {

namespace {

/// Colours as the platform counts them, blue first.
constexpr int kRed = 255;
constexpr int kWhite = 16777215;

constexpr basic::TextView kSitesQuery =
    u"SELECT Trim([TAFF_Immatr] & '') AS IMMAT, Trim([TAFF_Site] & '') AS SITE "
    u"From TAFF "
    u"GROUP BY Trim([TAFF_Immatr] & ''), Trim([TAFF_Site] & '') "
    u"Having (((Trim([TAFF_Immatr] & '')) <> '') And ((Trim([TAFF_Site] & '')) <> '')) "
    u"ORDER BY Trim([TAFF_Immatr] & ''), Trim([TAFF_Site] & '');";

/// Appends the vehicle's further sites, each behind " - ", and says how many they are. `sites` stands on the
/// vehicle's first row.
///
/// The registration is read before the end of the set is looked at: a vehicle that is alone in the last row
/// fails here with 3021, and callers do not catch it.
int AppendFurtherSites(dao::Recordset& sites, const basic::Text& registration, basic::Text& joined) {
    int count = 0;
    sites.MoveNext();
    while (basic::CStr(sites.Value(u"IMMAT")) == registration) {
        ++count;
        joined += u" - " + basic::CStr(sites.Value(u"SITE"));
        sites.MoveNext();
        if (sites.Eof()) {
            break;
        }
    }
    return count;
}

void WriteSites(forms::Grid& list, int row, const basic::Text& sites) {
    Address(list, kSiteColumn, row);
    list.SetText(forms::ToQString(sites));
}

}  // namespace

/// Runs for each cell that the grid fills.
void FRELANCES::DBG_RELANCES_DataFill(int row, bool getData) {
    if (DBG_RELANCES->MaxRows() == 0 || B_CHARGEMENT || !getData || !shell::TheSession().SITES_DISPO) {
        return;
    }
    OpenSites();
    FillSite(row);
}

void FRELANCES::OpenSites() {
    if (RS_SITE == nullptr) {
        RS_SITE = Existing(shell::TheSession().BD_DONNEES).OpenRecordset(kSitesQuery);
    }
}

/// A vehicle that no site has worked on is marked in red.
void FRELANCES::FillSite(int row) {
    const basic::Text registration =
        basic::Trim(forms::ToText(CellText(*DBG_RELANCES, kRegistrationColumn, row)));
    if (registration.empty()) {
        return;
    }
    RS_SITE->FindFirst(u"IMMAT = '" + registration + u"'");
    if (RS_SITE->NoMatch()) {
        WriteSites(*DBG_RELANCES, row, {});
        DBG_RELANCES->SetBackColor(kRed);
        return;
    }
    basic::Text sites = basic::CStr(RS_SITE->Value(u"SITE"));
    // The first site stands in the cell before the search goes on, which may fail.
    WriteSites(*DBG_RELANCES, row, sites);
    DBG_RELANCES->SetBackColor(kWhite);
    if (AppendFurtherSites(*RS_SITE, registration, sites) > 0) {
        WriteSites(*DBG_RELANCES, row, sites);
    }
}

}  // namespace quardele::reminders
