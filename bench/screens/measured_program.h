// What runs in a process of its own: the program on an installation, driven and timed, telling figures on its
// output. `driveC` is the folder that holds the installation's folder QUARDELE. Each needs a QApplication and
// throws std::runtime_error (French) when a window does not appear.
#pragma once

#include <filesystem>

namespace quardele::bench {

/// A window of one word, and none of the program: what the library alone takes. Tells "idle" (the moment).
void RunSmallWindow();

/// From process start to the idle main window. Tells "idle" (the moment) and "memory" (the peak).
void RunStart(const std::filesystem::path& driveC);

/// The due list, from Enter in the date box to the painted grid. Tells "first", "again" (the median of
/// further times), "rows" and "memory".
void RunDueList(const std::filesystem::path& driveC);

/// The list of all vehicles: "open" (from the menu to the painted list), "end" and "home" (to the last row
/// and back), "page" and "step" (one page, one row down), "record" (into a record and back to the list),
/// "refresh", "rows" and "memory".
void RunVehicleList(const std::filesystem::path& driveC);

/// Letters to `customers` customers, after a first one that starts the word processor. Tells "first" (time of
/// the first letter), "letters" and "visits" (their numbers, the first left out), "time" (of those) and
/// "memory". When no letter comes about, tells "message" (what the program said) instead.
void RunLetters(const std::filesystem::path& driveC, int customers);

}  // namespace quardele::bench
