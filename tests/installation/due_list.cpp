#include "due_list.h"

#include <algorithm>
#include <map>
#include <tuple>

#include <basic/date.h>

#include "generator.h"
#include "known_rows.h"
#include "scale.h"

namespace quardele::tests {

namespace {

using basic::Text;

/// Plain order of this is the data files' order of codes and registrations, where hyphens do not count.
Text OrderOf(const Text& text) {
    return basic::Replace(text, u"-", u"");
}

auto PlaceOf(const DueVisit& due) {
    std::optional<Text> customer;
    Text registration;
    if (due.vehicle) {
        customer = due.vehicle->customer;
        registration = OrderOf(due.vehicle->registration);
    }
    return std::tuple(customer, registration, due.visit.work);
}

}  // namespace

std::vector<DueVisit> DueBefore(basic::Date day) {
    const workshop::GivenRows known = KnownRows();
    const workshop::Generator generator(kScale, known);
    std::map<Text, workshop::Vehicle> vehicles;
    std::vector<workshop::Visit> visits = known.visits;
    for (int i = 0; i < generator.VehicleCount(); ++i) {
        const workshop::Vehicle vehicle = generator.VehicleAt(i);
        vehicles.emplace(vehicle.registration, vehicle);
        for (const workshop::Visit& visit : generator.VisitsOf(i)) {
            visits.push_back(visit);
        }
    }
    std::vector<DueVisit> due;
    for (const workshop::Visit& visit : visits) {
        if (!visit.last || visit.months.value_or(0) == 0) {
            continue;
        }
        const basic::Date next = basic::DateAdd(u"m", *visit.months, *visit.last);
        if (next < day) {
            const auto vehicle = vehicles.find(visit.registration);
            due.push_back(
                {next, visit, vehicle == vehicles.end() ? std::nullopt : std::optional(vehicle->second)});
        }
    }
    std::sort(due.begin(), due.end(),
              [](const DueVisit& left, const DueVisit& right) { return PlaceOf(left) < PlaceOf(right); });
    return due;
}

}  // namespace quardele::tests
