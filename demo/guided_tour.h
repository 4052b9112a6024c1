// The guided tour: a day's work on the demonstration installation, done through the real windows.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include <QString>

#include <forms/mdi_form.h>

namespace quardele::demo {

/// The tour writes to this many customers.
inline constexpr std::size_t kLetters = 3;

/// One stage that was shown.
struct Stage {
    std::string title;              ///< French
    std::filesystem::path picture;  ///< PNG file
};

/// What the tour made.
struct TourResult {
    std::vector<Stage> stages;
    std::vector<std::filesystem::path> letters;
    std::vector<std::string> messages;  ///< texts of message boxes that came up
};

/// Takes the tour: start, vehicle list, a record, its history, its sheet, reminders, the ticks of three
/// customers, their letters, the change log. The current folder must be the module's folder of an
/// installation on `driveC`; pictures go to `pictures`. Visits are listed that fall due before `reference`,
/// typed like that.
TourResult TakeTour(forms::MdiForm& mainWindow, const std::filesystem::path& driveC,
                    const std::filesystem::path& pictures, const QString& reference);

}  // namespace quardele::demo
