// Whether another program works on a file.
#pragma once

#include <filesystem>

namespace quardele::basic {

/// Whether another program says that it has the file open: a word processor or spreadsheet does so with a
/// ".~lock.<name>#" beside it. Always false on Windows, where replacing an open file fails by itself.
[[nodiscard]] bool IsOpenElsewhere(const std::filesystem::path& file);

}  // namespace quardele::basic
