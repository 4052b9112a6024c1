#include "work.h"

#include <algorithm>
#include <array>

namespace quardele::workshop {

namespace {

constexpr auto kWorkTypes = std::to_array<WorkType>({
    {u"CT", u"Contrôle technique", 24, 30, 30, 20},
    {u"VID", u"Vidange et filtres", 12, 30, 30, 20},
    {u"FRE", u"Contrôle des freins", 12, 10, 15, 20},
    {u"PNE", u"Pneumatiques", 24, 15, 15, 15},
    {u"CLI", u"Climatisation", 24, 15, 8, 4},
    {u"DIS", u"Courroie de distribution", 60, 12, 10, 1},
    {u"TAC", u"Contrôle du tachygraphe", 24, 1, 2, 30},
    {u"LIM", u"Limiteur de vitesse", 24, 1, 2, 20},
    {u"EXT", u"Extincteurs", 12, 1, 6, 20},
    {u"HAY", u"Hayon élévateur", 6, 1, 6, 15},
    {u"BAT", u"Batterie", 36, 8, 8, 5},
    {u"REV", u"Révision constructeur", 12, 15, 12, 10},
});

constexpr auto kSentences = std::to_array<TextView>(
    {u"Dépose et repose des roues avant.", u"Contrôle des niveaux, essai routier.",
     u"Remplacement du filtre à huile et du filtre d'habitacle.",
     u"Jeu constaté dans la rotule inférieure gauche.",
     u"Plaquettes avant à 3 mm : à prévoir au prochain passage.",
     u"Remise à zéro de l'indicateur d'entretien.", u"Fuite au joint de carter, nettoyée et surveillée.",
     u"Équilibrage et permutation des pneumatiques.", u"Client prévenu par téléphone, accord donné.",
     u"Pièces garanties deux ans, main-d'œuvre comprise.", u"Étalonnage du tachygraphe, plaquette posée.",
     u"Batterie testée : 78 % de capacité restante.",
     u"Recharge de gaz et désinfection du circuit de climatisation.",
     u"Courroie et pompe à eau remplacées."});

/// The sites that work on vehicles; the stock database has a closed one besides.
constexpr auto kOpenSites = std::to_array<TextView>({u"PAR", u"LYO", u"BDX", u"PA"});

int WeightOf(const WorkType& work, VehicleKind kind) {
    switch (kind) {
        case VehicleKind::Van:
            return work.vans;
        case VehicleKind::Truck:
            return work.trucks;
        case VehicleKind::Car:
            break;
    }
    return work.cars;
}

/// The place of one of the types, each taken as often as its weight says.
std::size_t DrawnFrom(const std::vector<const WorkType*>& left, Random& random, VehicleKind kind) {
    int total = 0;
    for (const WorkType* work : left) {
        total += WeightOf(*work, kind);
    }
    int drawn = random.Below(total);
    std::size_t place = 0;
    while (drawn >= WeightOf(*left[place], kind)) {
        drawn -= WeightOf(*left[place], kind);
        ++place;
    }
    return place;
}

int SentenceCount(Random& random) {
    const int kind = random.Below(100);
    if (kind < 85) {
        return random.Between(1, 4);
    }
    return kind < 97 ? random.Between(10, 40) : random.Between(100, 250);
}

}  // namespace

std::span<const WorkType> WorkTypes() {
    return kWorkTypes;
}

std::vector<const WorkType*> SomeWorkTypes(Random& random, VehicleKind kind, int count) {
    std::vector<const WorkType*> left;
    for (const WorkType& work : kWorkTypes) {
        left.push_back(&work);
    }
    std::vector<const WorkType*> chosen;
    for (int i = 0; i < count; ++i) {
        const std::size_t place = DrawnFrom(left, random, kind);
        chosen.push_back(left[place]);
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(place));
    }
    return chosen;
}

Text SomeJobDetails(Random& random) {
    Text details;
    for (int i = SentenceCount(random); i > 0; --i) {
        details += random.Pick(kSentences);
        details += u"\r\n";
    }
    return details;
}

TextView SomeSite(Random& random) {
    return random.Pick(kOpenSites);
}

}  // namespace quardele::workshop
