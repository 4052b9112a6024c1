#include <basic/configuration.h>

#include "configuration_folders.h"

namespace quardele::basic {

std::optional<std::filesystem::path> ConfigurationFile(const char* name) {
    for (const std::filesystem::path& folder : ConfigurationFolders()) {
        std::filesystem::path file = folder / "quardele" / name;
        std::error_code ignored;
        if (std::filesystem::is_regular_file(file, ignored)) {
            return file;
        }
    }
    return {};
}

}  // namespace quardele::basic
