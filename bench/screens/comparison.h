// The benchmarks of the screens as their starter sees them: each measured piece of work is a process of its
// own.
#pragma once

#include <filesystem>

#include "report.h"

namespace quardele::bench {

/// Runs this very program (`self`) on the installation below `driveC` as often as wanted and prints what it
/// told.
class ScreenComparison {
 public:
    ScreenComparison(Report& report, std::string self, std::filesystem::path driveC, int runs)
        : report_(report), self_(std::move(self)), driveC_(std::move(driveC)), runs_(runs) {}

    /// From process start to the idle main window.
    void MeasureStart();
    /// From Enter to the painted due list.
    void MeasureDueList();
    /// The list of all vehicles: opened, scrolled to its end and back, its records looked at.
    void MeasureVehicleList();
    /// Letters per minute. Says so when the word processor or its bridge is missing.
    void MeasureLetters(int customers);

 private:
    [[nodiscard]] std::filesystem::path File(const char* name) const { return driveC_ / "QUARDELE" / name; }

    Report& report_;
    std::string self_;
    std::filesystem::path driveC_;
    int runs_;
};

}  // namespace quardele::bench
