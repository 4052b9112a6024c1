// The files in which an administrator, or a user for himself, sets the program up: drives.ini, engine.ini.
#pragma once

#include <filesystem>
#include <optional>

namespace quardele::basic {

/// The file of this name in the folder "quardele" of the user's configuration folder or, where he has none,
/// of the system's ones. These are the folders of the desktop conventions (~/.config, /etc/xdg) or, on
/// Windows, of the roaming application data and of the data of all users.
[[nodiscard]] std::optional<std::filesystem::path> ConfigurationFile(const char* name);

}  // namespace quardele::basic
