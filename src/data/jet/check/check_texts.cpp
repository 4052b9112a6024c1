// The findings of a check in words.

#include <algorithm>
#include <iterator>

#include <jet/check.h>

#include "check/check_report.h"

namespace quardele::jet {

namespace {

struct Words {
    FaultCode code;
    const char16_t* french;  ///< "|1" stands for the detail
    const char16_t* english;
};

constexpr Words kWords[] = {
    {FaultCode::Header, u"le fichier ne peut pas être lu : |1", u"the file cannot be read as a database"},
    {FaultCode::InterruptedWrite, u"une écriture interrompue attend sa reprise (mdb recover)",
     u"an interrupted write waits for its recovery (mdb recover)"},
    {FaultCode::UnendedWrite,
     u"l'écriture d'un autre programme ne s'est pas terminée, utilisateur |1 (mdb compact)",
     u"a write of another program did not end, user |1 (mdb compact)"},
    {FaultCode::Damaged, u"page endommagée : |1", u"the page does not hold together"},
    {FaultCode::PageOutside, u"un renvoi mène hors du fichier : |1", u"a link leads out of the file: |1"},
    {FaultCode::PageTwice, u"la page appartient déjà à « |1 »", u"the page already belongs to \"|1\""},
    {FaultCode::PageFree, u"la page est utilisée et marquée libre", u"the page is in use and marked as free"},
    {FaultCode::PageForeign, u"la page n'est pas de son propriétaire",
     u"the page is none of the owner that lists it"},
    {FaultCode::PageUnlisted, u"la page n'est pas dans la carte de sa table",
     u"the page is missing from the map of its table"},
    {FaultCode::PageLost, u"pages perdues : |1 à partir de celle-ci",
     u"lost pages: |1, of which this is the first"},
    {FaultCode::RoomForeign, u"la carte des pages où il reste de la place nomme une page étrangère",
     u"the map of pages with room lists a foreign page"},
    {FaultCode::MapShape, u"carte de pages impossible : |1", u"impossible map of pages"},
    {FaultCode::FreeBytes, u"l'espace libre annoncé est faux", u"the page states a wrong free space"},
    {FaultCode::Row, u"ligne endommagée : |1", u"a row does not hold together"},
    {FaultCode::RowMoved, u"ligne déplacée introuvable : |1", u"a moved row cannot be found"},
    {FaultCode::RowOrphan, u"données d'une ligne déplacée que rien n'atteint : ligne |1",
     u"data of a moved row that nothing leads to: slot |1"},
    {FaultCode::RowCount, u"nombre de lignes annoncé et réel : |1", u"stated and real number of rows: |1"},
    {FaultCode::Value, u"une valeur ne convient pas à sa colonne", u"a value does not fit its column"},
    {FaultCode::LongValue, u"valeur longue illisible : |1", u"a long value cannot be read"},
    {FaultCode::LongValueTwice, u"deux valeurs longues partagent le morceau |1",
     u"two long values share piece |1"},
    {FaultCode::LongValueOrphan,
     u"morceaux de valeurs longues que rien n'atteint : |1 à partir de cette page",
     u"pieces of long values that nothing leads to: |1, from this page on"},
    {FaultCode::LongValuePlace, u"le morceau |1 d'une valeur longue est hors des pages de sa colonne",
     u"piece |1 of a long value lies outside the pages of its column"},
    {FaultCode::AutoNumber, u"le dernier numéro automatique est inférieur à |1",
     u"the last automatic number is smaller than |1"},
    {FaultCode::Definition, u"définition de table endommagée : |1",
     u"the definition of the table does not hold together"},
    {FaultCode::IndexPage, u"page d'index endommagée : |1", u"a page of the index does not hold together"},
    {FaultCode::IndexOrder, u"entrées d'index en désordre", u"index entries are out of order"},
    {FaultCode::IndexSeparator, u"un nœud de l'index ne sépare pas ses enfants |1",
     u"a node of the index does not separate its children |1"},
    {FaultCode::IndexLinks, u"pages de l'index mal enchaînées",
     u"pages of the index are linked in a wrong order"},
    {FaultCode::IndexMap, u"page dans l'index ou dans sa carte, mais pas dans les deux",
     u"the page is in the index or in its map, but not in both"},
    {FaultCode::IndexMissing, u"la ligne |1 manque dans l'index", u"row |1 is missing from the index"},
    {FaultCode::IndexExtra, u"l'index a une entrée fausse pour la ligne |1",
     u"the index has a wrong entry for row |1"},
    {FaultCode::IndexDuplicate, u"doublon dans un index unique", u"equal keys in a unique index"},
    {FaultCode::IndexNull, u"Null dans un index qui l'interdit, ligne |1",
     u"Null in an index that admits none, row |1"},
    {FaultCode::Catalog, u"aucune définition de table à cet endroit : |1",
     u"there is no definition of the table here"},
    {FaultCode::CatalogTwice, u"la table a la même définition que « |1 »",
     u"the table has the same definition as \"|1\""},
    {FaultCode::Properties, u"propriétés endommagées : |1", u"the properties do not hold together"},
    {FaultCode::More, u"et |1 autres", u"and |1 more"},
};

Text WithDetail(TextView words, TextView detail) {
    constexpr TextView kPlace = u"|1";
    Text text = basic::Replace(words, kPlace, detail);
    while (!text.empty() && (text.back() == u' ' || text.back() == u':')) {
        text.pop_back();
    }
    return text;
}

void AppendPart(Text& line, TextView name, TextView value) {
    if (!value.empty()) {
        line += name;
        line += value;
        line += u", ";
    }
}

}  // namespace

Text Describe(const Fault& fault, FaultLanguage language) {
    const bool french = language == FaultLanguage::French;
    const auto words = std::find_if(std::begin(kWords), std::end(kWords),
                                    [&](const Words& entry) { return entry.code == fault.code; });
    Text line;
    if (fault.code != FaultCode::More) {
        AppendPart(line, u"page ", NumberText(fault.page));
    }
    AppendPart(line, u"table ", fault.table);
    AppendPart(line, french ? u"index ou colonne " : u"index or column ", fault.object);
    if (line.size() > 1) {
        line.replace(line.size() - 2, 2, french ? u" : " : u": ");
    }
    return line + WithDetail(french ? words->french : words->english, fault.detail);
}

}  // namespace quardele::jet
