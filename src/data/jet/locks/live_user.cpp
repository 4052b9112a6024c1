#include "locks/live_user.h"

#include <basic/runtime_error.h>

#include "file/file_names.h"
#include "file/os_file.h"
#include "locks/lock_bytes.h"
#include "locks/lock_file.h"

namespace quardele::jet {

bool IsUserThere(const std::filesystem::path& dataFile, int user) {
    const std::filesystem::path path = LockFile::PathFor(dataFile);
    const Named lockFile = WhatHasName(path);
    if (lockFile == Named::Nothing || lockFile == Named::Unknown) {
        return lockFile == Named::Unknown;
    }
    try {
        OsFile file;
        const std::uint64_t place = lock_bytes::kUsers + static_cast<std::uint64_t>(user - 1);
        // A shared lock collides with the exclusive one of who has the place, and needs no right to write.
        return !file.Open(path, OsFile::Access::Read) ||
               file.TryLock(place, OsFile::Lock::Shared) == OsFile::LockResult::Held;
    } catch (const basic::RuntimeError& error) {
        return error.Number() != basic::error::kFileMissing;  // its last user may just have deleted it
    }
}

}  // namespace quardele::jet
