#include <shell/f_evolution.h>

#include <QFontDatabase>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/text.h>
#include <forms/control.h>
#include <forms/events.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/translation.h>
#include <shell/session.h>

#include "load_statements.h"
#include "log_box.h"
#include "ui_f_evolution.h"

namespace quardele::shell {

namespace {

using basic::Text;

constexpr int kAllModules = 99;
/// What the form leaves free at its right edge, in twips.
constexpr int kFreeWidth = 100;
constexpr int kTextPixels = 12;
constexpr std::size_t kRuleLength = 72;
constexpr basic::TextView kLineBreak = u"\r\n";

/// The heading of a revision, between two rules.
Text HeadingOf(std::int16_t revision, const basic::Variant& date) {
    const Text rule(kRuleLength, u'-');
    return rule + Text(kLineBreak) + u"Révision " + basic::Joined(revision) + u"\t(" +
           basic::Format(date, u"dd/mm/yyyy") + u")" + Text(kLineBreak) + rule + Text(kLineBreak);
}

/// All revisions of a recordset, in its order. The number on show starts at 0, so that a revision 0 has no
/// heading.
Text LogOf(dao::Recordset& changes) {
    Text log;
    std::int16_t shown = 0;
    for (changes.MoveFirst(); !changes.Eof(); changes.MoveNext()) {
        const std::int16_t revision = basic::CInt(changes.Value(u"Revision"));
        if (revision != shown) {
            log += HeadingOf(revision, changes.Value(u"Date"));
            shown = revision;
        }
        log += basic::Trim(basic::Joined(changes.Value(u"Detail")));
        log.append(kLineBreak).append(kLineBreak);
    }
    return log;
}

/// A file that cannot be opened is told, and the form comes up without it.
void Open(forms::DataControl& data) {
    try {
        data.Refresh();
    } catch (const basic::RuntimeError& error) {
        forms::MsgBox(forms::ToQString(error.Description()));
    }
}

}  // namespace

F_EVOLUTION::F_EVOLUTION() : Form(QStringLiteral("F_EVOLUTION"), forms::FormKind::Dialog) {
    Ui::F_EVOLUTION layout;
    layout.setupUi(Surface());
    FRM_Choix = layout.FRM_Choix;
    DBC_Choix = layout.DBC_Choix;
    CTX_Choix = layout.CTX_Choix;
    CTX_EVOLUTION = log_ = layout.CTX_EVOLUTION;
    DBD_evolution = layout.DBD_evolution;
    DBD_Modules = layout.DBD_Modules;

    QFont fixedPitch = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixedPitch.setPixelSize(kTextPixels);
    CTX_EVOLUTION->setFont(fixedPitch);
    forms::On(DBC_Choix, &forms::ListCombo::Click, this, [this] { DBC_Choix_Click(); });
}

void F_EVOLUTION::Form_Load() {
    LoadStatements statement;
    statement([this] { ChooseModule(); });
    statement([this] { FRM_Choix->setVisible(ShowChoice); });
    statement.ETAPE = 10;
    for (forms::DataControl* data : {DBD_evolution, DBD_Modules}) {
        statement([data] { data->SetDatabaseName(QStringLiteral(R"(c:\quardele\EvolutionV95.MDB)")); });
    }
    statement.ETAPE = 20;
    statement([this] { DBD_evolution->SetRecordSource(LogStatement()); });
    statement.ETAPE = 30;
    statement([this] {
        DBD_Modules->SetRecordSource(QStringLiteral("SELECT * From TNUMAPPLI ORDER BY NUMAPPLI;"));
    });
    statement([this] { services::TranslateForm(*this); });
    Open(*DBD_evolution);
    Open(*DBD_Modules);
}

void F_EVOLUTION::ChooseModule() {
    const QString commandLine = forms::Command();
    if (!commandLine.isEmpty()) {
        NumAppli = QString(commandLine).remove(u'/');
        return;
    }
    const int current = TheSession().NUMAPPLI_COURANT;
    NumAppli = QString::number(current);
    ShowChoice = current == kAllModules;
}

QString F_EVOLUTION::LogStatement() const {
    return QStringLiteral(
               "SELECT TEVOLUTION.NUMAPPLI, TEVOLUTION.REVISION, TEVOLUTION.DATE, TEVOLUTION.DETAIL "
               "From TEVOLUTION WHERE TEVOLUTION.NUMAPPLI = ") +
           NumAppli + QStringLiteral(" ORDER BY TEVOLUTION.NUMAPPLI, TEVOLUTION.REVISION DESC;");
}

void F_EVOLUTION::Form_Activate() {
    if (NumAppli.isEmpty()) {
        NumAppli = QString::number(kAllModules);
    }
    ShowModule();
}

void F_EVOLUTION::ShowModule() {
    ShowTitle();
    FillLog();
}

/// A module that is not in the list gets the name of the first one, where the list stands then.
void F_EVOLUTION::ShowTitle() {
    const auto modules = DBD_Modules->Recordset();
    if (modules == nullptr) {
        return;
    }
    modules->FindFirst(forms::ToText(QStringLiteral("NUMAPPLI = ") + NumAppli));
    SetCaption(QStringLiteral("Evolutions ") + forms::ToQString(basic::Joined(modules->Value(u"MODULE"))));
}

void F_EVOLUTION::FillLog() {
    const auto changes = DBD_evolution->Recordset();
    if (changes != nullptr && changes->RecordCount() != 0) {
        CTX_EVOLUTION->SetText(CTX_EVOLUTION->Text() + forms::ToQString(LogOf(*changes)));
    }
}

/// The list has made the record of the chosen module the current one.
void F_EVOLUTION::DBC_Choix_Click() {
    if (DBC_Choix->Text().isEmpty()) {
        return;
    }
    NumAppli = forms::ToQString(basic::Joined(DBD_Modules->Opened().Value(u"NUMAPPLI")));
    CTX_Choix->SetText(NumAppli);
    DBD_evolution->SetRecordSource(LogStatement());
    DBD_evolution->Refresh();
    CTX_EVOLUTION->SetText(QString());
    ShowModule();
}

void F_EVOLUTION::Form_Resize() {
    const int top = ShowChoice ? forms::Height(FRM_Choix) : 0;
    for (QWidget* control : std::initializer_list<QWidget*>{CTX_EVOLUTION, FRM_Choix}) {
        forms::SetLeft(control, 0);
        forms::SetWidth(control, Width() - kFreeWidth);
    }
    forms::SetTop(CTX_EVOLUTION, top);
    forms::SetHeight(CTX_EVOLUTION, Height() - top);
    // The form's height counts its frame: the box reaches behind the lower edge, its text does not.
    log_->KeepFree(CTX_EVOLUTION->geometry().bottom() - Surface()->rect().bottom());
}

}  // namespace quardele::shell
