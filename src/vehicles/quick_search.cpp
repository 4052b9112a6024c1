#include "quick_search.h"

#include <QStringList>

#include <basic/conversion.h>
#include <basic/date.h>
#include <forms/strings.h>

namespace quardele::vehicles {

namespace {

QString ConditionOf(const QuickSearchTerm& term) {
    const QString start = QStringLiteral("TVEH_USER%1=").arg(term.number);
    const basic::Text typed = forms::ToText(term.value);
    if (term.type == u"N") {
        return start + u'\'' + forms::ToQString(basic::NumberText(basic::Val(typed))) + u'\'';
    }
    if (term.type == u"D") {
        return start + u'#' + forms::ToQString(basic::Format(typed, u"mm/dd/yyyy")) + u'#';
    }
    return start + u'\'' + term.value + u'\'';
}

}  // namespace

QString QuickSearchCriterion(const std::vector<QuickSearchTerm>& terms) {
    QStringList conditions;
    for (const QuickSearchTerm& term : terms) {
        if (!term.value.isEmpty()) {
            conditions.append(ConditionOf(term));
        }
    }
    return conditions.join(QStringLiteral(" AND "));
}

}  // namespace quardele::vehicles
