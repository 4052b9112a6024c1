// Times and memory of this process.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace quardele::bench {

using Clock = std::chrono::steady_clock;
/// Real time, in microseconds.
using Duration = std::chrono::duration<double, std::micro>;

/// The middle one of an odd number of values, the mean of the two middle ones of an even number; at least
/// one.
[[nodiscard]] Duration Median(std::vector<Duration> durations);
[[nodiscard]] Duration TimeOf(const std::function<void()>& work);

/// Largest resident memory of this process so far, in bytes; 0 where the system does not tell.
///
/// Not getrusage's figure: a process started from a large one inherits the other's peak there.
[[nodiscard]] std::uint64_t PeakMemory();
/// The same of another process that runs.
[[nodiscard]] std::uint64_t PeakMemory(int process);
/// Bytes that this process has asked the system to read, whether or not they came from its cache; empty where
/// the system does not tell.
[[nodiscard]] std::optional<std::uint64_t> BytesRead();

}  // namespace quardele::bench
