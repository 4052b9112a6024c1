// The benchmarks of the data engine. Each prints a section; `runs` is how often a measured piece of work is
// done. They throw basic::RuntimeError when a file cannot be read.
#pragma once

#include <filesystem>

#include "report.h"

namespace quardele::bench {

/// Opening a file and reading its catalogue.
void MeasureOpening(Report& report, int runs, const std::filesystem::path& file);

/// Every cell of every table of the files in a folder (sub-folders included), as CSV text. A file that one
/// side cannot read is named and left out.
void MeasureFullRead(Report& report, int runs, const std::filesystem::path& folder);

/// The queries behind the reminders: due visits, sites of vehicles, and finding a vehicle among these. `file`
/// is the data database.
void MeasureReminders(Report& report, int runs, const std::filesystem::path& file);

}  // namespace quardele::bench
