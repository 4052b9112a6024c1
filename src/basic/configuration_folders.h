// Where configuration files lie; one source file for each kind of system.
#pragma once

#include <filesystem>
#include <vector>

namespace quardele::basic {

/// The user's configuration folder first, then the system's ones. Some may not exist.
[[nodiscard]] std::vector<std::filesystem::path> ConfigurationFolders();

}  // namespace quardele::basic
