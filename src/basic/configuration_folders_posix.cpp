#include <algorithm>
#include <cstdlib>
#include <string>

#include "configuration_folders.h"

namespace quardele::basic {

namespace fs = std::filesystem;

namespace {

/// What the desktop says by an environment variable, or what stands for it when it says nothing.
std::string Said(const char* name, const std::string& otherwise) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : otherwise;
}

}  // namespace

std::vector<fs::path> ConfigurationFolders() {
    std::vector<fs::path> folders;
    folders.emplace_back(Said("XDG_CONFIG_HOME", Said("HOME", "") + "/.config"));
    const std::string systems = Said("XDG_CONFIG_DIRS", "/etc/xdg");
    for (std::size_t start = 0; start <= systems.size();) {
        const std::size_t end = std::min(systems.find(':', start), systems.size());
        folders.emplace_back(systems.substr(start, end - start));
        start = end + 1;
    }
    return folders;
}

}  // namespace quardele::basic
