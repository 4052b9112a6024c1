// What differs between operating systems in a command line program.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

namespace quardele::mdb {

/// A path given in UTF-8.
[[nodiscard]] std::filesystem::path PathOf(const std::string& utf8);
/// Null when the file cannot be opened.
[[nodiscard]] std::FILE* OpenForReading(const std::filesystem::path& path);
/// Leaves the bytes of the standard streams as they are.
void UseBinaryStreams();
[[nodiscard]] bool IsTerminal(std::FILE* stream);
/// Whether the user's system speaks French, where that is no matter of environment variables.
[[nodiscard]] bool IsSystemFrench();

}  // namespace quardele::mdb
