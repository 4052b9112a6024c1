#include "reference_rows.h"

#include <array>

#include <basic/date.h>

#include "row_writer.h"
#include "work.h"

namespace quardele::workshop {

namespace {

using basic::TextView;
using jet::Variant;

/// A user field of the vehicle form; one without label is not shown.
struct UserField {
    TextView label;
    TextView kind;  ///< D a date, N a number, T a text
    std::int16_t length = 0;
};

constexpr auto kUserFields = std::to_array<UserField>({{u"1er usage", u"D", 10},
                                                       {u"Kilométrage", u"N", 7},
                                                       {u"N° de série", u"T", 20},
                                                       {u"Énergie", u"T", 10},
                                                       {},
                                                       {u"Puissance (CV)", u"N", 3},
                                                       {u"Couleur", u"T", 15},
                                                       {u"N° de parc", u"T", 10},
                                                       {},
                                                       {u"Conducteur", u"T", 30},
                                                       {},
                                                       {},
                                                       {},
                                                       {},
                                                       {}});

using Row = std::vector<Variant>;

void Write(const DatabasePtr& database, TextView table, const std::vector<Row>& rows) {
    RowWriter writer(database, table);
    for (const Row& row : rows) {
        writer.Add(row);
    }
    writer.Finish();
}

Variant Number(int number) {
    return static_cast<std::int16_t>(number);
}

}  // namespace

void WriteParameters(const DatabasePtr& data) {
    Row row = {u"9.5"};
    for (const UserField& field : kUserFields) {
        if (field.label.empty()) {
            row.insert(row.end(), 5, basic::Null{});
        } else {
            const Row columns = {field.label, field.kind, field.length, std::int16_t{0}, basic::Null{}};
            row.insert(row.end(), columns.begin(), columns.end());
        }
    }
    Write(data, u"TPAR", {row});
}

void WriteCountries(const DatabasePtr& data) {
    Write(data, u"TPAYS",
          {{u"FR", u"FRANCE"},
           {u"BE", u"BELGIQUE"},
           {u"CH", u"SUISSE"},
           {u"DE", u"ALLEMAGNE"},
           {u"ES", u"ESPAGNE"},
           {u"IT", u"ITALIE"},
           {u"LU", u"LUXEMBOURG"}});
}

void WriteWorkTypes(const DatabasePtr& data) {
    std::vector<Row> rows;
    for (const WorkType& work : WorkTypes()) {
        rows.push_back({work.code, work.label});
    }
    Write(data, u"TTYP", rows);
}

void WriteSites(const DatabasePtr& stock) {
    Write(stock, u"TSITE",
          {{u"PAR", u"Paris Bercy", false},
           {u"LYO", u"Lyon Gerland", false},
           {u"BDX", u"Bordeaux Lac", false},
           {u"PA", u"Pau", false},
           {u"LIL", u"Lille (fermé)", true}});
}

void WritePaths(const DatabasePtr& paths) {
    Write(paths, u"TPATH",
          {{Number(2), u"C:\\QUARDELE\\DATA\\", u"talmeon.mdb"},
           {Number(1), u"C:\\QUARDELE\\STOCK\\", u"SERVANDA.MDB"},
           {Number(7), u"C:\\QUARDELE\\DIVERS\\", u"AUTRE.MDB"}});
}

void WriteChanges(const DatabasePtr& changes) {
    Write(changes, u"TNUMAPPLI",
          {{Number(1), u"Stock"},
           {Number(2), u"Affaires"},
           {Number(10), u"Suivi Véhicules"},
           {Number(99), u"Tous modules"}});
    Write(changes, u"TEVOLUTION",
          {{Number(10), Number(0), basic::DateOf(2019, 3, 4), u"Première version du module."},
           {Number(10), Number(1), basic::DateOf(2020, 6, 15),
            u"  Ajout des champs Note 1 et Note 2 sur la fiche véhicule.  "},
           {Number(10), Number(1), basic::DateOf(2020, 6, 15), u"Filtre par site dans les relances."},
           {Number(10), Number(5), basic::DateOf(2026, 9, 1),
            u"Choix du modèle de lettre lorsqu'il en existe plusieurs."},
           {Number(2), Number(3), basic::DateOf(2022, 1, 10), u"Autre module."}});
}

// The key is what the first twenty units of a text are, so that two texts can share it.
void WriteTranslations(const DatabasePtr& translations) {
    constexpr std::size_t kKey = 20;
    std::vector<Row> rows;
    for (const auto& [text, translation] : std::to_array<std::pair<TextView, TextView>>(
             {{u"Sélection vide.", u"Výběr je prázdný."},
              {u"Confirmation", u"Potvrzení"},
              {u"Aucune relance à effectuer", u"Žádné upomínky"},
              {u"Enregistrez ou annulez d'abord votre saisie", u"Nejprve uložte nebo zrušte zadání"},
              {u"Enregistrez ou annulez d'abord votre saisie !", u"Nejprve uložte nebo zrušte zadání!"}})) {
        rows.push_back({text.substr(0, kKey), text, translation});
    }
    Write(translations, u"TTRAD", rows);
}

}  // namespace quardele::workshop
