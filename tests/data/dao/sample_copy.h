// A copy of the tests' installation that a test may change.
#pragma once

#include <filesystem>
#include <string>

#include <basic/paths.h>

namespace quardele::dao {

/// While it lives, C:\QUARDELE is a fresh copy of the installation that the build makes; then it is removed
/// and drives are what they were.
class SampleCopy {
 public:
    SampleCopy();
    ~SampleCopy();
    SampleCopy(const SampleCopy&) = delete;
    SampleCopy& operator=(const SampleCopy&) = delete;

    /// The machine's folder that is C:.
    [[nodiscard]] const std::filesystem::path& DriveC() const { return driveC_; }
    /// The machine's path of a file or folder of the installation, e.g. "DATA/talmeon.mdb".
    [[nodiscard]] std::filesystem::path File(const std::string& relative) const {
        return driveC_ / "QUARDELE" / relative;
    }

 private:
    std::filesystem::path driveC_;
    basic::DriveTable drivesBefore_;
};

}  // namespace quardele::dao
