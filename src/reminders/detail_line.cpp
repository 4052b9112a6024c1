#include <basic/conversion.h>
#include <basic/date.h>
#include <forms/strings.h>

#include "detail_table.h"
#include "list_columns.h"

namespace quardele::reminders {

using basic::Text;

namespace {

/// Computed anew from last visit and period, not taken from the list's own column.
Text DateDue(forms::Grid& list, int row) {
    const basic::Date lastVisit = basic::CDate(forms::ToText(CellText(list, kLastVisitColumn, row)));
    const std::int32_t months = basic::CLng(forms::ToText(CellValue(list, kPeriodColumn, row)));
    return basic::Format(basic::DateAdd(u"m", months, lastVisit), u"dd/mm/yyyy");
}

}  // namespace

void DetailTable::AddLine(Letter& letter, forms::Grid& list, int row) {
    letter.ToEndOfTableRow();
    for (const Text& bookmark : T_COLONNES) {
        letter.ToNextCell();
        letter.Type(CellContent(bookmark, list, row));
    }
}

/// Empty for a column without bookmark.
Text DetailTable::CellContent(const Text& bookmark, forms::Grid& list, int row) {
    const auto cell = [&](int col) { return forms::ToText(CellText(list, col, row)); };
    if (bookmark == u"IMMAT") {
        return cell(kRegistrationColumn);
    }
    if (bookmark == u"MARQUE") {
        return cell(kMakeColumn);
    }
    if (bookmark == u"DATEPREV") {
        return DateDue(list, row);
    }
    if (bookmark == u"DERNVIS") {
        return cell(kLastVisitColumn);
    }
    if (bookmark == u"PERIOD") {
        return cell(kPeriodColumn);
    }
    if (bookmark == u"TYPTRAV") {
        return WorkTypeLabel(cell(kWorkTypeColumn));
    }
    return {};
}

/// Empty for a code that is not in the file, and for one without a label.
Text DetailTable::WorkTypeLabel(const Text& code) {
    workTypes_.Seek(u"=", {code});
    return workTypes_.NoMatch() ? Text() : basic::Joined(workTypes_.Value(u"TTYP_LIBELLE"));
}

}  // namespace quardele::reminders
