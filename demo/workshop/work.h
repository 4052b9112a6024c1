// What a workshop does to vehicles: types of work, when they come again, texts of jobs.
#pragma once

#include <span>

#include "cars.h"

namespace quardele::workshop {

struct WorkType {
    TextView code;
    TextView label;
    int months = 12;  ///< between two visits
    int cars = 1;     ///< how often it is done to cars, vans and trucks, beside the others
    int vans = 1;
    int trucks = 1;
};

/// All of them, in the order in which the workshop entered them.
[[nodiscard]] std::span<const WorkType> WorkTypes();

/// So many different ones for a vehicle, those that fit its kind first.
[[nodiscard]] std::vector<const WorkType*> SomeWorkTypes(Random& random, VehicleKind kind, int count);

/// The details of a job: a few lines, now and then pages of them.
[[nodiscard]] Text SomeJobDetails(Random& random);
/// The code of a site that is open.
[[nodiscard]] TextView SomeSite(Random& random);

}  // namespace quardele::workshop
