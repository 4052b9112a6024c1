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

/// The whole name, with backslashes and without steps back; the library knows no names of servers.
[[nodiscard]] std::wstring WholeName(const fs::path& path) {
    const std::wstring name = fs::path(path).make_preferred().native();
    if (name.starts_with(L"\\\\")) {
        return L"\\\\" + fs::path(name.substr(2)).lexically_normal().make_preferred().native();
    }
    std::error_code failure;
    return fs::absolute(path, failure).lexically_normal().make_preferred().native();
}

}  // namespace

fs::path SystemPath(const fs::path& path) {
    if (IsSpecial(path.native())) {
        return path;
    }
    const std::wstring name = WholeName(path);
    if (name.size() < kAlwaysTaken) {
        return path;
    }
    return name.starts_with(L"\\\\") ? L"\\\\?\\UNC" + name.substr(1) : L"\\\\?\\" + name;
}

}  // namespace quardele::basic
