// The criteria of the search dialog, by the kind of the column. They differ from the conditions of the
// selection: a number column that is not a float or an integer is searched as text, years have four digits,
// and no word stands for Null.
#include <basic/date.h>
#include <forms/strings.h>
#include <listtools/fcherche.h>
#include <listtools/list_tool_context.h>

#include "texts.h"

namespace quardele::listtools {

namespace {

using forms::CellType;

constexpr int kWholeField = 0;
constexpr int kStartOfField = 1;
constexpr int kAnywhere = 2;

}  // namespace

QString FCHERCHE::Criterion() {
    const ListToolContext& context = TheListToolContext();
    const QString value = CTX3_CHERCHE->Text();
    switch (context.ColumnType) {
        case CellType::Float:
        case CellType::Integer:
            return context.FieldName + QStringLiteral(" =") + value + u' ';
        case CellType::Date:
            return context.FieldName + QStringLiteral(" =#") +
                   forms::ToQString(basic::Format(forms::ToText(value), u"mm/dd/yyyy")) +
                   QStringLiteral("# ");
        case CellType::CheckBox:
            return TickCriterion();
        default:
            return TextCriterion();
    }
}

QString FCHERCHE::TickCriterion() {
    CTX3_CHERCHE->SetText(UpperCase(CTX3_CHERCHE->Text()));
    const QString word = CTX3_CHERCHE->Text();
    const QString& field = TheListToolContext().FieldName;
    if (word == u"OUI" || word == u"VRAI" || word == u"TRUE") {
        return field + QStringLiteral(" =True");
    }
    if (word == u"NON" || word == u"FAUX" || word == u"FALSE") {
        return field + QStringLiteral(" =False");
    }
    return {};
}

QString FCHERCHE::TextCriterion() const {
    const QString& field = TheListToolContext().FieldName;
    const QString value = CTX3_CHERCHE->Text();
    if (FND3_OPTRECH(kWholeField)->Value()) {
        return field + QStringLiteral(" ='") + value + u'\'';
    }
    if (FND3_OPTRECH(kStartOfField)->Value()) {
        return QStringLiteral("Left(") + field + u',' + QString::number(value.size()) +
               QStringLiteral(") ='") + value + u'\'';
    }
    if (FND3_OPTRECH(kAnywhere)->Value()) {
        return QStringLiteral("inStr(1,") + field + QStringLiteral(",'") + value + QStringLiteral("') <> 0");
    }
    return {};
}

}  // namespace quardele::listtools
