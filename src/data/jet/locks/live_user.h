// Who is in a lock file, as others see it.
#pragma once

#include <filesystem>

namespace quardele::jet {

/// Whether somebody holds a user's place (1 to 255) in the lock file of a data file. True when the lock file
/// is there and cannot be looked at.
[[nodiscard]] bool IsUserThere(const std::filesystem::path& dataFile, int user);

}  // namespace quardele::jet
