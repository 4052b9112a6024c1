// Handles of open files.
#pragma once

#include <windows.h>

#include <filesystem>
#include <memory>

namespace quardele::jet {

struct HandleCloser {
    void operator()(void* handle) const { ::CloseHandle(handle); }
};
/// Null stands for none.
using Handle = std::unique_ptr<void, HandleCloser>;

inline constexpr DWORD kSharedForReading = FILE_SHARE_READ | FILE_SHARE_DELETE;
inline constexpr DWORD kShared = kSharedForReading | FILE_SHARE_WRITE;

/// Unless it says otherwise, everybody may read, write, rename and delete the file meanwhile, as on other
/// systems. Null when it cannot be opened: the last error tells why.
[[nodiscard]] Handle OpenHandle(const std::filesystem::path& path, DWORD access, DWORD disposition,
                                DWORD shared = kShared);
/// A file or a folder that is there. Who asks for no access (0) learns what it is and is in nobody's way.
[[nodiscard]] Handle OpenAnything(const std::filesystem::path& path, DWORD access);

}  // namespace quardele::jet
