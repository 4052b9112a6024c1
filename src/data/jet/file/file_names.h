// What has a name in a folder, and names given and taken without a step of a change. One implementation per
// operating system: the library's functions do not take long names on Windows.
#pragma once

#include <filesystem>
#include <vector>

namespace quardele::jet {

/// A link counts as what it leads to; one that leads nowhere as a file.
enum class Named {
    Nothing,
    File,
    Folder,
    Unknown,  ///< the system does not tell, mostly for lack of rights
};
[[nodiscard]] Named WhatHasName(const std::filesystem::path& path);
/// Whether there is certainly something of that name.
[[nodiscard]] inline bool IsTaken(const std::filesystem::path& path) {
    const Named named = WhatHasName(path);
    return named == Named::File || named == Named::Folder;
}

/// The names in a folder, none when it cannot be read.
[[nodiscard]] std::vector<std::filesystem::path> NamesIn(const std::filesystem::path& folder);
/// Gives a file a second name, which nothing may have; false when that is not possible.
[[nodiscard]] bool GiveSecondName(const std::filesystem::path& file, const std::filesystem::path& name);
/// Deletes a file of ours if that is possible.
void TryRemoveFile(const std::filesystem::path& path);

}  // namespace quardele::jet
