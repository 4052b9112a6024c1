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

/// `ours` returns its own time; both run `runs` times, at least once.
[[nodiscard]] RaceTimes RaceTimed(int runs, const std::function<Duration()>& ours,
                                  const std::vector<Command>& theirs);
[[nodiscard]] RaceTimes Race(int runs, const std::function<void()>& ours, const std::vector<Command>& theirs);

}  // namespace quardele::bench
