#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <array>
#include <cerrno>
#include <climits>
#include <utility>

#include <basic/runtime_error.h>

#include "file/os_file.h"
#include "file/write_hook.h"

namespace quardele::jet {

namespace {

[[noreturn]] void ThrowFor(int systemError) {
    switch (systemError) {
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            throw basic::RuntimeError(basic::error::kDiskFullDatabase);
        case EROFS:
        case EACCES:
        case EPERM:
            throw basic::RuntimeError(basic::error::kReadOnly);
        default:
            throw basic::RuntimeError(basic::error::kDeviceIo);
    }
}

[[nodiscard]] struct flock LockRange(std::uint64_t byte, std::uint64_t length, short type) {
    struct flock range = {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = static_cast<off_t>(byte);
    range.l_len = static_cast<off_t>(length);
    return range;
}

[[nodiscard]] FileId IdFrom(const struct stat& status) {
    return {.volume = status.st_dev, .number = status.st_ino};
}

[[nodiscard]] struct stat StatusOf(int handle) {
    struct stat status = {};
    if (::fstat(handle, &status) != 0) {
        ThrowFor(errno);
    }
    return status;
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

bool OsFile::Open(const std::filesystem::path& path, Access access) {
    Close();
    path_ = path;
    handle_ = ::open(path.c_str(), (access == Access::Read ? O_RDONLY : O_RDWR) | O_CLOEXEC);
    if (handle_ < 0 && (errno == ENOENT || errno == ENOTDIR)) {
        throw basic::RuntimeError(basic::error::kFileMissing,
                                  basic::Describe(basic::error::kFileMissing, PathText(path)));
    }
    return handle_ >= 0;
}

bool OsFile::OpenOrCreate(const std::filesystem::path& path) {
    Close();
    path_ = path;
    handle_ = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    if (handle_ < 0 && errno == ENOENT) {
        BeforeWriting({.step = WritePoint::Create, .path = path, .bytes = {}});
        handle_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    }
    return handle_ >= 0;
}

void OsFile::Create(const std::filesystem::path& path) {
    BeforeWriting({.step = WritePoint::Create, .path = path, .bytes = {}});
    Close();
    path_ = path;
    handle_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (handle_ < 0) {
        ThrowFor(errno);
    }
}

void OsFile::Close() {
    if (handle_ >= 0) {
        ::close(handle_);
        handle_ = -1;
    }
}

// Without the other file's group, the rights of that group are nobody's.
void OsFile::ShareLike(const std::filesystem::path& model) {
    constexpr mode_t kReadAndWrite = 0666;
    constexpr mode_t kGroup = S_IRWXG;
    constexpr auto kSameOwner = static_cast<uid_t>(-1);
    struct stat wanted = {};
    struct stat own = {};
    if (::stat(model.c_str(), &wanted) != 0 || ::fstat(handle_, &own) != 0) {
        return;
    }
    const bool sameGroup = own.st_gid == wanted.st_gid || ::fchown(handle_, kSameOwner, wanted.st_gid) == 0;
    const mode_t mode = wanted.st_mode & (sameGroup ? kReadAndWrite : kReadAndWrite & ~kGroup);
    if ((own.st_mode & kReadAndWrite) != mode) {
        static_cast<void>(::fchmod(handle_, mode));
    }
}

std::uint64_t OsFile::Size() const {
    return static_cast<std::uint64_t>(StatusOf(handle_).st_size);
}

FileId OsFile::Id() const {
    return IdFrom(StatusOf(handle_));
}

FileStamp OsFile::Stamp() const {
    constexpr std::int64_t kNanoseconds = 1'000'000'000;
    const struct stat status = StatusOf(handle_);
    return {.size = static_cast<std::uint64_t>(status.st_size),
            .modified = status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec};
}

std::size_t OsFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count =
            ::pread(handle_, bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
        if (count == 0) {
            break;
        }
        if (count > 0) {
            done += static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            ThrowFor(errno);
        }
    }
    return done;
}

void OsFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
    BeforeWriting({.step = WritePoint::Write, .path = path_, .offset = offset, .bytes = bytes});
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count =
            ::pwrite(handle_, bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
        if (count > 0) {
            done += static_cast<std::size_t>(count);
        } else if (count == 0) {
            ThrowFor(ENOSPC);
        } else if (errno != EINTR) {
            ThrowFor(errno);
        }
    }
}

void OsFile::Resize(std::uint64_t size) {
    BeforeWriting({.step = WritePoint::Resize, .path = path_, .offset = size, .bytes = {}});
    if (::ftruncate(handle_, static_cast<off_t>(size)) != 0) {
        ThrowFor(errno);
    }
}

void OsFile::Sync() {
    BeforeWriting({.step = WritePoint::Sync, .path = path_, .bytes = {}});
    if (::fsync(handle_) != 0) {
        ThrowFor(errno);
    }
}

void OsFile::SyncData() {
    BeforeWriting({.step = WritePoint::Sync, .path = path_, .bytes = {}});
    if (::fdatasync(handle_) != 0) {
        ThrowFor(errno);
    }
}

OsFile::LockResult OsFile::TryLock(std::uint64_t byte, Lock kind, std::uint64_t length) {
    struct flock range = LockRange(byte, length, kind == Lock::Exclusive ? F_WRLCK : F_RDLCK);
    int result = ::fcntl(handle_, F_OFD_SETLK, &range);
    while (result != 0 && errno == EINTR) {
        result = ::fcntl(handle_, F_OFD_SETLK, &range);
    }
    if (result == 0) {
        return LockResult::Taken;
    }
    return errno == EAGAIN || errno == EACCES ? LockResult::Held : LockResult::Unsupported;
}

void OsFile::Unlock(std::uint64_t byte, std::uint64_t length) {
    struct flock range = LockRange(byte, length, F_UNLCK);
    ::fcntl(handle_, F_OFD_SETLK, &range);
}

basic::Text PathText(const std::filesystem::path& path) {
    return basic::FromUtf8(path.native());
}

basic::Text FileName(const std::filesystem::path& path) {
    return PathText(path.filename());
}

std::optional<FileId> IdOf(const std::filesystem::path& path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return IdFrom(status);
}

std::string MachineName() {
    std::array<char, HOST_NAME_MAX + 1> buffer{};
    if (::gethostname(buffer.data(), buffer.size() - 1) != 0) {
        return {};
    }
    const std::string name = buffer.data();
    return name.substr(0, name.find('.'));
}

void RemoveFile(const std::filesystem::path& path) {
    BeforeWriting({.step = WritePoint::Remove, .path = path, .bytes = {}});
    if (::unlink(path.c_str()) != 0 && errno != ENOENT) {
        ThrowFor(errno);
    }
}

void RenameFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    BeforeWriting({.step = WritePoint::Rename, .path = from, .bytes = {}});
    if (::rename(from.c_str(), to.c_str()) != 0) {
        ThrowFor(errno);
    }
}

void SyncFolder(const std::filesystem::path& folder) {
    BeforeWriting({.step = WritePoint::SyncFolder, .path = folder, .bytes = {}});
    const int handle = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) {
        ThrowFor(errno);
    }
    // Some network file systems cannot sync a folder and say so with EINVAL; there is nothing better to do.
    const int failure = ::fsync(handle) == 0 || errno == EINVAL ? 0 : errno;
    ::close(handle);
    if (failure != 0) {
        ThrowFor(failure);
    }
}

bool IsWritableFolder(const std::filesystem::path& folder) {
    return ::faccessat(AT_FDCWD, folder.empty() ? "." : folder.c_str(), W_OK, AT_EACCESS) == 0;
}

}  // namespace quardele::jet
