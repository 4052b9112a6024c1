// Registrations in both forms: AB-123-CD since April 2009, 1234 AB 56 before.
#pragma once

#include <cstdint>

#include <basic/text.h>
#include <basic/variant.h>

namespace quardele::workshop {

struct Registration {
    basic::Text text;
    basic::Date from;  ///< about when it was handed out
};

/// The registration of a vehicle's number: numbers below 80 million have different ones. `today` is when the
/// newest one is handed out. Provisional ones, which begin with WW, are left out.
[[nodiscard]] Registration RegistrationOf(std::int64_t number, std::uint64_t seed, basic::Date today);

}  // namespace quardele::workshop
