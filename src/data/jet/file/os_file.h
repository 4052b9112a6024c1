// Files as the engine needs them: reads and writes at an offset, syncs, byte locks. One implementation per
// operating system; this header names none.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

#include <basic/text.h>

namespace quardele::jet {

/// Tells files apart whatever their names.
struct FileId {
    std::uint64_t volume = 0;
    std::uint64_t number = 0;
    friend bool operator==(const FileId&, const FileId&) = default;
};

/// What changes when a file is written to, as far as its file system records it.
struct FileStamp {
    std::uint64_t size = 0;
    std::int64_t modified = 0;  ///< in units of the system
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// An open file. Not copyable; closing it drops its locks. Failures are RuntimeError: 3026 disk full, 3027
/// read only, 57 device error.
class OsFile {
 public:
    enum class Access {
        Read,
        ReadWrite,
        ReadWriteAlone,  ///< the same, and where the system can see to that, nobody else may write meanwhile
    };
    enum class Lock { Shared, Exclusive };
    enum class LockResult { Taken, Held, Unsupported };

    OsFile() = default;
    ~OsFile();
    OsFile(OsFile&& other) noexcept;
    OsFile& operator=(OsFile&& other) noexcept;

    /// Opens an existing file; false when this access is not allowed. Throws 3024 when it does not exist.
    [[nodiscard]] bool Open(const std::filesystem::path& path, Access access);
    /// Opens a file for reading and writing, and makes it when there is none; false when that is not allowed.
    [[nodiscard]] bool OpenOrCreate(const std::filesystem::path& path);
    /// Makes a new empty file, replacing one that is there.
    void Create(const std::filesystem::path& path);
    void Close();
    [[nodiscard]] bool IsOpen() const { return handle_ >= 0; }
    /// Gives the file, which must be ours, the group and the permissions of another one, as far as the system
    /// lets us: who may use that one can use this one as well. Never throws.
    void ShareLike(const std::filesystem::path& model);

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    [[nodiscard]] std::uint64_t Size() const;
    [[nodiscard]] FileId Id() const;
    [[nodiscard]] FileStamp Stamp() const;
    /// Returns the number of bytes read, fewer than asked for at the end of the file.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const;
    void WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes);
    void Resize(std::uint64_t size);
    /// Returns when everything written is on the disk.
    void Sync();
    /// The same for bytes written within the file, whose size has not changed since the last Sync.
    void SyncData();

    /// Locks bytes, which may lie behind the end; Held when another opener's lock forbids it, Unsupported
    /// when the file system has no such locks. Locks belong to this open file, not to the process: two of
    /// them in one process exclude each other as well. A lock is given back as the range that was taken, and
    /// no range is taken that overlaps one that this file has already.
    [[nodiscard]] LockResult TryLock(std::uint64_t byte, Lock kind, std::uint64_t length = 1);
    void Unlock(std::uint64_t byte, std::uint64_t length = 1);

 private:
    std::filesystem::path path_;
    int handle_ = -1;
};

/// A path, or the name at its end, as a text for messages; never throws.
[[nodiscard]] basic::Text PathText(const std::filesystem::path& path);
[[nodiscard]] basic::Text FileName(const std::filesystem::path& path);

/// The file that has a name now; empty when there is none, or none that can be seen.
[[nodiscard]] std::optional<FileId> IdOf(const std::filesystem::path& path);
/// The name of this computer, without its domain; never throws.
[[nodiscard]] std::string MachineName();

/// Deletes a file; nothing happens when there is none.
void RemoveFile(const std::filesystem::path& path);
/// Gives a file another name, which replaces a file that has it.
void RenameFile(const std::filesystem::path& from, const std::filesystem::path& to);
/// Makes created and deleted names of a folder durable.
void SyncFolder(const std::filesystem::path& folder);
/// Whether files may be made in the folder.
[[nodiscard]] bool IsWritableFolder(const std::filesystem::path& folder);

}  // namespace quardele::jet
