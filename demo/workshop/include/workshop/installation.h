// Makes the installation of a workshop from nothing: every data file that the program opens, with believable
// French data at any scale.
#pragma once

#include <cstdint>
#include <filesystem>

#include <basic/variant.h>
#include <workshop/rows.h>

namespace quardele::workshop {

/// How much of everything. Given rows count with the others.
struct Scale {
    int vehicles = 1500;
    int customers = 420;
    int visits = 4500;
    int jobs = 4000;
    std::uint64_t seed = 1;
    basic::Date today;  ///< what is past and what is due; a whole day
};

/// A workshop with so many vehicles: two customers for seven of them, three visits each, eight jobs for
/// three.
[[nodiscard]] Scale ScaleFor(int vehicles, basic::Date today);

/// Most visits that a vehicle can have: one for each type of work.
inline constexpr int kMostVisits = 12;

/// Throws RuntimeError 5 when MakeInstallation would refuse the scale.
void RequirePossible(const Scale& scale, const GivenRows& given = {});

/// Makes dbpath.mdb, quardele.ini, EvolutionV95.MDB, SIGNETS.MDB, DATA, STOCK and an empty VEH in the folder,
/// which is C:\QUARDELE to the program and is made when it is missing. Equal scales and given rows make equal
/// tables. Memory does not grow with the scale. Throws RuntimeError 5 for a negative number, for customers or
/// visits that the vehicles cannot have, 3204 when one of the files exists, 75 when one that is no database
/// cannot be written, and what the data engine throws.
void MakeInstallation(const std::filesystem::path& folder, const Scale& scale, const GivenRows& given = {});

/// Makes only a data database, as it was before vehicles had notes. Throws like MakeInstallation.
void MakeFormerDataFile(const std::filesystem::path& file, const Scale& scale);

}  // namespace quardele::workshop
