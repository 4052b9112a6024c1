#include <basic/system_path.h>

#include <string>
#include <system_error>

namespace quardele::basic {

namespace fs = std::filesystem;

namespace {

/// Names of folders have to leave room for a short name in them.
constexpr std::size_t kAlwaysTaken = 240;

/// Begins with what leads out of the ordinary names.
[[nodiscard]] bool IsSpecial(const std::wstring& name) {
    return name.starts_with(L"\\\\?\\") || name.starts_with(L"\\\\.\\");
}

}  // namespace

fs::path SystemPath(const fs::path& path) {
    std::error_code failure;
    const fs::path absolute = fs::absolute(path, failure).lexically_normal().make_preferred();
    const std::wstring& name = absolute.native();
    if (failure || name.size() < kAlwaysTaken || IsSpecial(name)) {
        return path;
    }
    return name.starts_with(L"\\\\") ? L"\\\\?\\UNC" + name.substr(1) : L"\\\\?\\" + name;
}

}  // namespace quardele::basic
