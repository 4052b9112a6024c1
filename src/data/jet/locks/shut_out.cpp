#include "locks/shut_out.h"

#include <algorithm>
#include <utility>

#include <basic/runtime_error.h>

#include "file/file_names.h"
#include "locks/lock_bytes.h"
#include "locks/lock_file.h"
#include "locks/lock_wait.h"

namespace quardele::jet {

ShutOut::Result ShutOut::TakeAll(const std::filesystem::path& dataFile, std::vector<int> free) {
    const std::filesystem::path path = LockFile::PathFor(dataFile);
    if (path == dataFile) {
        return Result::Unavailable;
    }
    free_ = std::move(free);
    Result result = Result::Occupied;
    static_cast<void>(RetryUntil([&] {
        result = TryTakeAll(path);
        return result != Result::Occupied;
    }));
    if (all_) {
        file_.ShareLike(dataFile);
    } else {
        file_.Close();
    }
    return result;
}

// Where there is no lock file and none can be made, nobody else has one. The last user may delete the file
// between our opening and our locking it, and another one make it anew: who has a file without the name has
// shut nobody out.
ShutOut::Result ShutOut::TryTakeAll(const std::filesystem::path& path) {
    if (!OpenOrCreate(path)) {
        return WhatHasName(path) != Named::Nothing ? Result::Unavailable : Result::Alone;
    }
    switch (file_.TryLock(lock_bytes::kUsers, OsFile::Lock::Exclusive, lock_bytes::kMostUsers)) {
        case OsFile::LockResult::Taken:
            break;
        case OsFile::LockResult::Held:
            return Result::Occupied;
        case OsFile::LockResult::Unsupported:
            return Result::Unavailable;
    }
    if (!free_.empty()) {
        file_.Unlock(lock_bytes::kUsers, lock_bytes::kMostUsers);
    }
    all_ = holds_ = (free_.empty() || TakeAllBut(free_)) && IdOf(path) == file_.Id();
    return all_ ? Result::Alone : Result::Occupied;
}

bool ShutOut::OpenOrCreate(const std::filesystem::path& path) {
    try {
        return file_.OpenOrCreate(path);
    } catch (const basic::RuntimeError&) {
        return false;  // a disk that is full
    }
}

bool ShutOut::TakeOthers(const std::filesystem::path& dataFile, std::vector<int> users) {
    if (holds_) {
        return true;
    }
    if (!file_.Open(LockFile::PathFor(dataFile), OsFile::Access::ReadWrite)) {
        return false;
    }
    std::sort(users.begin(), users.end());
    holds_ = TakeAllBut(users);
    if (!holds_) {
        file_.Close();
    }
    return holds_;
}

bool ShutOut::TakeAllBut(const std::vector<int>& users) {
    int next = 1;
    for (const int user : users) {
        if (!TakeRange(next, user - 1)) {
            return false;
        }
        next = user + 1;
    }
    return TakeRange(next, static_cast<int>(lock_bytes::kMostUsers));
}

bool ShutOut::TakeRange(int first, int last) {
    first = std::max(first, 1);  // number 0 is an exclusive opener's
    return first > last ||
           file_.TryLock(lock_bytes::kUsers + static_cast<std::uint64_t>(first - 1), OsFile::Lock::Exclusive,
                         static_cast<std::uint64_t>(last - first + 1)) == OsFile::LockResult::Taken;
}

bool ShutOut::TakeFreeOnes() {
    return std::all_of(free_.begin(), free_.end(), [this](int user) { return TakeRange(user, user); });
}

void ShutOut::End() {
    if (!holds_) {
        return;
    }
    try {
        if (all_ && TakeFreeOnes() && IdOf(file_.Path()) == file_.Id()) {
            RemoveFile(file_.Path());
        }
    } catch (const basic::RuntimeError&) {
        // It stays; without locks in it, it says nothing.
    }
    file_.Close();
    holds_ = false;
    all_ = false;
}

}  // namespace quardele::jet
