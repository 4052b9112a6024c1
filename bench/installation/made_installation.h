// Installations made to be measured.
#pragma once

#include <filesystem>

#include <workshop/installation.h>

namespace quardele::bench {

/// 20 November 2026: some weeks before the reference date of the measures.
inline constexpr basic::Date kToday{46346};

/// Makes an installation in `folder`, which need not exist; returns its data database. Jobs are those of the
/// scale when `jobs` is 0. Throws what workshop::MakeInstallation throws.
std::filesystem::path MadeDatabase(const std::filesystem::path& folder, int vehicles, int visits,
                                   int jobs = 0);
/// The data database of an installation.
[[nodiscard]] std::filesystem::path DatabaseOf(const std::filesystem::path& installation);

}  // namespace quardele::bench
