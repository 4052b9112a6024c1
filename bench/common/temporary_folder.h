// A folder that is removed with all it holds.
#pragma once

#include <filesystem>

namespace quardele::bench {

class TemporaryFolder {
 public:
    /// Throws std::filesystem::filesystem_error when none can be made.
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
    std::filesystem::path path_;
};

}  // namespace quardele::bench
