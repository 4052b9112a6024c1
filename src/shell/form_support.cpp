#include <shell/form_support.h>

#include <algorithm>

#include <basic/conversion.h>
#include <basic/resume_next.h>
#include <forms/bound_control.h>
#include <forms/combo.h>
#include <forms/controls.h>
#include <forms/data_control.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/translation.h>

namespace quardele::shell {

namespace {

using basic::Text;
using basic::TextView;

bool HasPendingChange(QWidget* control) {
    if (const auto* grid = qobject_cast<forms::Grid*>(control)) {
        return grid->ChangeMade();
    }
    const auto* bound = dynamic_cast<forms::BoundControl*>(control);
    return bound != nullptr && !bound->DataField().isEmpty() && bound->DataChanged();
}

std::ptrdiff_t Length(TextView text) {
    return static_cast<std::ptrdiff_t>(text.size());
}

/// Cuts `statement` before its first ORDER BY and gives what stands behind, trimmed. The character behind the
/// words goes with them; a statement that ends there throws RuntimeError 5.
Text TakeOrder(Text& statement) {
    const std::ptrdiff_t position = basic::InStr(statement, u"ORDER BY");
    if (position == 0) {
        return {};
    }
    const Text behindFirstTwo = basic::Trim(basic::Right(statement, Length(statement) - position - 1));
    statement = basic::Left(statement, position - 1);
    return basic::Trim(basic::Right(behindFirstTwo, Length(behindFirstTwo) - Length(u"DER BY ")));
}

/// Cuts `statement` before its first WHERE and gives what stands behind, trimmed.
Text TakeWhere(Text& statement) {
    const std::ptrdiff_t position = basic::InStr(statement, u"WHERE");
    if (position == 0) {
        return {};
    }
    Text where = basic::Trim(basic::Mid(statement, position + Length(u"WHERE")));
    statement = basic::Left(statement, position - 1);
    return where;
}

}  // namespace

bool Saisie_En_Cours(forms::Form& form) {
    const std::vector<QWidget*> controls = form.Controls();
    return std::any_of(controls.begin(), controls.end(), HasPendingChange);
}

void Lier_Donnees_Form(forms::Form& form, const QString& databasePath) {
    for (QWidget* control : form.Controls()) {
        if (auto* data = qobject_cast<forms::DataControl*>(control)) {
            data->SetDatabaseName(databasePath);
        }
    }
    services::TranslateForm(form);
}

void Selection_Texte() {
    basic::ResumeNext statement;
    QWidget* const active = forms::Screen::ActiveControl();
    if (auto* box = qobject_cast<forms::TextBox*>(active)) {
        statement([box] { box->SetSelStart(0); });
        statement([box] { box->SetSelLength(static_cast<int>(box->Text().size())); });
    } else if (auto* memo = qobject_cast<forms::MemoBox*>(active)) {
        memo->selectAll();
    }
}

double Champ_Vers_Nombre(const QString& text) {
    const Text trimmed = basic::Trim(forms::ToText(text));
    return trimmed.empty() ? 0 : basic::CDbl(trimmed);
}

void Vider_RowSource(forms::Form& form) {
    basic::ResumeNext statement;
    for (QWidget* control : form.Controls()) {
        if (auto* combo = qobject_cast<forms::ListCombo*>(control)) {
            statement([combo] { combo->SetRowSource(nullptr); });
        }
    }
}

void SplitRecordSource(const QString& statement, QString& base, QString& where, QString& order) {
    if (statement.isEmpty()) {
        return;
    }
    Text rest = basic::UCase(forms::ToText(statement));
    if (rest.back() == u';') {
        rest.pop_back();
    }
    const Text orderPart = TakeOrder(rest);
    const Text wherePart = TakeWhere(rest);
    base = forms::ToQString(basic::Trim(rest));
    where = forms::ToQString(wherePart);
    order = forms::ToQString(orderPart);
}

QString Dossier_Parent(const QString& path) {
    for (qsizetype position = path.size(); position > 0; --position) {
        const QChar unit = path[position - 1];
        if (unit == QLatin1Char('\\') || unit == QLatin1Char(':')) {
            return path.left(position);
        }
    }
    return {};
}

}  // namespace quardele::shell
