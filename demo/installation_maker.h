// The demonstration installation: what a workshop has on its network folder.
#pragma once

#include <filesystem>

#include <workshop/installation.h>

namespace quardele::demo {

/// Makes a fresh installation in `folder`/drive_c/QUARDELE: the databases, the letter templates, the module's
/// own empty folder VEH. A former demonstration there is removed; anything else is left alone. Returns
/// `folder`/drive_c. Throws std::filesystem::filesystem_error, std::runtime_error (French text) when a file
/// cannot be written or the folder holds something else, or what workshop::MakeInstallation throws.
std::filesystem::path MakeInstallation(const std::filesystem::path& folder, const workshop::Scale& scale);

}  // namespace quardele::demo
