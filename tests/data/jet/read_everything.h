// Reads all that a file holds in all ways there are; for files that may say anything.
#pragma once

#include <filesystem>

namespace quardele::jet::test {

/// Scans every table, decodes every value, walks every index in both directions and seeks in it. Nothing but
/// RuntimeErrors is caught; after one it goes on with the next thing.
void ReadEverything(const std::filesystem::path& file);

}  // namespace quardele::jet::test
