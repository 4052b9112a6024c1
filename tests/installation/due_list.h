// The list of visits that fall due, computed from the rows that the installation is made of: neither the data
// engine nor its SQL takes part.
#pragma once

#include <optional>
#include <vector>

#include <basic/variant.h>
#include <workshop/rows.h>

namespace quardele::tests {

struct DueVisit {
    basic::Date due;
    workshop::Visit visit;
    std::optional<workshop::Vehicle> vehicle;  ///< missing when there is none of the registration
};

/// The visits of the tests' installation that fall due before a day, by customer (none first), registration
/// and type of work.
[[nodiscard]] std::vector<DueVisit> DueBefore(basic::Date day);

}  // namespace quardele::tests
