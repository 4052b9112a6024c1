#include <windows.h>

#include "foreign_lock.h"

namespace quardele::jet::test {

bool LockByte(const std::filesystem::path& file, std::uint64_t byte) {
    const HANDLE handle =
        ::CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(byte & 0xFFFFFFFF);
    place.OffsetHigh = static_cast<DWORD>(byte >> 32);
    return handle != INVALID_HANDLE_VALUE &&
           ::LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0;
}

}  // namespace quardele::jet::test
