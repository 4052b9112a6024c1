// The rows of a made-up workshop, each by its number: nothing is kept, so that a million cost no memory.
#pragma once

#include <set>

#include "random.h"
#include "registrations.h"
#include "work.h"

#include <workshop/installation.h>
#include <workshop/rows.h>

namespace quardele::workshop {

class Generator {
 public:
    /// Keeps a reference to the given rows. Throws RuntimeError 5 for a scale that cannot be.
    Generator(const Scale& scale, const GivenRows& given);

    // Numbers begin at 0; the given rows come first.
    [[nodiscard]] int CustomerCount() const { return scale_.customers; }
    [[nodiscard]] Customer CustomerAt(int number) const;
    [[nodiscard]] int VehicleCount() const { return scale_.vehicles; }
    [[nodiscard]] Vehicle VehicleAt(int number) const;
    [[nodiscard]] int JobCount() const { return scale_.jobs; }
    [[nodiscard]] Job JobAt(int number) const;

    /// The visits of a vehicle; those given are left out, and belong to no number.
    [[nodiscard]] std::vector<Visit> VisitsOf(int vehicle) const;

 private:
    [[nodiscard]] Random NumbersOf(Purpose purpose, int number) const;
    [[nodiscard]] Registration RegistrationAt(int vehicle) const;
    [[nodiscard]] std::optional<Text> CustomerOfVehicle(int vehicle) const;
    /// How many visits all vehicles before this one have.
    [[nodiscard]] std::int64_t VisitsBefore(int vehicle) const;
    [[nodiscard]] Visit VisitFor(const Text& registration, const WorkType& work, Random& random) const;

    Scale scale_;
    const GivenRows& given_;
    int givenCustomers_;
    int givenVehicles_;
    std::int64_t visits_;  ///< to make up
    std::set<Text> taken_;
};

}  // namespace quardele::workshop
