// A copy of the tests' installation that a test may change.
#pragma once

#include <filesystem>
#include <string>

#include <basic/paths.h>

#include "../jet/support.h"

namespace quardele::dao {

/// While it lives, there is a fresh copy of the installation that the build makes. Where Windows paths are
/// foreign it is C:\QUARDELE; on Windows it lies wherever temporary files do. Then it is removed and drives
/// are what they were.
class SampleCopy {
 public:
    SampleCopy();
    ~SampleCopy();
    SampleCopy(const SampleCopy&) = delete;
    SampleCopy& operator=(const SampleCopy&) = delete;

    /// The machine's folder in which the installation is.
    [[nodiscard]] const std::filesystem::path& Drive() const { return drive_.Path(); }
    /// The machine's path of a file or folder of the installation, e.g. "DATA/talmeon.mdb".
    [[nodiscard]] std::filesystem::path File(const std::string& relative) const {
        return Drive() / "QUARDELE" / relative;
    }
    /// The same as the program knows it.
    [[nodiscard]] basic::Text WindowsFile(const std::string& relative) const {
        return basic::WindowsPath(File(relative));
    }

 private:
    jet::test::TempFolder drive_;
    basic::DriveTable drivesBefore_;
};

}  // namespace quardele::dao
