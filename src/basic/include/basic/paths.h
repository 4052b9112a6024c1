// The Windows view of files. The program knows Windows paths only ("C:\QUARDELE\VEH"), because paths are
// stored in the shared databases; this header maps them to the machine's files. On Windows they stand as
// they are; elsewhere a drive table says where each drive lies, and look-ups ignore case.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <vector>

#include <basic/text.h>

namespace quardele::basic {

/// Where the drives lie on this machine. Not used on Windows.
class DriveTable {
 public:
    /// The session's table: drives.ini ("C=/srv/quardele") in the user's or the system's configuration
    /// folder; without one, the nearest parent folder named "drive_c" above the current folder is C:. Z: is
    /// always "/" unless the file says otherwise.
    static DriveTable& Session();
    /// Reads a drives.ini; lines other than "X=folder" are passed over. A relative folder starts at the
    /// file's own.
    static DriveTable FromFile(const std::filesystem::path& file);
    /// The table that Session() starts with, for the given current folder.
    static DriveTable Discover(const std::filesystem::path& currentFolder);

    void Set(char16_t letter, std::filesystem::path folder);
    [[nodiscard]] std::optional<std::filesystem::path> FolderOf(char16_t letter) const;
    /// Drive letters with their folders, in order of letters.
    [[nodiscard]] const std::map<char16_t, std::filesystem::path>& Drives() const { return drives_; }

 private:
    std::map<char16_t, std::filesystem::path> drives_;
};

/// The machine's path of a Windows path. Each existing component is found without regard to case; what does
/// not exist keeps its spelling. Doubled backslashes count as one. A relative path starts at CurDir().
/// "/" separates folders as the backslash does, as on Windows: a name made from a code such as "A/B" leads
/// into a folder "A", and opening it fails where there is none, on every machine alike. Throws RuntimeError
/// 76 for a drive that the table lacks.
[[nodiscard]] std::filesystem::path NativePath(TextView windowsPath);
/// The Windows path of a file of this machine, by the longest matching drive; Z: when none matches.
[[nodiscard]] Text WindowsPath(const std::filesystem::path& nativePath);

/// The current folder as a Windows path, without a trailing backslash unless it is a drive's root.
[[nodiscard]] Text CurDir();
/// Changes the current folder; throws RuntimeError 76 when it does not exist.
void ChDir(TextView windowsPath);

/// The names (without folder) of the files that match a path with wildcards * and ? in its last component,
/// in the order of the directory, folders left out, case ignored. A pattern with an extension of three
/// characters matches that extension only; a pattern that ends in a separator stands for all files. An empty
/// list when nothing matches, the folder included.
[[nodiscard]] std::vector<Text> DirAll(TextView pattern);
/// The first of them, or the empty text.
[[nodiscard]] Text Dir(TextView pattern);

/// Deletes a file. Throws RuntimeError 53 when there is none, 70 when the file may not be deleted or is
/// open in another program that says so (a word processor's ".~lock.<name>#" beside it), 75 when its folder
/// may not be changed, 76 for a drive that the table lacks.
void Kill(TextView windowsPath);

}  // namespace quardele::basic
