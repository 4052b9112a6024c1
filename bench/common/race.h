// One piece of work done by us and by others, in turns, so that whatever else the machine does meets both.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "command.h"
#include "measure.h"

namespace quardele::bench {

/// Median times of both.
struct RaceTimes {
    Duration ours{};
    std::optional<Duration> theirs;  ///< empty when a program was missing or failed
};

/// A side that tells its own time; empty when it could not do its work.
using Side = std::function<std::optional<Duration>()>;

/// Both run `runs` times, at least once.
[[nodiscard]] RaceTimes RaceTimed(int runs, const std::function<Duration()>& ours, const Side& theirs);
[[nodiscard]] RaceTimes RaceTimed(int runs, const std::function<Duration()>& ours,
                                  const std::vector<Command>& theirs);
[[nodiscard]] RaceTimes Race(int runs, const std::function<void()>& ours, const std::vector<Command>& theirs);

}  // namespace quardele::bench
