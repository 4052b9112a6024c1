#include "letter.h"

#include <basic/conversion.h>

#include "session_objects.h"
#include "word_start.h"

namespace quardele::reminders {

bool Letter::Start(const basic::Text& templatePath) {
    return C_Appel_Word(application_, templatePath);
}

void Letter::OpenHeader() {
    vocabulary_.W_DebutDocument(application_);
    if (!vocabulary_.W_AffichageEntete(application_)) {
        vocabulary_.W_AffichageEntete(application_, true);
    }
}

void Letter::LeaveHeader() {
    if (vocabulary_.W_AffichageEntete(application_)) {
        vocabulary_.W_AffichageEntete(application_, false);
    }
}

bool Letter::GoTo(basic::TextView bookmark) {
    return vocabulary_.W_Existe_Signet(application_, bookmark);
}

void Letter::Select(basic::TextView bookmark) {
    vocabulary_.W_EditionAtteindre(application_, bookmark);
}

void Letter::Type(const basic::Text& text) {
    vocabulary_.W_Insertion(application_, text);
}

int Letter::TableColumns() const {
    const automation::ObjectPtr table = Existing(application_).Child(u"Selection")->Child(u"Tables", {1});
    return basic::CLng(table->Child(u"Columns")->Get(u"Count").Plain());
}

int Letter::CurrentColumn() const {
    const automation::ObjectPtr column = Existing(application_).Child(u"Selection")->Child(u"Columns", {1});
    return basic::CLng(column->Get(u"Index").Plain());
}

void Letter::ToEndOfTableRow() {
    vocabulary_.W_FinLigneTableau(application_);
}

void Letter::ToNextCell() {
    vocabulary_.W_CelluleSuiv(application_);
}

void Letter::SaveAs(const basic::Text& path) {
    vocabulary_.W_FichierEnregistrerSous(application_, path);
}

void Letter::Save(const basic::Text& path) {
    vocabulary_.W_FichierEnregistrer(application_, path);
}

}  // namespace quardele::reminders
