// A picture of a letter's first page, made by programs of the machine.
#pragma once

#include <filesystem>

namespace quardele::demo {

/// Converts a letter to a PNG file, by LibreOffice and pdftoppm. False when one of them is missing or fails.
bool PictureOfLetter(const std::filesystem::path& letter, const std::filesystem::path& picture);

}  // namespace quardele::demo
