// The benchmarks of the data engine on large tables. Each prints a section; `file` is the data database. They
// throw basic::RuntimeError or std::runtime_error when a side cannot do its work.
#pragma once

#include <filesystem>

#include "report.h"

namespace quardele::bench {

/// What opening reads, and how long it takes.
void MeasureLargeOpening(Report& report, int runs, const std::filesystem::path& file);

/// The vehicles and the visits as text, beside mdb-export and mdb-reader; and the memory that it takes.
void MeasureLargeDump(Report& report, int runs, const std::filesystem::path& file);

/// Vehicles found by their registrations, beside SQLite.
void MeasureSeeks(Report& report, int runs, const std::filesystem::path& file);

/// Rows added in one step and one by one, and changed one by one, beside SQLite.
void MeasureChanges(Report& report, int runs, const std::filesystem::path& file);

}  // namespace quardele::bench
