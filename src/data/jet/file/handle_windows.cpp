#include "file/handle_windows.h"

#include <basic/system_path.h>

namespace quardele::jet {

namespace {

[[nodiscard]] Handle Open(const std::filesystem::path& path, DWORD access, DWORD disposition, DWORD flags,
                          DWORD shared) {
    const HANDLE handle =
        ::CreateFileW(basic::SystemPath(path).c_str(), access, shared, nullptr, disposition, flags, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

}  // namespace

Handle OpenHandle(const std::filesystem::path& path, DWORD access, DWORD disposition, DWORD shared) {
    return Open(path, access, disposition, FILE_ATTRIBUTE_NORMAL, shared);
}

Handle OpenAnything(const std::filesystem::path& path, DWORD access) {
    return Open(path, access, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, kShared);
}

}  // namespace quardele::jet
