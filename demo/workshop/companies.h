// Customers of a workshop: firms, public bodies, private people.
#pragma once

#include "random.h"

#include <workshop/rows.h>

namespace quardele::workshop {

/// The customer of a number; the number keeps its code apart from all others.
[[nodiscard]] Customer CustomerOf(int number, Random random);
/// Only its code.
[[nodiscard]] Text CustomerCodeOf(int number, Random random);

}  // namespace quardele::workshop
