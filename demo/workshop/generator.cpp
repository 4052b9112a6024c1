#include "generator.h"

#include <algorithm>
#include <string>

#include <basic/date.h>
#include <basic/runtime_error.h>

#include "companies.h"
#include "people.h"

namespace quardele::workshop {

namespace {

using basic::Date;

constexpr double kDaysPerMonth = 30.44;
constexpr double kDaysPerYear = 365.25;

int SizeOf(std::size_t count) {
    return static_cast<int>(count);
}

void Require(bool possible, TextView what) {
    if (!possible) {
        throw basic::RuntimeError(basic::error::kInvalidCall, Text(what));
    }
}

Text TextOf(int number) {
    return basic::FromUtf8(std::to_string(number));
}

Date DaysBefore(Date day, int days) {
    return {day.days - days};
}

/// The same day at an hour of work, on the half hours.
Date AtWork(Date day, Random& random) {
    constexpr double kHalfHour = 1.0 / 48;
    return {day.days + kHalfHour * random.Between(16, 35)};
}

/// The rights of a mark, a code or a text that is mostly missing and sometimes empty.
std::optional<Text> Kind(Random& random) {
    const int kind = random.Below(100);
    if (kind < 40) {
        return std::nullopt;
    }
    if (kind < 45) {
        return Text();
    }
    return Text(kind < 72 ? u"CM" : u"SAV");
}

std::optional<Text> Site(Random& random) {
    const int kind = random.Below(100);
    if (kind < 12) {
        return std::nullopt;
    }
    return kind < 20 ? Text() : Text(SomeSite(random));
}

std::optional<Text> Details(Random& random) {
    const int kind = random.Below(100);
    if (kind < 50) {
        return std::nullopt;
    }
    return kind < 53 ? Text() : SomeJobDetails(random);
}

/// As other modules store it: sometimes with blanks behind it, missing or empty.
std::optional<Text> StoredRegistration(const Text& registration, Random& random) {
    const int kind = random.Below(100);
    if (kind < 3) {
        return std::nullopt;
    }
    if (kind < 5) {
        return Text();
    }
    return kind < 20 ? registration + basic::Space(random.Between(1, 3)) : registration;
}

}  // namespace

Generator::Generator(const Scale& scale, const GivenRows& given)
    : scale_(scale),
      given_(given),
      givenCustomers_(SizeOf(given.customers.size())),
      givenVehicles_(SizeOf(given.vehicles.size())),
      visits_(scale.visits - SizeOf(given.visits.size())) {
    const std::int64_t madeUp = scale.vehicles - givenVehicles_;
    Require(scale.customers >= givenCustomers_, u"Trop peu de clients");
    Require(madeUp >= 0, u"Trop peu de véhicules");
    Require(scale.jobs >= SizeOf(given.jobs.size()), u"Trop peu d'affaires");
    Require(visits_ >= 0, u"Trop peu de visites");
    Require(visits_ <= kMostVisits * madeUp, u"Trop de visites pour le nombre de véhicules");
    for (const Vehicle& vehicle : given.vehicles) {
        taken_.insert(vehicle.registration);
    }
}

Random Generator::NumbersOf(Purpose purpose, int number) const {
    return {scale_.seed, purpose, number};
}

Customer Generator::CustomerAt(int number) const {
    return number < givenCustomers_ ? given_.customers[static_cast<std::size_t>(number)]
                                    : CustomerOf(number, NumbersOf(Purpose::Customer, number));
}

// A given registration may be one of those made up: that vehicle then has a provisional one.
Registration Generator::RegistrationAt(int vehicle) const {
    Registration registration = RegistrationOf(vehicle, scale_.seed, scale_.today);
    if (taken_.contains(registration.text)) {
        registration.text = u"WW " + TextOf(vehicle);
    }
    return registration;
}

// Vehicles in shuffled order are dealt out evenly, then some go to the neighbour: one to five each, mostly.
std::optional<Text> Generator::CustomerOfVehicle(int vehicle) const {
    Random random = NumbersOf(Purpose::Owner, vehicle);
    const int customers = scale_.customers - givenCustomers_;
    const int kind = random.Below(100);
    if (kind < 2 || customers == 0) {
        return std::nullopt;
    }
    if (kind < 4) {
        return Text(kind < 3 ? u"INCONNU" : u"ANCIEN01");
    }
    const std::int64_t place =
        Shuffled(vehicle - givenVehicles_, scale_.vehicles - givenVehicles_, scale_.seed);
    const auto even = static_cast<int>(place * customers / (scale_.vehicles - givenVehicles_));
    const int owner = (even + (random.Percent(35) ? 1 : 0)) % customers + givenCustomers_;
    return CustomerCodeOf(owner, NumbersOf(Purpose::Customer, owner));
}

Vehicle Generator::VehicleAt(int number) const {
    if (number < givenVehicles_) {
        return given_.vehicles[static_cast<std::size_t>(number)];
    }
    Random random = NumbersOf(Purpose::Vehicle, number);
    const Model& model = SomeModel(random);
    const Registration registration = RegistrationAt(number);
    Vehicle vehicle;
    vehicle.registration = registration.text;
    vehicle.customer = CustomerOfVehicle(number);
    vehicle.make = model.make;
    if (!random.Percent(8)) {
        vehicle.model = random.Percent(3) ? Text() : Text(model.name);
    }
    vehicle.firstUse = registration.from;
    const double years = (scale_.today.days - registration.from.days) / kDaysPerYear;
    vehicle.kilometres = SomeKilometres(random, model.kind, std::max(years, 0.0));
    vehicle.serialNumber = SomeSerialNumber(random);
    vehicle.energy = SomeEnergy(random, model.kind);
    vehicle.power = model.power;
    vehicle.colour = SomeColour(random, model.kind);
    if (random.Percent(60)) {
        vehicle.fleetNumber = u"P" + TextOf(1001 + number);
    }
    if (random.Percent(30)) {
        const Text firstName(FirstName(random));
        vehicle.driver = firstName + u" " + Text(FamilyName(random));
    }
    vehicle.marked = random.Percent(1);
    if (random.Percent(15)) {
        vehicle.note1 = Text(SomeNote(random)) + u" ; clé n° " + TextOf(number + 1);
    }
    if (random.Percent(8)) {
        vehicle.note2 = random.Percent(30) ? Text() : Text(SomeNote(random));
    }
    return vehicle;
}

// The even share, moved by a part of itself: some vehicles have none, none has more than there are types.
std::int64_t Generator::VisitsBefore(int vehicle) const {
    const int madeUp = scale_.vehicles - givenVehicles_;
    const int place = vehicle - givenVehicles_;
    if (place <= 0 || place >= madeUp) {
        return place <= 0 ? 0 : visits_;
    }
    constexpr std::int64_t kWhole = 1000;
    const std::int64_t average = visits_ * kWhole / madeUp;
    const std::int64_t room = kWhole * (kMostVisits - 1) - average;
    const std::int64_t width =
        average == 0 ? 0 : std::clamp(room * kWhole / average, std::int64_t{0}, kWhole);
    Random random = NumbersOf(Purpose::VisitCount, vehicle);
    const std::int64_t shift = random.Below(static_cast<int>(kWhole)) * width / kWhole;
    return (place * kWhole + shift) * visits_ / (madeUp * kWhole);
}

Visit Generator::VisitFor(const Text& registration, const WorkType& work, Random& random) const {
    Visit visit{registration, Text(work.code), {}, work.months};
    if (!random.Percent(2)) {
        // Between just done and a little late.
        const int interval = static_cast<int>(work.months * kDaysPerMonth);
        visit.last = DaysBefore(scale_.today, random.Below(interval + interval / 40));
    }
    if (random.Percent(1)) {
        visit.last = basic::DateOf(2100, 1, 1);
    }
    const int kind = random.Below(100);
    if (kind < 5) {
        visit.months = kind < 2 ? std::nullopt : std::optional(0);
    }
    return visit;
}

std::vector<Visit> Generator::VisitsOf(int vehicle) const {
    std::vector<Visit> visits;
    if (vehicle < givenVehicles_) {
        return visits;
    }
    const auto count = static_cast<int>(VisitsBefore(vehicle + 1) - VisitsBefore(vehicle));
    Random ofVehicle = NumbersOf(Purpose::Vehicle, vehicle);
    const VehicleKind kind = SomeModel(ofVehicle).kind;
    const Text registration = RegistrationAt(vehicle).text;
    Random random = NumbersOf(Purpose::Visits, vehicle);
    for (const WorkType* work : SomeWorkTypes(random, kind, count)) {
        visits.push_back(VisitFor(registration, *work, random));
    }
    return visits;
}

Job Generator::JobAt(int number) const {
    if (number < SizeOf(given_.jobs.size())) {
        return given_.jobs[static_cast<std::size_t>(number)];
    }
    Random random = NumbersOf(Purpose::Job, number);
    Job job;
    const auto types = WorkTypes();
    job.label = types[static_cast<std::size_t>(random.Below(SizeOf(types.size())))].label;
    if (random.Percent(15)) {
        job.label += u" – devis n° " + TextOf(number + 1);
    }
    job.kind = Kind(random);
    job.details = Details(random);
    job.site = Site(random);
    constexpr int kEightYears = 2922;
    job.planned = DaysBefore(scale_.today, random.Below(kEightYears) - 30);
    if (random.Percent(25)) {
        job.planned = AtWork(job.planned, random);
    }
    const Date left{job.planned.days + random.Below(9)};
    if (left.days < scale_.today.days && !random.Percent(3)) {
        job.left = left;
    }
    if (const int madeUp = scale_.vehicles - givenVehicles_; madeUp > 0) {
        const int vehicle = givenVehicles_ + random.Below(madeUp);
        const Text registration = RegistrationAt(vehicle).text;
        job.customer = CustomerOfVehicle(vehicle);
        job.registration = StoredRegistration(registration, random);
        job.vehicles.assign(static_cast<std::size_t>(random.Below(3)), registration);
    }
    return job;
}

}  // namespace quardele::workshop
