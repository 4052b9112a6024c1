#include "letter_loop.h"

#include <array>

#include <basic/conversion.h>

namespace quardele::tests {

namespace {

using automation::ObjectPtr;
using basic::Text;
using word::GWORD;

constexpr std::array<const char16_t*, 16> kDetails = {
    u"IMMAT", u"MARQUE", u"DATEPREV", u"DERNVIS", u"PERIOD", u"TYPTRAV", u"", u"",
    u"",      u"",       u"",         u"",        u"",       u"",        u"", u""};

void OpenDocument(GWORD& gword, ObjectPtr& Word, const Text& templatePath) {
    gword.W_CreationObjet(Word);
    gword.W_FenAppAfficher(Word);
    gword.W_FenAppRestauration(Word);
    gword.W_FenAppDeplacement(Word, u"Microsoft Word", 0, 0);
    gword.W_FenAppDimension(Word, u"Microsoft Word", 600, 450);
    gword.W_FichierNouveau(Word, templatePath);
    gword.W_AffichagePage(Word);
    gword.W_FenDocAgrandissement(Word, 1);
    if (gword.W_AffichageRegle(Word)) {
        gword.W_AffichageRegle(Word, false);
    }
    Word->Call(u"Activate");
}

void FillHeader(GWORD& gword, const ObjectPtr& Word, const LetterText& letter) {
    gword.W_DebutDocument(Word);
    if (!gword.W_AffichageEntete(Word)) {
        gword.W_AffichageEntete(Word, true);
    }
    for (const auto& [bookmark, text] : letter.header) {
        if (gword.W_Existe_Signet(Word, basic::FromUtf8(bookmark))) {
            gword.W_Insertion(Word, basic::FromUtf8(text));
        }
    }
}

/// The detail bookmark of each column; the selection ends on the first column's.
std::vector<Text> FindColumns(GWORD& gword, const ObjectPtr& Word) {
    if (gword.W_AffichageEntete(Word)) {
        gword.W_AffichageEntete(Word, false);
    }
    for (const char16_t* name : kDetails) {
        if (gword.W_Existe_Signet(Word, name)) {
            break;
        }
    }
    const auto count =
        Word->Child(u"Selection")->Child(u"Tables", {1})->Child(u"Columns")->Get(u"Count").Plain();
    std::vector<Text> columns(static_cast<std::size_t>(basic::CLng(count)));
    for (const char16_t* name : kDetails) {
        if (gword.W_Existe_Signet(Word, name)) {
            const auto index = Word->Child(u"Selection")->Child(u"Columns", {1})->Get(u"Index").Plain();
            columns.at(static_cast<std::size_t>(basic::CLng(index)) - 1) = name;
        }
    }
    gword.W_EditionAtteindre(Word, columns[0]);
    return columns;
}

}  // namespace

LetterText SampleLetter(int visits) {
    LetterText letter;
    letter.header = {{"CODCLI", "ELANCO"},
                     {"RS", "TRANSPORTS ÉLAN & FILS"},
                     {"ADR1", "Zone artisanale de l'Œuvre"},
                     {"ADR2", "Bâtiment C"},
                     {"ADR3", "44800   SAINT-HERBLAIN"},
                     {"ADR4", "FRANCE"},
                     {"CONTACT", "Mme Noëlle Moreau"},
                     {"TEL", "02 40 11 22 33"},
                     {"FAX", ""},
                     {"DATIMPR", "20/11/2026"}};
    for (int visit = 1; visit <= visits; ++visit) {
        const std::string number = std::to_string(visit);
        letter.visits.push_back({{"IMMAT", "AB-" + number + "-CD"},
                                 {"MARQUE", "CITROËN Jumper " + number},
                                 {"TYPTRAV", "Contrôle <" + number + "> à 100 €"},
                                 {"DERNVIS", "11/07/2024"},
                                 {"PERIOD", number},
                                 {"DATEPREV", "31/12/2026"}});
    }
    return letter;
}

void WriteLetter(GWORD& gword, ObjectPtr& Word, const Text& templatePath, const LetterText& letter,
                 const Text& file) {
    OpenDocument(gword, Word, templatePath);
    FillHeader(gword, Word, letter);
    const std::vector<Text> columns = FindColumns(gword, Word);
    bool first = true;
    for (const auto& visit : letter.visits) {
        gword.W_FinLigneTableau(Word);
        for (const Text& column : columns) {
            gword.W_CelluleSuiv(Word);
            const auto text = visit.find(basic::ToUtf8(column));
            gword.W_Insertion(Word, text == visit.end() ? Text() : basic::FromUtf8(text->second));
        }
        if (first) {
            gword.W_FichierEnregistrerSous(Word, file);
        } else {
            gword.W_FichierEnregistrer(Word, file);
        }
        first = false;
    }
}

}  // namespace quardele::tests
