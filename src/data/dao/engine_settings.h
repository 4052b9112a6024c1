// What an administrator has chosen for the data files.
#pragma once

#include <filesystem>

namespace quardele::dao {

/// The settings of engine.ini in the configuration folder; those that it does not name have their defaults.
struct EngineSettings {
    /// "OUVERTURE=EXCLUSIVE": the program opens its data files for itself alone. The safe choice where
    /// programs with the original engine use the same files at other times.
    bool alone = false;

    /// Reads such a file: lines KEY=value, without regard to case or to blanks around the parts. Other lines
    /// are passed over; of several the last one counts.
    [[nodiscard]] static EngineSettings FromFile(const std::filesystem::path& file);
    /// Those of this session, read at first use.
    [[nodiscard]] static EngineSettings& Session();
};

}  // namespace quardele::dao
