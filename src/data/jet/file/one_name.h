// One name for a data file, whatever links lead to it.
#pragma once

#include <filesystem>

namespace quardele::jet {

/// The name that the journal's and the lock file's are made of: all who open a file must find the same ones,
/// also those who come through a symbolic link, from another current folder or, on Windows, by the short form
/// of the name. A path that leads to no file stays as it is. Hard links are not seen through: a data file has
/// one name.
[[nodiscard]] std::filesystem::path OneName(const std::filesystem::path& file);

}  // namespace quardele::jet
