#include <reminders/template_choice.h>

#include <basic/paths.h>
#include <forms/msg_box.h>
#include <forms/strings.h>
#include <services/translation.h>

#include <reminders/fchxmodl.h>

namespace quardele::reminders {

using services::TRAD;

namespace {

/// The form is asked for by its class each time: closed by its window's button it is gone, and a new one
/// answers with an empty text.
QString AskForTemplate(const QString& folder, const QString& prefix) {
    forms::Instance<FCHXMODL>().CTX_PATH->SetText(folder);
    forms::Instance<FCHXMODL>().CTX_PREFDOT->SetText(prefix);
    forms::Instance<FCHXMODL>().Show(forms::ShowMode::Modal);
    const QString answer = forms::Instance<FCHXMODL>().CTX_NOMDOT->Text();
    forms::Instance<FCHXMODL>().Unload();
    return answer;
}

}  // namespace

QString Cherche_Modele_Word(const QString& folder, const QString& prefix, const basic::Variant& /*unused*/) {
    const std::size_t variants =
        basic::DirAll(forms::ToText(folder + prefix + QStringLiteral("*.dot"))).size();
    if (variants > 1) {
        return AskForTemplate(folder, prefix);
    }
    if (variants == 0) {
        // The name between the brackets is that of the file found: none.
        forms::MsgBox(TRAD(QStringLiteral("Le modèle WORD <")) + TRAD(QStringLiteral("> est introuvable.")));
    }
    return folder + prefix;
}

}  // namespace quardele::reminders
