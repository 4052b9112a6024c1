// Made-up rows: the same every time, different where they must be, believable, with the odd cases of real
// data.
#include <algorithm>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include <basic/date.h>
#include <basic/runtime_error.h>
#include <jet/collation.h>

#include "generator.h"
#include "structure.h"

namespace quardele::workshop {
namespace {

const GivenRows kNone;

Scale Middle() {
    return {.vehicles = 1500,
            .customers = 420,
            .visits = 4500,
            .jobs = 4000,
            .seed = 7,
            .today = basic::DateOf(2026, 11, 20)};
}

std::vector<Vehicle> VehiclesOf(const Generator& generator) {
    std::vector<Vehicle> vehicles;
    for (int i = 0; i < generator.VehicleCount(); ++i) {
        vehicles.push_back(generator.VehicleAt(i));
    }
    return vehicles;
}

std::vector<Visit> AllVisits(const Generator& generator) {
    std::vector<Visit> visits;
    for (int i = 0; i < generator.VehicleCount(); ++i) {
        for (const Visit& visit : generator.VisitsOf(i)) {
            visits.push_back(visit);
        }
    }
    return visits;
}

std::vector<Job> JobsOf(const Generator& generator) {
    std::vector<Job> jobs;
    for (int i = 0; i < generator.JobCount(); ++i) {
        jobs.push_back(generator.JobAt(i));
    }
    return jobs;
}

std::size_t Differences(const Scale& left, const Scale& right) {
    const auto first = VehiclesOf(Generator(left, kNone));
    const auto second = VehiclesOf(Generator(right, kNone));
    std::size_t differences = 0;
    for (std::size_t i = 0; i < first.size(); ++i) {
        differences += first[i].serialNumber != second[i].serialNumber ? 1U : 0U;
    }
    return differences;
}

int ErrorOf(const Scale& scale, const GivenRows& given = kNone) {
    try {
        const Generator generator(scale, given);
    } catch (const basic::RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

TEST(Shuffle, EveryNumberHasAPlaceOfItsOwn) {
    for (const std::int64_t size : {1, 2, 3, 10, 1000, 1023, 1024, 1025, 4099}) {
        std::set<std::int64_t> places;
        for (std::int64_t number = 0; number < size; ++number) {
            places.insert(Shuffled(number, size, 5));
        }
        EXPECT_EQ(places.size(), static_cast<std::size_t>(size));
        EXPECT_EQ(*places.begin(), 0);
        EXPECT_EQ(*places.rbegin(), size - 1);
    }
}

TEST(Generator, TheSeedDecidesEverything) {
    Scale other = Middle();
    EXPECT_EQ(Differences(Middle(), other), 0U);
    other.seed = 8;
    EXPECT_GT(Differences(Middle(), other), 1400U);
}

TEST(Generator, AnythingCanBeMadeAloneAndInAnyOrder) {
    const Generator generator(Middle(), kNone);
    const auto jobs = JobsOf(generator);
    for (int i = 3999; i >= 0; i -= 13) {
        EXPECT_EQ(generator.JobAt(i).registration, jobs[static_cast<std::size_t>(i)].registration);
        EXPECT_EQ(generator.JobAt(i).details, jobs[static_cast<std::size_t>(i)].details);
    }
}

TEST(Generator, RegistrationsAndCodesAreDifferent) {
    Scale large = Middle();
    large.vehicles = 60'000;
    large.customers = 20'000;
    const Generator generator(large, kNone);
    std::set<Text> registrations;
    std::set<Text> codes;
    for (int i = 0; i < large.vehicles; ++i) {
        registrations.insert(generator.VehicleAt(i).registration);
    }
    for (int i = 0; i < large.customers; ++i) {
        codes.insert(generator.CustomerAt(i).code);
    }
    EXPECT_EQ(registrations.size(), 60'000U);
    EXPECT_EQ(codes.size(), 20'000U);
}

TEST(Generator, AGivenRegistrationIsNotMadeUpAgain) {
    GivenRows given;
    given.vehicles.push_back(Generator(Middle(), kNone).VehicleAt(700));
    std::set<Text> registrations;
    for (const Vehicle& vehicle : VehiclesOf(Generator(Middle(), given))) {
        registrations.insert(vehicle.registration);
    }
    EXPECT_EQ(registrations.size(), 1500U);
}

TEST(Generator, VisitsAddUpAndNoVehicleHasATypeTwice) {
    for (const int visits : {0, 1, 4500, 16'000, 18'000}) {
        Scale scale = Middle();
        scale.visits = visits;
        std::set<std::pair<Text, Text>> keys;
        for (const Visit& visit : AllVisits(Generator(scale, kNone))) {
            keys.emplace(visit.registration, visit.work);
        }
        EXPECT_EQ(keys.size(), static_cast<std::size_t>(visits));
    }
}

TEST(Generator, MostCustomersHaveOneToFiveVehicles) {
    std::map<Text, int> owned;
    const Generator generator(Middle(), kNone);
    for (int i = 0; i < generator.CustomerCount(); ++i) {
        owned[generator.CustomerAt(i).code] = 0;
    }
    int strangers = 0;
    int ownerless = 0;
    for (const Vehicle& vehicle : VehiclesOf(generator)) {
        ownerless += vehicle.customer ? 0 : 1;
        if (vehicle.customer) {
            const auto owner = owned.find(*vehicle.customer);
            strangers += owner == owned.end() ? 1 : 0;
            if (owner != owned.end()) {
                ++owner->second;
            }
        }
    }
    const auto usual = std::count_if(
        owned.begin(), owned.end(), [](const auto& owner) { return owner.second >= 1 && owner.second <= 5; });
    EXPECT_GT(usual, 380);
    EXPECT_GT(strangers, 5);
    EXPECT_GT(ownerless, 5);
    EXPECT_LT(strangers + ownerless, 120);
}

TEST(Generator, SomeVisitsAreLateAndSomeFallDueWithinWeeks) {
    const auto dueWithin = [](int days) {
        int due = 0;
        for (const Visit& visit : AllVisits(Generator(Middle(), kNone))) {
            if (visit.last && visit.months.value_or(0) != 0) {
                const basic::Date next = basic::DateAdd(u"m", *visit.months, *visit.last);
                due += next.days < Middle().today.days + days ? 1 : 0;
            }
        }
        return due;
    };
    EXPECT_GT(dueWithin(0), 40);
    EXPECT_LT(dueWithin(0), 250);
    EXPECT_GT(dueWithin(45), 200);
    EXPECT_LT(dueWithin(45), 700);
}

TEST(Generator, VisitsHaveTheOddCasesOfRealData) {
    const auto visits = AllVisits(Generator(Middle(), kNone));
    const auto count = [&visits](auto odd) { return std::count_if(visits.begin(), visits.end(), odd); };
    EXPECT_GT(count([](const Visit& visit) { return !visit.last; }), 0);
    EXPECT_GT(count([](const Visit& visit) { return !visit.months; }), 0);
    EXPECT_GT(count([](const Visit& visit) { return visit.months == 0; }), 0);
    EXPECT_GT(count([](const Visit& visit) { return visit.last == basic::DateOf(2100, 1, 1); }), 0);
}

TEST(Generator, JobsHaveTheOddCasesOfRealData) {
    const auto jobs = JobsOf(Generator(Middle(), kNone));
    const auto count = [&jobs](auto odd) { return std::count_if(jobs.begin(), jobs.end(), odd); };
    EXPECT_GT(count([](const Job& job) { return !job.registration; }), 0);
    EXPECT_GT(count([](const Job& job) { return job.registration == Text(); }), 0);
    EXPECT_GT(count([](const Job& job) { return job.registration && job.registration->ends_with(u' '); }), 0);
    EXPECT_GT(count([](const Job& job) { return job.site == Text(); }), 0);
    EXPECT_GT(count([](const Job& job) { return !job.site; }), 0);
    EXPECT_GT(count([](const Job& job) { return job.details && job.details->size() > 4096; }), 0);
    EXPECT_GT(count([](const Job& job) { return job.details == Text(); }), 0);
    EXPECT_GT(count([](const Job& job) { return !job.left; }), 0);
}

/// The sizes of a table's columns.
std::map<Text, std::size_t> SizesOf(TextView table) {
    std::map<Text, std::size_t> sizes;
    for (const jet::TableDesign& design : DataTables(Notes::With)) {
        for (const jet::Column& column : design.columns) {
            if (design.name == table) {
                sizes[column.name] = static_cast<std::size_t>(column.size);
            }
        }
    }
    return sizes;
}

TEST(Generator, CustomersFitTheirColumnsAndCanBeIndexed) {
    Scale scale = Middle();
    scale.customers = 5000;
    const Generator generator(scale, kNone);
    auto sizes = SizesOf(u"TCLI");
    for (int i = 0; i < scale.customers; ++i) {
        const Customer customer = generator.CustomerAt(i);
        EXPECT_LE(customer.code.size(), sizes[u"TCLI_CODCLI"]);
        EXPECT_LE(customer.name.size(), sizes[u"TCLI_RS"]) << basic::ToUtf8(customer.name);
        EXPECT_TRUE(jet::HasSortKey(customer.name)) << basic::ToUtf8(customer.name);
        EXPECT_LE(customer.street.size(), sizes[u"TCLI_ADRFACT1"]);
        EXPECT_LE(customer.town.size(), sizes[u"TCLI_VILLEFACT"]);
        EXPECT_LE(customer.contact.size(), sizes[u"TCLI_CONTACT1"]);
        EXPECT_EQ(customer.postcode.size(), 5U);
    }
}

TEST(Generator, VehiclesFitTheirColumns) {
    auto sizes = SizesOf(u"TVEH");
    for (const Vehicle& vehicle : VehiclesOf(Generator(Middle(), kNone))) {
        EXPECT_LE(vehicle.registration.size(), sizes[u"TVEH_IMMAT"]);
        EXPECT_LE(vehicle.make.size(), sizes[u"TVEH_MARQUE"]);
        EXPECT_LE(vehicle.model.value_or(Text()).size(), sizes[u"TVEH_ComplIdent"]);
        EXPECT_LE(vehicle.driver.value_or(Text()).size(), sizes[u"TVEH_USER10"]);
        EXPECT_LE(vehicle.note1.value_or(Text()).size(), sizes[u"TVEH_Note1"]);
        EXPECT_LE(vehicle.firstUse.days, Middle().today.days);
        EXPECT_GE(vehicle.kilometres, 0);
    }
}

TEST(Generator, RegistrationsHaveBothFormsOfFrance) {
    int old = 0;
    for (const Vehicle& vehicle : VehiclesOf(Generator(Middle(), kNone))) {
        const Text& text = vehicle.registration;
        if (text.size() == 10) {  // 1234 AB 56
            EXPECT_EQ(text[4], u' ');
            EXPECT_EQ(text[7], u' ');
            EXPECT_LT(vehicle.firstUse.days, basic::DateOf(2009, 4, 15).days);
            ++old;
        } else {  // AB-123-CD
            ASSERT_EQ(text.size(), 9U);
            EXPECT_EQ(text[2], u'-');
            EXPECT_EQ(text[6], u'-');
        }
    }
    EXPECT_EQ(old, 150);
}

TEST(Generator, ImpossibleScalesAreRefused) {
    Scale scale = Middle();
    scale.visits = 12 * scale.vehicles + 1;
    EXPECT_EQ(ErrorOf(scale), basic::error::kInvalidCall);
    scale = Middle();
    scale.customers = -1;
    EXPECT_EQ(ErrorOf(scale), basic::error::kInvalidCall);
    scale = Middle();
    scale.vehicles = 0;
    scale.visits = 0;
    EXPECT_EQ(ErrorOf(scale), 0);
    GivenRows given;
    given.vehicles.resize(1);
    EXPECT_EQ(ErrorOf(scale, given), basic::error::kInvalidCall);
}

}  // namespace
}  // namespace quardele::workshop
