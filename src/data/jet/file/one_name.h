// One name for a data file, whatever links lead to it.
#pragma once

#include <filesystem>

namespace quardele::jet {

/// The name that the journal's and the lock file's are made of: all who open a file must find the same ones,
/// also those who come through a symbolic link or from another current folder. A path that leads to no file
/// stays as it is. Hard links are not seen through: a data file has one name.
[[nodiscard]] inline std::filesystem::path OneName(const std::filesystem::path& file) {
    std::error_code failure;
    std::filesystem::path name = std::filesystem::canonical(file, failure);
    return failure ? file : name;
}

}  // namespace quardele::jet
