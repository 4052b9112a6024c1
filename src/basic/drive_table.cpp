#include <fstream>
#include <string>
#include <utility>

#include <basic/configuration.h>
#include <basic/paths.h>

#include "native_paths.h"

namespace quardele::basic {
namespace {

namespace fs = std::filesystem;

constexpr char kFileName[] = "drives.ini";
constexpr char kDriveFolder[] = "drive_c";

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
    if (const auto file = ConfigurationFile(kFileName)) {
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
