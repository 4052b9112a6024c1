// The office's private profile: settings, and the mark by which LibreOffice tells one running office from
// another. Without one of our own we would drive the operator's running Writer.
#pragma once

#include <filesystem>

namespace quardele::word::writer {

/// The profile's folder, made and filled with the program's settings when it is new: what the environment
/// variable QUARDELE_WRITER_PROFILE says, else a folder of the user's data. An office without windows has a
/// profile of its own, so that a later session never shows its letters there. Throws RuntimeError 429 when
/// the folder cannot be written.
[[nodiscard]] std::filesystem::path PreparedProfile(bool showsWindows);

}  // namespace quardele::word::writer
