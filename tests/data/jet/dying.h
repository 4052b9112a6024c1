// Processes and disks that fail at a chosen moment of a change.
#pragma once

#include <filesystem>

#include "file/write_hook.h"

namespace quardele::jet::test {

/// What a process ends with that dies of its hook.
inline constexpr int kKilled = 9;

/// Ends the process before the n-th step that changes a file; a write is torn in its middle when asked for.
[[nodiscard]] WriteHook DieAt(int number, bool torn);
/// Ends the process before it writes the n-th page of the data file.
[[nodiscard]] WriteHook DieAtPage(const std::filesystem::path& dataFile, int number);

}  // namespace quardele::jet::test
