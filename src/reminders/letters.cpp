#include <basic/conversion.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/translation.h>
#include <shell/session.h>

#include <reminders/frelances.h>
#include <reminders/template_choice.h>
#include "detail_table.h"
#include "letter_file.h"
#include "letter_header.h"
#include "list_columns.h"
#include "session_objects.h"

namespace quardele::reminders {

using basic::Text;
using services::TRAD;

namespace {

constexpr int kDefaultPointer = 0;
constexpr int kHourglass = 11;

/// The customers of marked vehicles. Opened with the others and never read: the ticks alone decide.
constexpr basic::TextView kMarkedQuery =
    u"SELECT TVEH.TVEH_CODCLI From TVEH GROUP BY TVEH.TVEH_CODCLI, TVEH.TVEH_EDIT "
    u"HAVING (((TVEH.TVEH_EDIT)<>0));";

std::shared_ptr<dao::Recordset> OpenByKey(const dao::Database& database, basic::TextView table) {
    std::shared_ptr<dao::Recordset> rows = database.OpenRecordset(table, dao::RecordsetType::Table);
    rows->SetIndex(u"PrimaryKey");
    dao::DBEngine::Instance().Idle(1);
    return rows;
}

/// What a run of the letters looks things up in.
struct LetterData {
    explicit LetterData(const dao::Database& database)
        : marked(database.OpenRecordset(kMarkedQuery, dao::RecordsetType::Dynaset)),
          workTypes(OpenByKey(database, u"TTYP")),
          customers(OpenByKey(database, u"TCLI")),
          countries(database.OpenRecordset(u"TPAYS", dao::RecordsetType::Dynaset)) {}

    std::shared_ptr<dao::Recordset> marked;
    std::shared_ptr<dao::Recordset> workTypes;
    std::shared_ptr<dao::Recordset> customers;
    std::shared_ptr<dao::Recordset> countries;
};

/// Whether the customer has a record, on which `customers` then stands. Says so when not.
bool FindCustomer(dao::Recordset& customers, const Text& code) {
    customers.Seek(u"=", {code});
    if (!customers.NoMatch()) {
        return true;
    }
    forms::MsgBox(TRAD(QStringLiteral("ATTENTION : Il n'existe pas de fiche client pour ")) +
                  forms::ToQString(code) + QStringLiteral("\r") +
                  TRAD(QStringLiteral("Vous devrez saisir les coordonnées manuellement")));
    return false;
}

/// A new letter with its header filled; false when Word or the template refused.
bool StartLetter(Letter& letter, const LetterData& data, const Text& templatePath, const Text& customer) {
    const bool known = FindCustomer(*data.customers, customer);
    if (!letter.Start(templatePath)) {
        return false;
    }
    forms::Screen::SetMousePointer(kHourglass);
    LetterHeader(letter, *data.customers, *data.countries).Fill(customer, known);
    return true;
}

void SayThatTemplateIsIncomplete() {
    forms::MsgBox(TRAD(QStringLiteral("Votre modèle de relance est incomplet.")) + QStringLiteral("\r") +
                  TRAD(QStringLiteral("Il ne décrit pas les lignes détail")));
}

}  // namespace

/// One letter per customer, made of the ticked rows; the list is ordered by customer, so a letter starts
/// where the customer changes. Rows that the site filter hides take part.
void FRELANCES::Cmd_Editer_Click() {
    const shell::Session& session = shell::TheSession();
    const LetterData data(Existing(session.BD_DONNEES));
    const Text templatePath =
        forms::ToText(Cherche_Modele_Word(session.CHEMIN_DONNEES, QStringLiteral("RELVEH")));
    if (templatePath.empty()) {
        return;
    }
    Letter letter(Existing(session.OBJ_WORD), APPLI_WORD);
    DetailTable table(*data.workTypes);
    LetterFile file;
    Text customer;
    for (int row = 1; row <= DBG_RELANCES->MaxRows(); ++row) {
        if (!basic::CBool(forms::ToText(CellValue(*DBG_RELANCES, kLetterColumn, row)))) {
            continue;
        }
        const Text code = forms::ToText(CellText(*DBG_RELANCES, kCustomerColumn, row));
        const bool newLetter = code != customer;
        if (newLetter) {
            customer = code;
            if (!StartLetter(letter, data, templatePath, customer)) {
                break;
            }
            if (!table.Find(letter)) {
                // The hourglass stays: the document waits, unsaved, for the operator.
                SayThatTemplateIsIncomplete();
                return;
            }
        }
        table.AddLine(letter, *DBG_RELANCES, row);
        if (newLetter) {
            file.Name(forms::ToText(session.CHEMIN_DONNEES), customer, forms::ToText(CTX_DATEREL->Text()));
            file.SaveFirst(letter);
        } else {
            file.SaveAgain(letter);
        }
    }
    forms::Screen::SetMousePointer(kDefaultPointer);
}

}  // namespace quardele::reminders
