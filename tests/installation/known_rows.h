// Rows that tests know by heart. They stand first in their tables, before those that are made up.
#pragma once

#include <workshop/rows.h>

namespace quardele::tests {

/// Among them: an unknown customer (INCONNU) and an unknown country (XX), vehicles without customer, visits
/// without date (RG-194-NE CT) and without period (TH-496-AN EXT), one of a vehicle that is not there
/// (ZZ-999-ZZ), a marked vehicle (1466 WP 51), registrations of jobs with blanks behind them, vehicles with
/// jobs at several sites (ZZ-584-ZD has four) and at none (SA-735-YK).
[[nodiscard]] workshop::GivenRows KnownRows();

}  // namespace quardele::tests
