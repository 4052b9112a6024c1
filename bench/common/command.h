// Other programs, run for comparison.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "measure.h"

namespace quardele::bench {

/// A program, by name in PATH or by path, and its arguments.
using Command = std::vector<std::string>;

/// Runs a program to its end. What it writes to its output comes through a pipe, piece by piece, to `take`,
/// and is thrown away without one. True when it could be run and was content (exit code 0).
bool Run(const Command& command, const std::function<void(std::string_view)>& take = {});

/// Runs the programs one after the other and returns the time of all; empty when one of them is missing or
/// fails.
[[nodiscard]] std::optional<Duration> TimeOfCommands(const std::vector<Command>& commands);

/// The largest resident memory of a program, in bytes, as it was when the last of its output came; empty when
/// it could not be run, failed, or wrote nothing.
[[nodiscard]] std::optional<std::uint64_t> PeakMemoryOf(const Command& command);

/// The commands that dump these tables (UTF-8 names) of a file with mdb-export, in the form that `mdb dump`
/// has: binary data in hexadecimal, dates with four-digit years.
[[nodiscard]] std::vector<Command> ExportTables(const std::filesystem::path& file,
                                                const std::vector<std::string>& tables);

}  // namespace quardele::bench
