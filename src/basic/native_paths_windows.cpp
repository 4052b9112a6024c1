// On Windows the program's paths are the machine's; only their kind of text differs.

#include <basic/open_elsewhere.h>
#include <basic/paths.h>
#include <basic/runtime_error.h>

#include "native_paths.h"

namespace quardele::basic {

namespace fs = std::filesystem;

Text TextOf(const fs::path& path) {
    const std::wstring& native = path.native();
    return {native.begin(), native.end()};
}

fs::path PathOf(TextView text) {
    return std::wstring(text.begin(), text.end());
}

fs::path NativePath(TextView windowsPath) {
    std::error_code failed;
    fs::path path = fs::absolute(PathOf(windowsPath), failed).lexically_normal();
    if (failed) {
        throw RuntimeError(error::kPathNotFound, Describe(error::kPathNotFound, windowsPath));
    }
    return path;
}

Text WindowsPath(const fs::path& nativePath) {
    std::error_code ignored;
    return TextOf(fs::absolute(nativePath, ignored).lexically_normal().make_preferred());
}

bool IsOpenElsewhere(const fs::path& /*file*/) {
    return false;
}

void RequireDeletable(const fs::path& file) {
    std::error_code ignored;
    const auto permissions = fs::status(file, ignored).permissions();
    if ((permissions & fs::perms::owner_write) == fs::perms::none) {
        throw RuntimeError(error::kPathFileAccess);
    }
}

}  // namespace quardele::basic
