#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>

#include <basic/paths.h>

#include "native_paths.h"

namespace quardele::basic {
namespace {

namespace fs = std::filesystem;

constexpr char kSubFolder[] = "quardele";
constexpr char kFileName[] = "drives.ini";
constexpr char kDriveFolder[] = "drive_c";

/// An environment variable, or what stands for it when it is not set.
std::string Setting(const char* name, const std::string& otherwise) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : otherwise;
}

/// The user's configuration folder first, then the system's ones.
std::vector<fs::path> ConfigurationFolders() {
    std::vector<fs::path> folders;
    folders.emplace_back(Setting("XDG_CONFIG_HOME", Setting("HOME", "") + "/.config"));
    const std::string systems = Setting("XDG_CONFIG_DIRS", "/etc/xdg");
    for (std::size_t start = 0; start <= systems.size();) {
        const std::size_t end = std::min(systems.find(':', start), systems.size());
        folders.emplace_back(systems.substr(start, end - start));
        start = end + 1;
    }
    return folders;
}

std::optional<fs::path> ConfiguredFile() {
    for (const fs::path& folder : ConfigurationFolders()) {
        fs::path file = folder / kSubFolder / kFileName;
        std::error_code ignored;
        if (fs::is_regular_file(file, ignored)) {
            return file;
        }
    }
    return {};
}

DriveTable TableWithRoot() {
    DriveTable table;
    table.Set(u'Z', "/");
    return table;
}

char16_t LetterOf(char16_t letter) {
    return UCase(TextView(&letter, 1)).front();
}

bool IsDriveLetter(char16_t letter) {
    return letter >= u'A' && letter <= u'Z';
}

/// Takes "X=folder" into the table; passes over any other line.
void ReadLine(DriveTable& table, const Text& line, const fs::path& base) {
    const std::size_t equals = line.find(u'=');
    if (equals == Text::npos) {
        return;
    }
    const Text letter = UCase(Trim(line.substr(0, equals)));
    const Text folder = Trim(line.substr(equals + 1));
    if (letter.size() == 1 && IsDriveLetter(letter.front()) && !folder.empty()) {
        table.Set(letter.front(), (base / PathOf(folder)).lexically_normal());
    }
}

}  // namespace

DriveTable& DriveTable::Session() {
    static DriveTable session = [] {
        std::error_code ignored;
        return Discover(fs::current_path(ignored));
    }();
    return session;
}

DriveTable DriveTable::FromFile(const fs::path& file) {
    DriveTable table = TableWithRoot();
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        while (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        ReadLine(table, FromUtf8(line), file.parent_path());
    }
    return table;
}

DriveTable DriveTable::Discover(const fs::path& currentFolder) {
    if (const auto file = ConfiguredFile()) {
        return FromFile(*file);
    }
    DriveTable table = TableWithRoot();
    for (fs::path folder = currentFolder; folder.has_relative_path(); folder = folder.parent_path()) {
        if (folder.filename() == kDriveFolder) {
            table.Set(u'C', folder);
            break;
        }
    }
    return table;
}

void DriveTable::Set(char16_t letter, fs::path folder) {
    drives_[LetterOf(letter)] = std::move(folder);
}

std::optional<fs::path> DriveTable::FolderOf(char16_t letter) const {
    const auto found = drives_.find(LetterOf(letter));
    return found == drives_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace quardele::basic
