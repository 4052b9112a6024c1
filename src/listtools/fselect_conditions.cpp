// The conditions of the selection dialog, by the kind of the column. What the operator types goes into them
// as it stands.
#include <algorithm>
#include <array>
#include <functional>

#include <basic/conversion.h>
#include <basic/date.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <listtools/fselect.h>
#include <listtools/list_tool_context.h>
#include <listtools/selection.h>
#include <services/translation.h>
#include <shell/form_support.h>

#include "pointer.h"
#include "texts.h"

namespace quardele::listtools {

namespace {

using forms::CellType;

/// The entries of the list of comparisons that are looked at one by one.
constexpr int kStartsWith = 0;
constexpr int kContains = 5;

/// The blank that `condition` starts with takes the place of the one that goes here.
void Append(const QString& condition) {
    QString& where = TheListToolContext().WherePart;
    where = Trimmed(where) + condition;
}

/// Whether a value can be converted; if not, the operator is told what was expected.
bool Converts(const std::function<void()>& conversion, const QString& expectation) {
    try {
        conversion();
    } catch (const basic::RuntimeError& error) {
        forms::Screen::SetMousePointer(kNormalPointer);
        forms::MsgBox(QStringLiteral("SELECTION ERR. ") + QString::number(error.Number()) +
                      services::TRAD(expectation));
        return false;
    }
    return true;
}

bool IsOneOf(const QString& word, std::initializer_list<QStringView> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

}  // namespace

std::optional<QString> FSELECT::ComparisonWord() const {
    static const std::array<QString, 6> words{QStringLiteral("="),  QStringLiteral("="),
                                              QStringLiteral("<>"), QStringLiteral(">"),
                                              QStringLiteral("<"),  QStringLiteral("Instr")};
    const int entry = DBC3_SELECTION->ListIndex();
    if (entry < 0 || static_cast<std::size_t>(entry) >= words.size()) {
        return std::nullopt;
    }
    if (entry == kStartsWith && TheListToolContext().ColumnType == CellType::Edit) {
        return QString();
    }
    return words[static_cast<std::size_t>(entry)];
}

bool FSELECT::Contains() const {
    return DBC3_SELECTION->ListIndex() == kContains;
}

FSELECT::Condition FSELECT::AddCondition(const QString& comparison) {
    const ListToolContext& context = TheListToolContext();
    if (comparison.isEmpty()) {
        const QString value = CTX3_SELECTION->Text();
        JoinToConditions();
        Append(QStringLiteral(" left(") + context.FieldName + u',' + QString::number(value.size()) +
               QStringLiteral(") = '") + value + QStringLiteral("' "));
        return Condition::Ready;
    }
    switch (context.ColumnType) {
        case CellType::Date:
            return AddDateCondition(comparison);
        case CellType::CheckBox:
            return AddTickCondition();
        case CellType::Float:
        case CellType::Integer:
        case CellType::Number:
            return AddNumberCondition(comparison);
        default:
            return AddTextCondition(comparison);
    }
}

/// A value that is no date leaves the conditions ready for one more, so that the next try joins them twice.
FSELECT::Condition FSELECT::AddDateCondition(const QString& comparison) const {
    if (Contains()) {
        return Condition::Refused;
    }
    const QString start = u' ' + TheListToolContext().FieldName + comparison;
    const QString value = CTX3_SELECTION->Text();
    JoinToConditions();
    if (IsOneOf(UpperCase(value), {u"NULL", u"VIDE"})) {
        Append(start + QStringLiteral(" Null "));
        return Condition::Ready;
    }
    basic::Date date;
    if (!Converts([&] { date = basic::CDate(forms::ToText(value)); },
                  QStringLiteral(" Saisie d'une date attendue "))) {
        return Condition::NotConvertible;
    }
    Append(start + QStringLiteral(" #") + forms::ToQString(basic::Format(date, u"mm/dd/yy")) +
           QStringLiteral("# "));
    return Condition::Ready;
}

/// The comparison does not count, and a word that says neither yes nor no adds nothing.
FSELECT::Condition FSELECT::AddTickCondition() {
    if (Contains()) {
        return Condition::Refused;
    }
    CTX3_SELECTION->SetText(UpperCase(CTX3_SELECTION->Text()));
    const QString word = CTX3_SELECTION->Text();
    const QString& field = TheListToolContext().FieldName;
    if (IsOneOf(word, {u"TRUE", u"VRAI", u"OUI"})) {
        JoinToConditions();
        Append(u' ' + field);
    } else if (IsOneOf(word, {u"FALSE", u"FAUX", u"NON"})) {
        JoinToConditions();
        Append(QStringLiteral(" not ") + field);
    }
    return Condition::Ready;
}

/// The conversion is a check: the value goes into the condition as it was typed.
FSELECT::Condition FSELECT::AddNumberCondition(const QString& comparison) const {
    if (Contains()) {
        return Condition::Refused;
    }
    const QString value = CTX3_SELECTION->Text();
    if (!Converts([&] { static_cast<void>(shell::Champ_Vers_Nombre(value)); },
                  QStringLiteral(" Saisie d'une valeur numérique attendue "))) {
        return Condition::NotConvertible;
    }
    JoinToConditions();
    Append(u' ' + TheListToolContext().FieldName + comparison + value + u' ');
    return Condition::Ready;
}

FSELECT::Condition FSELECT::AddTextCondition(const QString& comparison) const {
    const QString& field = TheListToolContext().FieldName;
    const QString value = CTX3_SELECTION->Text();
    JoinToConditions();
    if (Contains()) {
        Append(QStringLiteral(" InStr(1, ") + field + QStringLiteral(", '") + value +
               QStringLiteral("') <> 0 "));
    } else {
        Append(u' ' + field + comparison + QStringLiteral(" '") + value + QStringLiteral("' "));
    }
    return Condition::Ready;
}

}  // namespace quardele::listtools
