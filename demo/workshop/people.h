// People of France and where they live.
#pragma once

#include "random.h"

#include <basic/text.h>

namespace quardele::workshop {

struct Town {
    basic::TextView name;
    basic::TextView postcode;
    int zone = 1;  ///< first digit of its telephone numbers, behind the 0
};

[[nodiscard]] basic::TextView FirstName(Random& random);
[[nodiscard]] basic::TextView FamilyName(Random& random);
[[nodiscard]] const Town& SomeTown(Random& random);
/// A house number and a street.
[[nodiscard]] basic::Text StreetAddress(Random& random);
/// A number of a telephone zone, out of those that are kept free for fiction.
[[nodiscard]] basic::Text TelephoneNumber(Random& random, int zone);
[[nodiscard]] basic::Text MobileNumber(Random& random);

}  // namespace quardele::workshop
