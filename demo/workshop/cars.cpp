#include "cars.h"

#include <algorithm>
#include <array>

namespace quardele::workshop {

namespace {

constexpr auto kModels = std::to_array<Model>({
    {u"RENAULT", u"Clio V", VehicleKind::Car, 5},
    {u"RENAULT", u"Mégane IV", VehicleKind::Car, 6},
    {u"RENAULT", u"Captur", VehicleKind::Car, 5},
    {u"RENAULT", u"Scénic", VehicleKind::Car, 7},
    {u"RENAULT", u"Kangoo Express", VehicleKind::Van, 5},
    {u"RENAULT", u"Trafic L2H1", VehicleKind::Van, 7},
    {u"RENAULT", u"Master 3,5 t", VehicleKind::Van, 8},
    {u"RENAULT TRUCKS", u"Gamme D 12 t", VehicleKind::Truck, 18},
    {u"RENAULT TRUCKS", u"T 480", VehicleKind::Truck, 33},
    {u"PEUGEOT", u"208 BlueHDi", VehicleKind::Car, 5},
    {u"PEUGEOT", u"308 SW", VehicleKind::Car, 6},
    {u"PEUGEOT", u"3008", VehicleKind::Car, 7},
    {u"PEUGEOT", u"Partner", VehicleKind::Van, 5},
    {u"PEUGEOT", u"Expert", VehicleKind::Van, 6},
    {u"PEUGEOT", u"Boxer HDi", VehicleKind::Van, 8},
    {u"CITROËN", u"C3 Aircross", VehicleKind::Car, 5},
    {u"CITROËN", u"C4", VehicleKind::Car, 6},
    {u"CITROËN", u"Berlingo", VehicleKind::Van, 5},
    {u"CITROËN", u"Jumpy", VehicleKind::Van, 6},
    {u"CITROËN", u"Jumper", VehicleKind::Van, 8},
    {u"DACIA", u"Duster", VehicleKind::Car, 6},
    {u"DACIA", u"Sandero Stepway", VehicleKind::Car, 5},
    {u"DACIA", u"Dokker Van", VehicleKind::Van, 5},
    {u"VOLKSWAGEN", u"Golf", VehicleKind::Car, 6},
    {u"VOLKSWAGEN", u"Caddy Cargo", VehicleKind::Van, 6},
    {u"VOLKSWAGEN", u"Crafter", VehicleKind::Van, 9},
    {u"ŠKODA", u"Octavia Combi", VehicleKind::Car, 6},
    {u"SEAT", u"Leon", VehicleKind::Car, 6},
    {u"OPEL", u"Corsa", VehicleKind::Car, 5},
    {u"OPEL", u"Vivaro", VehicleKind::Van, 7},
    {u"FORD", u"Fiesta", VehicleKind::Car, 5},
    {u"FORD", u"Transit Custom", VehicleKind::Van, 8},
    {u"TOYOTA", u"Yaris Hybride", VehicleKind::Car, 4},
    {u"TOYOTA", u"Hilux", VehicleKind::Van, 9},
    {u"NISSAN", u"Qashqai", VehicleKind::Car, 7},
    {u"FIAT", u"500", VehicleKind::Car, 4},
    {u"FIAT", u"Ducato 33 L2H2", VehicleKind::Van, 8},
    {u"MINI", u"Cooper", VehicleKind::Car, 7},
    {u"BMW", u"Série 3 Touring", VehicleKind::Car, 9},
    {u"MERCEDES-BENZ", u"Sprinter 314", VehicleKind::Van, 9},
    {u"MERCEDES-BENZ", u"Citan", VehicleKind::Van, 5},
    {u"MERCEDES-BENZ", u"Atego 1224", VehicleKind::Truck, 20},
    {u"MERCEDES-BENZ", u"Actros 1845", VehicleKind::Truck, 34},
    {u"IVECO", u"Daily 35C15", VehicleKind::Van, 9},
    {u"IVECO", u"Eurocargo 120E", VehicleKind::Truck, 21},
    {u"MAN", u"TGX 18.440", VehicleKind::Truck, 34},
    {u"DAF", u"XF 480", VehicleKind::Truck, 36},
    {u"VOLVO", u"FH 500", VehicleKind::Truck, 38},
    {u"SCANIA", u"R450 Highline", VehicleKind::Truck, 35},
});

constexpr auto kCarEnergies = std::to_array<TextView>(
    {u"Essence", u"Essence", u"Gazole", u"Gazole", u"Hybride", u"Électrique", u"GPL"});
constexpr auto kVanEnergies =
    std::to_array<TextView>({u"Gazole", u"Gazole", u"Gazole", u"Gazole", u"Électrique"});
constexpr auto kTruckEnergies = std::to_array<TextView>({u"Gazole", u"Gazole", u"Gazole", u"B100"});

constexpr auto kCarColours = std::to_array<TextView>({u"Gris métallisé", u"Noir", u"Blanc", u"Bleu nuit",
                                                      u"Rouge", u"Vert forêt", u"Crème", u"Gris anthracite"});
constexpr auto kWorkColours =
    std::to_array<TextView>({u"Blanc", u"Blanc", u"Blanc", u"Gris", u"Bleu", u"Jaune"});

constexpr auto kNotes = std::to_array<TextView>(
    {u"Prévoir véhicule de prêt", u"Attention : pneus d'été à l'atelier", u"Clé de contact n° 2 au bureau",
     u"Hayon à graisser à chaque passage", u"Antivol de roue dans la boîte à gants",
     u"Contrat d'entretien jusqu'à 120 000 km", u"Appeler le conducteur, pas le siège",
     u"Rétroviseur droit fêlé", u"Bâche à remplacer à la prochaine visite", u"Carte grise à l'atelier"});

}  // namespace

const Model& SomeModel(Random& random) {
    return random.Pick(kModels);
}

TextView SomeEnergy(Random& random, VehicleKind kind) {
    switch (kind) {
        case VehicleKind::Van:
            return random.Pick(kVanEnergies);
        case VehicleKind::Truck:
            return random.Pick(kTruckEnergies);
        case VehicleKind::Car:
            break;
    }
    return random.Pick(kCarEnergies);
}

TextView SomeColour(Random& random, VehicleKind kind) {
    return kind == VehicleKind::Car ? random.Pick(kCarColours) : random.Pick(kWorkColours);
}

Text SomeSerialNumber(Random& random) {
    constexpr TextView kCharacters = u"ABCDEFGHJKLMNPRSTUVWXYZ0123456789";
    constexpr std::size_t kLength = 17;
    Text number = u"VF";
    while (number.size() < kLength - 6) {
        number += kCharacters[static_cast<std::size_t>(random.Below(static_cast<int>(kCharacters.size())))];
    }
    while (number.size() < kLength) {
        number += static_cast<char16_t>(u'0' + random.Below(10));
    }
    return number;
}

int SomeKilometres(Random& random, VehicleKind kind, double years) {
    constexpr double kLongYears = 9;
    const int yearly =
        kind == VehicleKind::Truck ? random.Between(30'000, 70'000) : random.Between(6'000, 25'000);
    // Later years hardly count: old vehicles stand more than they run.
    const double active = std::min(years, kLongYears) + std::max(years - kLongYears, 0.0) / 8;
    return static_cast<int>(active * yearly) + random.Below(3'000);
}

TextView SomeNote(Random& random) {
    return random.Pick(kNotes);
}

}  // namespace quardele::workshop
