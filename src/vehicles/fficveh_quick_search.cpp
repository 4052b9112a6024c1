// The search for a vehicle by the values of its user fields, in a frame in front of the list. Nothing opens
// it in this edition.
#include <forms/data_control.h>
#include <forms/escape.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <listtools/grid_tools.h>
#include <services/translation.h>
#include <vehicles/fficveh.h>

#include "keys.h"
#include "quick_search.h"
#include "ui_fficveh.h"

namespace quardele::vehicles {

namespace {

using services::TRAD;

constexpr int kFirstSearchedField = 3;

// The button's text tells where its next search begins.
constexpr QStringView kFromTheStart = u"Rechercher";
constexpr QStringView kGoOn = u"Suivant";

}  // namespace

void FFICVEH::ConnectQuickSearch() {
    for (int number = kFirstSearchedField; number <= kUserFields; ++number) {
        forms::On(CTX_USERCHER(number), &forms::TextBox::Change, this,
                  [this] { ui_->Cmd_GoCherche->setText(kFromTheStart.toString()); });
        forms::On(CTX_USERCHER(number), &forms::TextBox::KeyPress, this, [](int& character) {
            if (character == kKeyEnter) {
                character = 0;
                forms::SendKeys(QStringLiteral("{TAB}"));
            }
        });
    }
    forms::On(ui_->Cmd_GoCherche, &forms::Button::Click, this, [this] { Cmd_GoCherche_Click(); });
    forms::On(ui_->Cmd_FinCherche, &forms::Button::Click, this, [this] { CloseQuickSearch(); });
    forms::OnEscape(ui_->Frm_ChercheVeh, [this] { CloseQuickSearch(); });
}

void FFICVEH::OpenQuickSearch() {
    forms::TextBox* first = nullptr;
    for (int number = kFirstSearchedField; number <= kUserFields; ++number) {
        forms::TextBox* const box = CTX_USERCHER(number);
        box->SetText(QString());
        if (first == nullptr && !box->isHidden()) {
            first = box;
        }
    }
    ui_->Cmd_GoCherche->setText(kFromTheStart.toString());
    ui_->Frm_ChercheVeh->setVisible(true);
    ui_->Frm_ChercheVeh->ZOrder(0);
    if (first != nullptr) {
        forms::SetFocus(first);
    }
}

/// The operator goes on in the list.
void FFICVEH::CloseQuickSearch() {
    ui_->Frm_ChercheVeh->setVisible(false);
    forms::SetFocus(ui_->DBG_Liste);
}

void FFICVEH::OpenListSearch() {
    constexpr int kSearchTool = 1;
    listtools::GridToolAction(kSearchTool, *ui_->DBG_Liste, ui_->DBD_TVEH);
}

std::vector<QuickSearchTerm> FFICVEH::QuickSearchTerms() const {
    std::vector<QuickSearchTerm> terms;
    for (int number = kFirstSearchedField; number <= kUserFields; ++number) {
        terms.push_back(
            {number, user_.UserType[static_cast<std::size_t>(number)], CTX_USERCHER(number)->Text()});
    }
    return terms;
}

/// The list follows the recordset to the vehicle found.
void FFICVEH::Cmd_GoCherche_Click() {
    const QString criterion = QuickSearchCriterion(QuickSearchTerms());
    if (criterion.isEmpty()) {
        forms::MsgBox(TRAD(QStringLiteral("La recherche doit comporter au moins un critère !")));
        return;
    }
    dao::Recordset& vehicles = ui_->DBD_TVEH->Opened();
    if (ui_->Cmd_GoCherche->text() == kFromTheStart) {
        vehicles.FindFirst(forms::ToText(criterion));
    } else if (ui_->Cmd_GoCherche->text() == kGoOn) {
        vehicles.FindNext(forms::ToText(criterion));
    }
    if (vehicles.NoMatch()) {
        forms::MsgBox(TRAD(QStringLiteral("Elément non trouvé. Fin de la recherche.")));
        return;
    }
    ui_->Cmd_GoCherche->setText(kGoOn.toString());
}

}  // namespace quardele::vehicles
