// What differs between Windows and other machines; one source file for each of them.
#pragma once

#include <filesystem>

#include <basic/text.h>

namespace quardele::basic {

/// A path as text and back. Never throw; what is ill-formed in either gets U+FFFD.
[[nodiscard]] Text TextOf(const std::filesystem::path& path);
[[nodiscard]] std::filesystem::path PathOf(TextView text);

/// Raises the error that a file that is there and should go gives beforehand: 70 or 75.
void RequireDeletable(const std::filesystem::path& file);

}  // namespace quardele::basic
