#include "measure.h"

#include <unistd.h>
#include <algorithm>
#include <fstream>
#include <string>

namespace quardele::bench {

namespace {

/// The number behind a name in one of the system's files about a process.
std::optional<std::uint64_t> FigureOfProcess(const std::string& file, const std::string& name) {
    std::ifstream lines(file);
    for (std::string word; lines >> word;) {
        if (std::uint64_t value = 0; word == name && lines >> value) {
            return value;
        }
    }
    return {};
}

}  // namespace

Duration Median(std::vector<Duration> durations) {
    std::sort(durations.begin(), durations.end());
    const std::size_t middle = durations.size() / 2;
    return durations.size() % 2 == 1 ? durations[middle] : (durations[middle - 1] + durations[middle]) / 2;
}

Duration TimeOf(const std::function<void()>& work) {
    const Clock::time_point start = Clock::now();
    work();
    return Clock::now() - start;
}

std::uint64_t PeakMemory() {
    return PeakMemory(getpid());
}

std::uint64_t PeakMemory(int process) {
    constexpr std::uint64_t kKibibyte = 1024;
    return FigureOfProcess("/proc/" + std::to_string(process) + "/status", "VmHWM:").value_or(0) * kKibibyte;
}

std::optional<std::uint64_t> BytesRead() {
    return FigureOfProcess("/proc/self/io", "rchar:");
}

}  // namespace quardele::bench
