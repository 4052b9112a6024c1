#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <array>
#include <utility>

#include <basic/runtime_error.h>
#include <basic/system_path.h>

#include "file/handle_windows.h"
#include "file/os_file.h"
#include "file/write_hook.h"
#include "locks/lock_wait.h"

namespace quardele::jet {

namespace {

namespace fs = std::filesystem;
using basic::SystemPath;

// As the system names it; not all headers do.
constexpr DWORD kDiskQuotaExceeded = 1295;

[[noreturn]] void ThrowFor(DWORD systemError) {
    switch (systemError) {
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
        case kDiskQuotaExceeded:
        case ERROR_FILE_TOO_LARGE:
            throw basic::RuntimeError(basic::error::kDiskFullDatabase);
        case ERROR_WRITE_PROTECT:
        case ERROR_ACCESS_DENIED:
            throw basic::RuntimeError(basic::error::kReadOnly);
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
            throw basic::RuntimeError(basic::error::kFileInUse);
        default:
            throw basic::RuntimeError(basic::error::kDeviceIo);
    }
}

[[nodiscard]] bool IsMissing(DWORD systemError) {
    return systemError == ERROR_FILE_NOT_FOUND || systemError == ERROR_PATH_NOT_FOUND;
}

// A deleted file keeps its name until everybody has closed it, and nobody can open or make it meanwhile: the
// system then says that access is denied, even to one who asks for none.
[[nodiscard]] bool IsOnItsWayOut(const fs::path& path) {
    return OpenAnything(path, 0) == nullptr && ::GetLastError() == ERROR_ACCESS_DENIED;
}

// Tries again while what is in the way may go away by itself: a deleted name, or a virus scanner that has the
// file for a moment and lets nobody else to it. Gives the error that was left, or ERROR_SUCCESS.
template <class Attempt>
[[nodiscard]] DWORD Insist(const fs::path& path, const Attempt& attempt) {
    DWORD failure = ERROR_SUCCESS;
    const auto fails = [&](DWORD how) {
        failure = attempt() ? ERROR_SUCCESS : ::GetLastError();
        return failure == how;
    };
    static_cast<void>(RetryUntil([&] {
        if (fails(ERROR_ACCESS_DENIED) && !IsOnItsWayOut(path)) {
            return !fails(ERROR_SHARING_VIOLATION);  // the name may have gone just now
        }
        return failure != ERROR_ACCESS_DENIED && failure != ERROR_SHARING_VIOLATION;
    }));
    return failure;
}

// The runtime keeps system handles under small numbers, of which there are not many; -1 stands for none.
[[nodiscard]] int Keep(Handle handle) {
    if (handle == nullptr) {
        return -1;
    }
    const int number = ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle.get()), _O_BINARY);
    if (number < 0) {
        handle.reset();
        ::SetLastError(ERROR_TOO_MANY_OPEN_FILES);
    } else {
        static_cast<void>(handle.release());
    }
    return number;
}

[[nodiscard]] HANDLE Kept(int number) {
    return reinterpret_cast<HANDLE>(::_get_osfhandle(number));
}

[[nodiscard]] OVERLAPPED At(std::uint64_t offset) {
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(offset & 0xFFFFFFFF);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

[[nodiscard]] DWORD PartOf(std::size_t bytes) {
    constexpr std::size_t kAtOnce = std::size_t{1} << 20;
    return static_cast<DWORD>(std::min(bytes, kAtOnce));
}

[[nodiscard]] DWORD Low(std::uint64_t length) {
    return static_cast<DWORD>(length & 0xFFFFFFFF);
}
[[nodiscard]] DWORD High(std::uint64_t length) {
    return static_cast<DWORD>(length >> 32);
}

[[nodiscard]] std::uint64_t Joined(DWORD high, DWORD low) {
    return std::uint64_t{high} << 32 | low;
}

[[nodiscard]] BY_HANDLE_FILE_INFORMATION StatusOf(HANDLE handle) {
    BY_HANDLE_FILE_INFORMATION status = {};
    if (::GetFileInformationByHandle(handle, &status) == 0) {
        ThrowFor(::GetLastError());
    }
    return status;
}

[[nodiscard]] FileId IdFrom(const BY_HANDLE_FILE_INFORMATION& status) {
    return {.volume = status.dwVolumeSerialNumber,
            .number = Joined(status.nFileIndexHigh, status.nFileIndexLow)};
}

// The system records when a file was written to at its own pace; others look at it to see changes.
void Stamp(HANDLE handle) {
    FILETIME now = {};
    ::GetSystemTimePreciseAsFileTime(&now);
    ::SetFileTime(handle, nullptr, nullptr, &now);
}

}  // namespace

OsFile::~OsFile() {
    Close();
}

OsFile::OsFile(OsFile&& other) noexcept
    : path_(std::move(other.path_)), handle_(std::exchange(other.handle_, -1)) {}

OsFile& OsFile::operator=(OsFile&& other) noexcept {
    std::swap(path_, other.path_);
    std::swap(handle_, other.handle_);
    return *this;
}

bool OsFile::Open(const fs::path& path, Access access) {
    Close();
    path_ = path;
    const DWORD rights = access == Access::Read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
    const DWORD shared = access == Access::ReadWriteAlone ? kSharedForReading : kShared;
    handle_ = Keep(OpenHandle(path, rights, OPEN_EXISTING, shared));
    if (handle_ >= 0) {
        return true;
    }
    const DWORD failure = ::GetLastError();
    if (IsMissing(failure) || (failure == ERROR_ACCESS_DENIED && IsOnItsWayOut(path))) {
        throw basic::RuntimeError(basic::error::kFileMissing,
                                  basic::Describe(basic::error::kFileMissing, PathText(path)));
    }
    if (failure == ERROR_SHARING_VIOLATION) {
        throw basic::RuntimeError(basic::error::kFileInUse,
                                  basic::Describe(basic::error::kFileInUse, PathText(path)));
    }
    return false;
}

bool OsFile::OpenOrCreate(const fs::path& path) {
    Close();
    path_ = path;
    const auto open = [&](DWORD disposition) {
        return Insist(path, [&] {
            handle_ = Keep(OpenHandle(path, GENERIC_READ | GENERIC_WRITE, disposition));
            return handle_ >= 0;
        });
    };
    if (open(OPEN_EXISTING) == ERROR_FILE_NOT_FOUND) {
        BeforeWriting({.step = WritePoint::Create, .path = path, .bytes = {}});
        static_cast<void>(open(OPEN_ALWAYS));
    }
    return handle_ >= 0;
}

void OsFile::Create(const fs::path& path) {
    BeforeWriting({.step = WritePoint::Create, .path = path, .bytes = {}});
    Close();
    path_ = path;
    const DWORD failure = Insist(path, [&] {
        handle_ = Keep(OpenHandle(path, GENERIC_READ | GENERIC_WRITE, CREATE_ALWAYS));
        return handle_ >= 0;
    });
    if (failure != ERROR_SUCCESS) {
        ThrowFor(failure);
    }
}

void OsFile::Close() {
    if (handle_ >= 0) {
        ::_close(handle_);
        handle_ = -1;
    }
}

// A new file has inherited the rights that its folder gives.
void OsFile::ShareLike(const fs::path& /*model*/) {}

std::uint64_t OsFile::Size() const {
    LARGE_INTEGER size = {};
    if (::GetFileSizeEx(Kept(handle_), &size) == 0) {
        ThrowFor(::GetLastError());
    }
    return static_cast<std::uint64_t>(size.QuadPart);
}

FileId OsFile::Id() const {
    return IdFrom(StatusOf(Kept(handle_)));
}

FileStamp OsFile::Stamp() const {
    const BY_HANDLE_FILE_INFORMATION status = StatusOf(Kept(handle_));
    const FILETIME& modified = status.ftLastWriteTime;
    return {.size = Joined(status.nFileSizeHigh, status.nFileSizeLow),
            .modified = static_cast<std::int64_t>(Joined(modified.dwHighDateTime, modified.dwLowDateTime))};
}

std::size_t OsFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const {
    std::size_t done = 0;
    while (done < bytes.size()) {
        OVERLAPPED place = At(offset + done);
        DWORD count = 0;
        if (::ReadFile(Kept(handle_), bytes.data() + done, PartOf(bytes.size() - done), &count, &place) ==
                0 &&
            ::GetLastError() != ERROR_HANDLE_EOF) {
            ThrowFor(::GetLastError());
        }
        if (count == 0) {
            break;
        }
        done += count;
    }
    return done;
}

void OsFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
    BeforeWriting({.step = WritePoint::Write, .path = path_, .offset = offset, .bytes = bytes});
    std::size_t done = 0;
    while (done < bytes.size()) {
        OVERLAPPED place = At(offset + done);
        DWORD count = 0;
        if (::WriteFile(Kept(handle_), bytes.data() + done, PartOf(bytes.size() - done), &count, &place) ==
            0) {
            ThrowFor(::GetLastError());
        }
        if (count == 0) {
            ThrowFor(ERROR_DISK_FULL);
        }
        done += count;
    }
}

void OsFile::Resize(std::uint64_t size) {
    BeforeWriting({.step = WritePoint::Resize, .path = path_, .offset = size, .bytes = {}});
    FILE_END_OF_FILE_INFO end = {};
    end.EndOfFile.QuadPart = static_cast<LONGLONG>(size);
    if (::SetFileInformationByHandle(Kept(handle_), FileEndOfFileInfo, &end, sizeof(end)) == 0) {
        ThrowFor(::GetLastError());
    }
}

void OsFile::Sync() {
    BeforeWriting({.step = WritePoint::Sync, .path = path_, .bytes = {}});
    jet::Stamp(Kept(handle_));
    if (::FlushFileBuffers(Kept(handle_)) == 0) {
        ThrowFor(::GetLastError());
    }
}

// There is no cheaper way here.
void OsFile::SyncData() {
    Sync();
}

OsFile::LockResult OsFile::TryLock(std::uint64_t byte, Lock kind, std::uint64_t length) {
    OVERLAPPED place = At(byte);
    const DWORD flags =
        LOCKFILE_FAIL_IMMEDIATELY | (kind == Lock::Exclusive ? DWORD{LOCKFILE_EXCLUSIVE_LOCK} : 0);
    if (::LockFileEx(Kept(handle_), flags, 0, Low(length), High(length), &place) != 0) {
        return LockResult::Taken;
    }
    const DWORD failure = ::GetLastError();
    return failure == ERROR_LOCK_VIOLATION || failure == ERROR_IO_PENDING ? LockResult::Held
                                                                          : LockResult::Unsupported;
}

void OsFile::Unlock(std::uint64_t byte, std::uint64_t length) {
    OVERLAPPED place = At(byte);
    ::UnlockFileEx(Kept(handle_), 0, Low(length), High(length), &place);
}

basic::Text PathText(const fs::path& path) {
    const std::wstring& name = path.native();
    return {name.begin(), name.end()};
}

basic::Text FileName(const fs::path& path) {
    return PathText(path.filename());
}

std::optional<FileId> IdOf(const fs::path& path) {
    const Handle handle = OpenAnything(path, 0);
    BY_HANDLE_FILE_INFORMATION status = {};
    if (handle == nullptr || ::GetFileInformationByHandle(handle.get(), &status) == 0) {
        return std::nullopt;
    }
    return IdFrom(status);
}

std::string MachineName() {
    std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> buffer{};
    auto length = static_cast<DWORD>(buffer.size());
    if (::GetComputerNameW(buffer.data(), &length) == 0) {
        return {};
    }
    return basic::ToUtf8(basic::Text(buffer.data(), buffer.data() + length));
}

void RemoveFile(const fs::path& path) {
    BeforeWriting({.step = WritePoint::Remove, .path = path, .bytes = {}});
    const DWORD failure = Insist(path, [&] { return ::DeleteFileW(SystemPath(path).c_str()) != 0; });
    if (failure != ERROR_SUCCESS && !IsMissing(failure)) {
        ThrowFor(failure);
    }
}

void RenameFile(const fs::path& from, const fs::path& to) {
    BeforeWriting({.step = WritePoint::Rename, .path = from, .bytes = {}});
    const DWORD failure = Insist(to, [&] {
        return ::MoveFileExW(SystemPath(from).c_str(), SystemPath(to).c_str(),
                             MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    });
    if (failure != ERROR_SUCCESS) {
        ThrowFor(failure);
    }
}

// There is no documented way to wait for the names of a folder. NTFS keeps its own journal of them in the
// order in which they were made: the sync of a new file brings its name to the disk as well.
void SyncFolder(const fs::path& folder) {
    BeforeWriting({.step = WritePoint::SyncFolder, .path = folder, .bytes = {}});
}

bool IsWritableFolder(const fs::path& folder) {
    return OpenAnything(folder.empty() ? "." : folder, FILE_ADD_FILE) != nullptr;
}

}  // namespace quardele::jet
