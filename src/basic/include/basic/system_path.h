// Long names of files on Windows; other systems take them as they are.
#pragma once

#include <filesystem>

namespace quardele::basic {

/// The form in which functions of Windows (CreateFileW and its kind, _wfopen) take a path whatever its
/// length: names of 260 units and more only when they are absolute and begin with "\\?\". The library's own
/// functions (std::filesystem, _wstat) do not know this form and are for short names only. Shorter names stay
/// as they are.
[[nodiscard]] std::filesystem::path SystemPath(const std::filesystem::path& path);

}  // namespace quardele::basic
