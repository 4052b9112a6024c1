// A copy of the tests' installation that a test may change.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <basic/paths.h>
#include <basic/text.h>

namespace quardele::support {

/// Makes a fresh folder with a copy of an installation as drive_c/QUARDELE, points drive C: of the session's
/// drive table at it and makes C:\QUARDELE\VEH the current folder; all is undone and removed at the end.
class Installation {
 public:
    /// A copy of the one that the build makes.
    Installation();
    /// A copy of a folder.
    explicit Installation(const std::filesystem::path& source);
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    /// The machine's folder that is C:.
    [[nodiscard]] const std::filesystem::path& DriveC() const { return driveC_; }
    /// DriveC()/QUARDELE.
    [[nodiscard]] std::filesystem::path Root() const { return driveC_ / "QUARDELE"; }
    /// The machine's path of a file of the installation, e.g. "DATA/talmeon.mdb".
    [[nodiscard]] std::filesystem::path File(const std::string& relative) const { return Root() / relative; }

    /// Rows of a table as an independent program (mdb-export) reads them: header first; empty when that
    /// program is not installed.
    [[nodiscard]] static std::vector<std::string> ExportTable(const std::filesystem::path& file,
                                                              const std::string& table);

 private:
    std::filesystem::path driveC_;
    std::filesystem::path before_;
    basic::DriveTable drives_;
};

}  // namespace quardele::support
