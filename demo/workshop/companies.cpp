#include "companies.h"

#include <array>
#include <string>

#include "people.h"

namespace quardele::workshop {

namespace {

constexpr auto kTrades = std::to_array<TextView>(
    {u"TRANSPORTS", u"MESSAGERIES",  u"TAXIS",       u"AMBULANCES",    u"BOULANGERIE PÂTISSERIE",
     u"MAÇONNERIE", u"PLOMBERIE",    u"ÉLECTRICITÉ", u"MENUISERIE",    u"COUVERTURE",
     u"PEINTURE",   u"TRAITEUR",     u"PRIMEURS",    u"FROMAGERIE",    u"SCIERIE",
     u"PÉPINIÈRES", u"TERRASSEMENT", u"LOCATION",    u"DÉMÉNAGEMENTS", u"ÉTABLISSEMENTS",
     u"GARAGE",     u"CHAUFFAGE",    u"PAYSAGES",    u"NETTOYAGE",     u"AUTO-ÉCOLE",
     u"LIVRAISONS", u"FRIGORIFIQUE", u"AUTOCARS",    u"IMPRIMERIE",    u"MEUBLES"});

constexpr auto kPlaces = std::to_array<TextView>(
    {u"DU VAL",        u"DE L'ÉTOILE", u"DES VOSGES",     u"D'AQUITAINE",        u"SUD-OUEST",
     u"ÎLE-DE-FRANCE", u"DU RHÔNE",    u"DE LA CÔTE",     u"DES TROIS-RIVIÈRES", u"DU CENTRE",
     u"ATLANTIQUE",    u"DES ALPES",   u"DE L'OUEST",     u"CŒUR DE VILLE",      u"DU MARAIS",
     u"DE PROVENCE",   u"DE L'HÔTEL",  u"DU PAYS D'AUGE", u"DE LA PLAINE",       u"GRAND LARGE"});

constexpr auto kPublicBodies = std::to_array<TextView>(
    {u"MAIRIE", u"COMMUNAUTÉ DE COMMUNES", u"HÔPITAL", u"LYCÉE TECHNIQUE", u"SAPEURS-POMPIERS"});

constexpr auto kForms =
    std::to_array<TextView>({u"", u"", u" SARL", u" SAS", u" ET FILS", u" FRÈRES", u" & CIE"});

constexpr auto kRemarks = std::to_array<TextView>(
    {u"Client à relancer par courrier recommandé.", u"Paiement à 30 jours fin de mois.",
     u"Appeler avant toute intervention supérieure à 500 €.", u"Véhicules à rendre lavés.",
     u"Demander le bon de commande avant l'ouverture du dossier.",
     u"Dépôt des clés possible après 18 h dans la boîte aux lettres de l'atelier.",
     u"Remise de 10 % sur les pièces ; main-d'œuvre au tarif normal."});

constexpr auto kOtherCountries = std::to_array<TextView>({u"BE", u"CH", u"LU", u"DE", u"ES", u"IT"});

/// A town behind "of".
Text OfTown(TextView town) {
    if (town.starts_with(u"LE ")) {
        return u"DU" + Text(town.substr(2));
    }
    if (town.starts_with(u"LES ")) {
        return u"D" + Text(town.substr(1));
    }
    const bool elides = TextView(u"AEÉÈIOUH").find(town.front()) != TextView::npos;
    return (elides ? u"D'" : u"DE ") + Text(town);
}

Text Company(Random& random, const Town& town) {
    const int kind = random.Below(100);
    if (kind < 6) {
        return Text(random.Pick(kPublicBodies)) + u" " + OfTown(town.name);
    }
    const Text trade(random.Pick(kTrades));
    if (kind < 36) {
        return trade + u" " + Text(random.Pick(kPlaces));
    }
    const Text name = basic::UCase(FamilyName(random));
    return trade + u" " + name + Text(random.Pick(kForms));
}

Text Person(Random& random) {
    const Text first(FirstName(random));
    return basic::UCase(FamilyName(random)) + u" " + first;
}

/// The plain capital below an accent; 0 for what is no letter.
char16_t PlainCapital(char16_t unit) {
    constexpr TextView kAccented = u"ÀÂÄÇÉÈÊËÎÏÔÖÙÛÜŒÑŠØĄ";
    constexpr TextView kPlain = u"AAACEEEEIIOOUUUONSOA";
    const std::size_t place = kAccented.find(unit);
    if (place != TextView::npos) {
        return kPlain[place];
    }
    return unit >= u'A' && unit <= u'Z' ? unit : u'\0';
}

/// The letters of a name that a code begins with.
Text CodeLetters(TextView name) {
    constexpr std::size_t kLetters = 4;
    Text letters;
    for (const char16_t unit : name) {
        if (const char16_t plain = PlainCapital(unit); plain != u'\0' && letters.size() < kLetters) {
            letters += plain;
        }
    }
    return letters;
}

Text CodeOf(TextView name, int number) {
    constexpr std::size_t kDigits = 4;
    const std::string digits = std::to_string(number);
    const std::size_t zeros = digits.size() < kDigits ? kDigits - digits.size() : 0;
    return CodeLetters(name) + Text(zeros, u'0') + basic::FromUtf8(digits);
}

/// From nothing over a sentence to a page and more.
std::optional<Text> Remarks(Random& random) {
    if (random.Percent(75)) {
        return std::nullopt;
    }
    const int sentences = random.Percent(10) ? random.Between(20, 60) : random.Between(1, 3);
    Text remarks;
    for (int i = 0; i < sentences; ++i) {
        remarks += (i == 0 ? u"" : u" ") + Text(random.Pick(kRemarks));
    }
    return remarks;
}

std::optional<Text> Country(Random& random) {
    const int kind = random.Below(100);
    if (kind < 15) {
        return std::nullopt;
    }
    if (kind < 18) {
        return Text();
    }
    return kind < 94 ? Text(u"FR") : Text(random.Pick(kOtherCountries));
}

struct Identity {
    bool isPerson = false;
    const Town* town = nullptr;
    Text name;
    Text code;
};

/// What comes first of the numbers of a customer, so that its code is found without the rest.
Identity IdentityOf(int number, Random& random) {
    Identity identity;
    identity.isPerson = random.Percent(30);
    identity.town = &SomeTown(random);
    identity.name = identity.isPerson ? Person(random) : Company(random, *identity.town);
    identity.code = CodeOf(identity.name, number);
    return identity;
}

}  // namespace

Customer CustomerOf(int number, Random random) {
    const Identity identity = IdentityOf(number, random);
    Customer customer;
    customer.code = identity.code;
    customer.name = identity.name;
    customer.street = StreetAddress(random);
    if (!identity.isPerson && random.Percent(25)) {
        customer.building = u"Bâtiment " + Text(1, static_cast<char16_t>(u'A' + random.Below(6)));
    }
    if (!identity.isPerson && random.Percent(15)) {
        customer.postBox = u"B.P. " + basic::FromUtf8(std::to_string(random.Between(1, 999)));
    }
    customer.postcode = identity.town->postcode;
    customer.town = identity.town->name;
    customer.country = Country(random);
    const Text firstName(FirstName(random));
    customer.contact = identity.isPerson ? Text() : firstName + u" " + Text(FamilyName(random));
    customer.telephone =
        identity.isPerson ? MobileNumber(random) : TelephoneNumber(random, identity.town->zone);
    customer.fax = identity.isPerson ? Text() : TelephoneNumber(random, identity.town->zone);
    customer.remarks = Remarks(random);
    constexpr int kLargestBalance = 5'000'00;  // in cents
    customer.balance.tenThousandths = std::int64_t{100} * random.Below(kLargestBalance);
    return customer;
}

Text CustomerCodeOf(int number, Random random) {
    return IdentityOf(number, random).code;
}

}  // namespace quardele::workshop
