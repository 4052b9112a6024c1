// Files as the engine needs them: reads and writes at an offset, syncs, byte locks. One implementation per
// operating system; this header names none.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>

#include <basic/text.h>

namespace quardele::jet {

/// An open file. Not copyable; closing it drops its locks. Failures are RuntimeError: 3026 disk full, 3027
/// read only, 57 device error.
class OsFile {
 public:
    enum class Access { Read, ReadWrite };
    enum class Lock { Shared, Exclusive };
    enum class LockResult { Taken, Held, Unsupported };

    OsFile() = default;
    ~OsFile();
    OsFile(OsFile&& other) noexcept;
    OsFile& operator=(OsFile&& other) noexcept;

    /// Opens an existing file; false when this access is not allowed. Throws 3024 when it does not exist.
    [[nodiscard]] bool Open(const std::filesystem::path& path, Access access);
    /// Makes a new empty file, replacing one that is there.
    void Create(const std::filesystem::path& path);
    void Close();

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    [[nodiscard]] std::uint64_t Size() const;
    /// Returns the number of bytes read, fewer than asked for at the end of the file.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const;
    void WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes);
    void Resize(std::uint64_t size);
    /// Returns when everything written is on the disk.
    void Sync();

    /// Locks one byte, which may lie behind the end; Held when another opener's lock forbids it, Unsupported
    /// when the file system has no such locks. Locks belong to this open file, not to the process: two of
    /// them in one process exclude each other as well.
    [[nodiscard]] LockResult TryLock(std::uint64_t byte, Lock kind);
    void Unlock(std::uint64_t byte);

 private:
    std::filesystem::path path_;
    int handle_ = -1;
};

/// A path, or the name at its end, as a text for messages; never throws.
[[nodiscard]] basic::Text PathText(const std::filesystem::path& path);
[[nodiscard]] basic::Text FileName(const std::filesystem::path& path);

/// Deletes a file; nothing happens when there is none.
void RemoveFile(const std::filesystem::path& path);
/// Makes created and deleted names of a folder durable.
void SyncFolder(const std::filesystem::path& folder);
/// Whether files may be made in the folder.
[[nodiscard]] bool IsWritableFolder(const std::filesystem::path& folder);

}  // namespace quardele::jet
