// What differs between operating systems in a command line program.
#pragma once

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

namespace quardele::mdb {

/// A path given in UTF-8.
[[nodiscard]] std::filesystem::path PathOf(const std::string& utf8);
/// Null when the file cannot be opened.
[[nodiscard]] std::FILE* OpenForReading(const std::filesystem::path& path);
/// While it lives, the bytes of the standard streams stay as they are, and a console shows them as UTF-8.
class PlainStreams {
 public:
    PlainStreams();
    // NOLINTNEXTLINE(performance-trivially-destructible): some systems have something to give back.
    ~PlainStreams();
    PlainStreams(const PlainStreams&) = delete;
    PlainStreams& operator=(const PlainStreams&) = delete;

 private:
    unsigned consoleBefore_ = 0;  ///< the code page that the console had; 0 for none
};
[[nodiscard]] bool IsTerminal(std::FILE* stream);
/// What somebody types, up to its end, in UTF-8; nothing where the standard input gives the bytes itself, as
/// it does unless it is a console with a code page of its own. Throws Failure when it cannot be read.
[[nodiscard]] std::optional<std::string> TypedText();
/// Whether the user's system speaks French, where that is no matter of environment variables.
[[nodiscard]] bool IsSystemFrench();

}  // namespace quardele::mdb
