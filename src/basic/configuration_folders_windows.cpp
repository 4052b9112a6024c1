#include <windows.h>

#include <knownfolders.h>
#include <shlobj.h>

#include "configuration_folders.h"

namespace quardele::basic {

std::vector<std::filesystem::path> ConfigurationFolders() {
    std::vector<std::filesystem::path> folders;
    for (const KNOWNFOLDERID& id : {FOLDERID_RoamingAppData, FOLDERID_ProgramData}) {
        wchar_t* path = nullptr;
        if (SUCCEEDED(::SHGetKnownFolderPath(id, 0, nullptr, &path))) {
            folders.emplace_back(path);
        }
        ::CoTaskMemFree(path);
    }
    return folders;
}

}  // namespace quardele::basic
