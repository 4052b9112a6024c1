#include <listtools/fcherche.h>

#include <QPointer>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/locale.h>
#include <forms/events.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <listtools/grid_tools.h>
#include <listtools/list_tool_context.h>
#include <services/translation.h>
#include <shell/form_support.h>

#include "dialog.h"
#include "pointer.h"
#include "ui_fcherche.h"

namespace quardele::listtools {

namespace {

using forms::CellType;
using services::TRAD;

constexpr int kWholeField = 0;

// What the button says: that the search starts from the first record, or that it goes on.
constexpr QStringView kFromTheStart = u"Rechercher";
constexpr QStringView kGoOn = u"Suivant";

// Colours of the closing button while it is held down, and after.
constexpr int kHeldDown = 0xFFFFC0;
constexpr int kLetGo = 0xC0C0C0;

void Colour(forms::Button& button, int color) {
    button.SetFaceColor(color);
    button.SetRimColor(color);
}

bool AnyOption(const forms::ControlArray<forms::OptionButton>& options) {
    for (int index = 0; index <= options.UBound(); ++index) {
        if (options(index)->Value()) {
            return true;
        }
    }
    return false;
}

}  // namespace

FCHERCHE::FCHERCHE() : Form(QStringLiteral("FCHERCHE"), forms::FormKind::Dialog) {
    Ui::FCHERCHE layout;
    layout.setupUi(Surface());
    CTX3_CHERCHE = layout.CTX3_CHERCHE;
    FND3_OPTRECH = {Surface(), QStringLiteral("FND3_OPTRECH")};
    Cmd_GoCherche = layout.Cmd_GoCherche;
    Cmd_FinCherche = layout.Cmd_FinCherche;
    ConnectEvents();
}

void FCHERCHE::ConnectEvents() {
    using forms::Button;
    using forms::On;
    using forms::TextBox;
    On(CTX3_CHERCHE, &TextBox::Change, this, [this] { CTX3_CHERCHE_Change(); });
    On(CTX3_CHERCHE, &TextBox::KeyPress, this, EnterAsTab);
    On(CTX3_CHERCHE, &TextBox::LostFocus, this, [this] { CTX3_CHERCHE_LostFocus(); });
    for (int index = 0; index <= FND3_OPTRECH.UBound(); ++index) {
        On(FND3_OPTRECH(index), &forms::OptionButton::KeyPress, this, EnterAsTab);
    }
    On(Cmd_GoCherche, &Button::Click, this, [this] { Cmd_GoCherche_Click(); });
    On(Cmd_FinCherche, &Button::Click, this, [this] { Cmd_FinCherche_Click(); });
    ShowPressing(Cmd_GoCherche, this);
    On(Cmd_FinCherche, &Button::pressed, this, [this] { Colour(*Cmd_FinCherche, kHeldDown); });
    On(Cmd_FinCherche, &Button::released, this, [this] { Colour(*Cmd_FinCherche, kLetGo); });
}

/// The caption comes behind the translation here. After a right click the dialog stands where that was.
void FCHERCHE::Form_Load() {
    PlaceDialog(*this);
    if (!AnyOption(FND3_OPTRECH)) {
        FND3_OPTRECH(kWholeField)->SetValue(true);
    }
    services::TranslateForm(*this);
    SetCaption(TitleOn(QStringLiteral("Recherche sur [")));
    const DialogAnchor& anchor = Anchor();
    if (anchor.DialogAnchorX != 0 && anchor.DialogAnchorY != 0) {
        SetLeft(anchor.DialogAnchorX);
        SetTop(anchor.DialogAnchorY);
    }
}

/// Stays open: after a hit for the next one, after a miss or a failure for another value.
void FCHERCHE::Cmd_GoCherche_Click() {
    if (CTX3_CHERCHE->Text().isEmpty()) {
        forms::SetFocus(CTX3_CHERCHE);
        return;
    }
    forms::Screen::SetMousePointer(kBusyPointer);
    try {
        const QString criterion = Criterion();
        if (!criterion.isEmpty()) {
            Search(criterion);
        }
    } catch (const basic::RuntimeError& error) {
        ReportError(QStringLiteral("Recherche (ERR. "), error);
    }
    forms::Screen::SetMousePointer(kNormalPointer);
}

void FCHERCHE::Search(const QString& criterion) {
    dao::Recordset& rows = DataOf(TheListToolContext()).Opened();
    if (Cmd_GoCherche->text() == kGoOn) {
        rows.FindNext(forms::ToText(criterion));
    } else {
        rows.FindFirst(forms::ToText(criterion));
    }
    const QPointer<FCHERCHE> self(this);
    forms::DoEvents();
    if (self == nullptr || !self->Visible()) {
        return;  // Closed by a click that waited for the end of the search: nobody is left to tell.
    }
    if (rows.NoMatch()) {
        forms::MsgBox(TRAD(QStringLiteral("Elément non trouvé. Fin de la recherche.")));
        Cmd_GoCherche->setText(kFromTheStart.toString());
        forms::SetFocus(Cmd_FinCherche);
    } else {
        Cmd_GoCherche->setText(kGoOn.toString());
    }
}

void FCHERCHE::Cmd_FinCherche_Click() {
    shell::Vider_RowSource(*this);
    Unload();
}

/// Another value is searched for from the first record on.
void FCHERCHE::CTX3_CHERCHE_Change() {
    if (Cmd_GoCherche->text() != kFromTheStart) {
        Cmd_GoCherche->setText(kFromTheStart.toString());
    }
}

void FCHERCHE::CTX3_CHERCHE_LostFocus() {
    switch (TheListToolContext().ColumnType) {
        case CellType::Date:
            CheckDate();
            break;
        case CellType::Float:
        case CellType::Integer:
            CheckNumber();
            break;
        default:
            break;
    }
}

void FCHERCHE::CheckDate() {
    if (CTX3_CHERCHE->Text().isEmpty()) {
        return;
    }
    try {
        const basic::Date date = basic::CDate(forms::ToText(CTX3_CHERCHE->Text()));
        CTX3_CHERCHE->SetText(forms::ToQString(basic::Format(date, basic::SessionLocale().shortDate)));
    } catch (const basic::RuntimeError&) {
        forms::MsgBox(TRAD(QStringLiteral("Saisie d'une date attendue.")));
        forms::SetFocus(CTX3_CHERCHE);
    }
}

void FCHERCHE::CheckNumber() {
    if (CTX3_CHERCHE->Text().isEmpty()) {
        CTX3_CHERCHE->SetText(QStringLiteral("0"));
    }
    if (!basic::IsNumeric(forms::ToText(CTX3_CHERCHE->Text()))) {
        forms::MsgBox(TRAD(QStringLiteral("Saisie d'une valeur numérique attendue.")));
        forms::SetFocus(CTX3_CHERCHE);
    }
}

}  // namespace quardele::listtools
