#include "installation.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <basic/runtime_error.h>

namespace quardele::word::writer {

namespace {

namespace fs = std::filesystem;

bool IsInstallation(const fs::path& folder) {
    std::error_code failure;
    return fs::exists(folder / "program" / "soffice.bin", failure);
}

/// The command is a link into the installation's folder "program".
std::vector<fs::path> FoldersOfTheCommand() {
    std::vector<fs::path> folders;
    const char* searched = std::getenv("PATH");
    std::istringstream parts(searched == nullptr ? "" : searched);
    for (std::string part; std::getline(parts, part, ':');) {
        std::error_code failure;
        const fs::path target = fs::canonical(fs::path(part) / "soffice", failure);
        if (!failure) {
            folders.push_back(target.parent_path().parent_path());
        }
    }
    return folders;
}

/// The official packages install into /opt, one folder for each version; the newest comes first.
std::vector<fs::path> FoldersInOpt() {
    std::vector<fs::path> folders;
    std::error_code failure;
    for (fs::directory_iterator entry("/opt", failure), end; entry != end; entry.increment(failure)) {
        if (entry->path().filename().string().starts_with("libreoffice")) {
            folders.push_back(entry->path());
        }
    }
    std::sort(folders.rbegin(), folders.rend());
    return folders;
}

bool IsSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool HasWindowSystemPart(const fs::path& installation) {
    std::error_code failure;
    for (fs::directory_iterator entry(installation / "program", failure), end; entry != end;
         entry.increment(failure)) {
        if (entry->path().filename().string().starts_with("libvclplug_")) {
            return true;
        }
    }
    return false;
}

}  // namespace

fs::path InstallationFolder() {
    std::vector<fs::path> candidates;
    if (const char* told = std::getenv("QUARDELE_LIBREOFFICE")) {
        candidates = {told};
    } else {
        candidates = {"/usr/lib/libreoffice", "/usr/lib64/libreoffice"};
        for (const auto& more : {FoldersOfTheCommand(), FoldersInOpt()}) {
            candidates.insert(candidates.end(), more.begin(), more.end());
        }
    }
    const auto found = std::find_if(candidates.begin(), candidates.end(), IsInstallation);
    if (found == candidates.end()) {
        throw basic::RuntimeError(
            basic::error::kCannotCreateObject,
            basic::DescriptionOf(basic::error::kCannotCreateObject) + u" : LibreOffice n'est pas installé");
    }
    return *found;
}

bool CanShowWindows(const fs::path& installation) {
    const char* headless = std::getenv("QUARDELE_WRITER_HEADLESS");
    if (headless != nullptr && std::string_view(headless) == "1") {
        return false;
    }
    return (IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY")) && HasWindowSystemPart(installation);
}

}  // namespace quardele::word::writer
