// The sheet of a vehicle: what the report form is asked for.
#include <forms/events.h>
#include <forms/msg_box.h>
#include <forms/strings.h>
#include <reports/f_rpt.h>
#include <reports/report_request.h>
#include <services/translation.h>
#include <shell/form_support.h>
#include <vehicles/fficveh.h>

#include "open_table.h"
#include "ui_fficveh.h"

namespace quardele::vehicles {

using reports::ReportRequest;
using services::TRAD;

namespace {

/// The report reads the fields in front of it by itself.
constexpr int kFirstSentField = 3;

/// A text of the report's language. A caption or a value that holds an apostrophe makes none, and the report
/// says so.
QString Literal(const QString& text) {
    return u'\'' + text + u'\'';
}

QString FormulaName(const char* stem, int number) {
    return QStringLiteral("{@%1%2}").arg(QLatin1StringView(stem)).arg(number);
}

}  // namespace

void FFICVEH::ConnectSheet() {
    for (int index = 0; index <= Cmd_Imprimer.UBound(); ++index) {
        forms::On(Cmd_Imprimer(index), &forms::Button::Click, this, [=, this] { Cmd_Imprimer_Click(index); });
    }
}

/// The index of the button is what becomes of the sheet. It shows what is saved, so that a pending entry
/// comes first.
void FFICVEH::Cmd_Imprimer_Click(int index) {
    try {
        if (shell::Saisie_En_Cours(*this)) {
            forms::MsgBox(TRAD(QStringLiteral("Enregistrez ou annulez d'abord votre saisie")));
            return;
        }
        AskForSheet();
        reports::TheReportRequest().OutputMode = static_cast<std::int16_t>(index);
        forms::Instance<reports::F_RPT>().Show(forms::ShowMode::Modal);
    } catch (const basic::RuntimeError& error) {
        // In the words of the runtime, which no translation reaches.
        forms::MsgBox(QStringLiteral("CMD_Imprimer, Erreur ") + QString::number(error.Number()) +
                      QStringLiteral(" : ") + forms::ToQString(error.Description()));
    }
}

void FFICVEH::AskForSheet() const {
    ReportRequest& request = reports::TheReportRequest();
    request.ReportFile = QStringLiteral("IMPVEH.RPT");
    request.TableLocation(1) = forms::ToQString(DataDatabase().Name());
    request.SelectionFormula = QStringLiteral("{TVEH.TVEH_IMMAT}=") + Literal(ui_->CTX_IMMAT->Text());
    for (int number = kFirstSentField; number <= kUserFields; ++number) {
        SendUserField(request, number);
    }
}

/// With its caption; without one, or without a value, the report keeps its own texts.
void FFICVEH::SendUserField(ReportRequest& request, int number) const {
    const QString caption = CTL_USER(number)->Caption();
    const QString value = CTX_USER(number)->Text();
    if (caption.isEmpty() || value.isEmpty()) {
        return;
    }
    const int label = 2 * (number - kFirstSentField) + 1;
    request.FormulaText(label) = Literal(caption);
    request.FormulaText(label + 1) = Literal(value);
    request.FormulaName(label) = FormulaName("LIBUSER", number);
    request.FormulaName(label + 1) = FormulaName("VALUSER", number);
}

}  // namespace quardele::vehicles
