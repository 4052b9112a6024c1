#include "people.h"

#include <array>
#include <string>

namespace quardele::workshop {

namespace {

using basic::Text;
using basic::TextView;

constexpr auto kFirstNames = std::to_array<TextView>(
    {u"Adèle",     u"Aïcha",    u"Alain",    u"Amélie",    u"André",     u"Anne-Marie", u"Antoine",
     u"Benoît",    u"Bernard",  u"Camille",  u"Cécile",    u"Chloé",     u"Christine",  u"Claire",
     u"Clément",   u"Corinne",  u"Damien",   u"Daniel",    u"Didier",    u"Élodie",     u"Émile",
     u"Éric",      u"Étienne",  u"Fabrice",  u"Fatima",    u"Florence",  u"Franck",     u"François",
     u"Françoise", u"Gaëlle",   u"Gérard",   u"Guillaume", u"Hélène",    u"Henri",      u"Hugo",
     u"Inès",      u"Isabelle", u"Jean-Luc", u"Jérôme",    u"Joël",      u"Julien",     u"Karim",
     u"Laëtitia",  u"Laurent",  u"Léa",      u"Loïc",      u"Lucie",     u"Maëlys",     u"Marc",
     u"Marie",     u"Martine",  u"Michel",   u"Mickaël",   u"Nadine",    u"Nathalie",   u"Nicolas",
     u"Noémie",    u"Olivier",  u"Pascal",   u"Patrick",   u"Philippe",  u"Pierre",     u"Raphaël",
     u"Rémi",      u"Romain",   u"Sandrine", u"Sébastien", u"Séverine",  u"Sophie",     u"Stéphane",
     u"Sylvie",    u"Théo",     u"Thierry",  u"Valérie",   u"Véronique", u"Vincent",    u"Yann",
     u"Yves",      u"Zoé"});

constexpr auto kFamilyNames = std::to_array<TextView>(
    {u"Martin",   u"Bernard",    u"Thomas",    u"Petit",    u"Robert",    u"Richard",    u"Durand",
     u"Dubois",   u"Moreau",     u"Laurent",   u"Simon",    u"Michel",    u"Lefèvre",    u"Leroy",
     u"Roux",     u"David",      u"Bertrand",  u"Morel",    u"Fournier",  u"Girard",     u"Bonnet",
     u"Dupont",   u"Lambert",    u"Fontaine",  u"Rousseau", u"Vincent",   u"Müller",     u"Faure",
     u"André",    u"Mercier",    u"Blanc",     u"Guérin",   u"Boyer",     u"Garnier",    u"Chevalier",
     u"François", u"Legrand",    u"Gauthier",  u"Garcia",   u"Perrin",    u"Robin",      u"Clément",
     u"Morin",    u"Nicolas",    u"Henry",     u"Roussel",  u"Mathieu",   u"Gautier",    u"Masson",
     u"Marchand", u"Duval",      u"Denis",     u"Dumont",   u"Marie",     u"Lemaire",    u"Noël",
     u"Meyer",    u"Dufour",     u"Meunier",   u"Brun",     u"Blanchard", u"Giraud",     u"Joly",
     u"Rivière",  u"Lucas",      u"Brunet",    u"Gaillard", u"Barbier",   u"Arnaud",     u"Martinez",
     u"Gérard",   u"Roche",      u"Renard",    u"Schmitt",  u"Le Goff",   u"Le Gall",    u"Kerboul",
     u"D'Ornano", u"Saint-Just", u"Gonçalves", u"Nuñez",    u"Dąbrowski", u"Østergaard", u"Haüy",
     u"Bénard",   u"Lévêque",    u"Besançon",  u"Aït-Kaci", u"Traoré",    u"Nguyen",     u"De La Tour"});

constexpr auto kStreetKinds =
    std::to_array<TextView>({u"rue", u"rue", u"rue", u"avenue", u"boulevard", u"chemin", u"impasse", u"place",
                             u"allée", u"route", u"quai"});

constexpr auto kStreetNames = std::to_array<TextView>({u"de la République",
                                                       u"Jean-Jaurès",
                                                       u"du Général-de-Gaulle",
                                                       u"Victor-Hugo",
                                                       u"de l'Église",
                                                       u"des Écoliers",
                                                       u"du Château",
                                                       u"des Érables",
                                                       u"de l'Océan",
                                                       u"de Compiègne",
                                                       u"Pasteur",
                                                       u"de la Gare",
                                                       u"des Tilleuls",
                                                       u"de la Libération",
                                                       u"du Moulin",
                                                       u"Émile-Zola",
                                                       u"de la Fontaine",
                                                       u"Gambetta",
                                                       u"de l'Abbé-Grégoire",
                                                       u"des Frères-Lumière",
                                                       u"du 8-Mai-1945",
                                                       u"du 11-Novembre",
                                                       u"de la Forêt",
                                                       u"des Alouettes",
                                                       u"de l'Industrie",
                                                       u"Marie-Curie",
                                                       u"des Métiers",
                                                       u"du Lavoir",
                                                       u"de la Vallée",
                                                       u"Aristide-Briand",
                                                       u"des Entrepôts",
                                                       u"du Port",
                                                       u"d'Alsace-Lorraine",
                                                       u"de Verdun",
                                                       u"Henri-Barbusse"});

constexpr auto kTowns = std::to_array<Town>({{u"PARIS", u"75012", 1},
                                             {u"PARIS", u"75019", 1},
                                             {u"BOULOGNE-BILLANCOURT", u"92100", 1},
                                             {u"SAINT-DENIS", u"93200", 1},
                                             {u"CRÉTEIL", u"94000", 1},
                                             {u"VERSAILLES", u"78000", 1},
                                             {u"ÉVRY-COURCOURONNES", u"91000", 1},
                                             {u"CERGY", u"95000", 1},
                                             {u"MEAUX", u"77100", 1},
                                             {u"NANTES", u"44000", 2},
                                             {u"RENNES", u"35000", 2},
                                             {u"BREST", u"29200", 2},
                                             {u"LE HAVRE", u"76600", 2},
                                             {u"ROUEN", u"76000", 2},
                                             {u"CAEN", u"14000", 2},
                                             {u"ANGERS", u"49000", 2},
                                             {u"LE MANS", u"72000", 2},
                                             {u"TOURS", u"37000", 2},
                                             {u"ORLÉANS", u"45000", 2},
                                             {u"LES SABLES-D'OLONNE", u"85100", 2},
                                             {u"LORIENT", u"56100", 2},
                                             {u"CHÂTEAUROUX", u"36000", 2},
                                             {u"LILLE", u"59800", 3},
                                             {u"DUNKERQUE", u"59140", 3},
                                             {u"AMIENS", u"80000", 3},
                                             {u"REIMS", u"51100", 3},
                                             {u"METZ", u"57000", 3},
                                             {u"NANCY", u"54000", 3},
                                             {u"STRASBOURG", u"67000", 3},
                                             {u"MULHOUSE", u"68100", 3},
                                             {u"ÉPINAL", u"88000", 3},
                                             {u"DIJON", u"21000", 3},
                                             {u"BESANÇON", u"25000", 3},
                                             {u"LYON", u"69003", 4},
                                             {u"LYON", u"69007", 4},
                                             {u"VILLEURBANNE", u"69100", 4},
                                             {u"SAINT-ÉTIENNE", u"42000", 4},
                                             {u"GRENOBLE", u"38000", 4},
                                             {u"ANNECY", u"74000", 4},
                                             {u"CLERMONT-FERRAND", u"63000", 4},
                                             {u"MARSEILLE", u"13001", 4},
                                             {u"MARSEILLE", u"13013", 4},
                                             {u"AIX-EN-PROVENCE", u"13100", 4},
                                             {u"NICE", u"06000", 4},
                                             {u"TOULON", u"83000", 4},
                                             {u"NÎMES", u"30000", 4},
                                             {u"MONTPELLIER", u"34000", 4},
                                             {u"PERPIGNAN", u"66000", 4},
                                             {u"BORDEAUX", u"33000", 5},
                                             {u"MÉRIGNAC", u"33700", 5},
                                             {u"TOULOUSE", u"31000", 5},
                                             {u"PAU", u"64000", 5},
                                             {u"BAYONNE", u"64100", 5},
                                             {u"LA ROCHELLE", u"17000", 5},
                                             {u"ANGOULÊME", u"16000", 5},
                                             {u"POITIERS", u"86000", 5},
                                             {u"LIMOGES", u"87000", 5},
                                             {u"AGEN", u"47000", 5},
                                             {u"ALBI", u"81000", 5},
                                             {u"PÉRIGUEUX", u"24000", 5}});

/// The first six digits of the numbers of zones 1 to 5, and of mobile ones, that nobody gets.
constexpr auto kFictionalZones =
    std::to_array<TextView>({u"01 99 00", u"02 61 91", u"03 53 01", u"04 65 71", u"05 36 49"});
constexpr TextView kFictionalMobiles = u"06 39 98";

Text TwoDigits(Random& random) {
    const std::string digits = std::to_string(100 + random.Below(100));
    return basic::FromUtf8(digits.substr(1));
}

Text NumberBehind(TextView digits, Random& random) {
    const Text third = TwoDigits(random);
    const Text fourth = TwoDigits(random);
    return Text(digits) + u" " + third + u" " + fourth;
}

}  // namespace

TextView FirstName(Random& random) {
    return random.Pick(kFirstNames);
}

TextView FamilyName(Random& random) {
    return random.Pick(kFamilyNames);
}

const Town& SomeTown(Random& random) {
    return random.Pick(kTowns);
}

Text StreetAddress(Random& random) {
    constexpr int kHouses = 140;
    Text address = basic::FromUtf8(std::to_string(random.Between(1, kHouses)));
    address += random.Percent(8) ? u" bis, " : u", ";
    if (random.Percent(6)) {
        return address + u"Z.I. Les Prés";
    }
    address += random.Pick(kStreetKinds);
    return address + u" " + Text(random.Pick(kStreetNames));
}

Text TelephoneNumber(Random& random, int zone) {
    return NumberBehind(kFictionalZones[static_cast<std::size_t>(zone - 1)], random);
}

Text MobileNumber(Random& random) {
    return NumberBehind(kFictionalMobiles, random);
}

}  // namespace quardele::workshop
