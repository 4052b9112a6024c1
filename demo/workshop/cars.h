// Makes and models, and what goes with a vehicle.
#pragma once

#include "random.h"

#include <basic/variant.h>
#include <workshop/rows.h>

namespace quardele::workshop {

/// What a vehicle is decides what is done to it.
enum class VehicleKind { Car, Van, Truck };

struct Model {
    TextView make;
    TextView name;
    VehicleKind kind = VehicleKind::Car;
    int power = 5;  ///< in fiscal horsepower
};

[[nodiscard]] const Model& SomeModel(Random& random);
[[nodiscard]] TextView SomeEnergy(Random& random, VehicleKind kind);
[[nodiscard]] TextView SomeColour(Random& random, VehicleKind kind);
/// A chassis number of 17 characters.
[[nodiscard]] Text SomeSerialNumber(Random& random);
/// What a vehicle of that age has run, in kilometres.
[[nodiscard]] int SomeKilometres(Random& random, VehicleKind kind, double years);
[[nodiscard]] TextView SomeNote(Random& random);

}  // namespace quardele::workshop
