// A file that appears under its name when it is complete, and not before.
#pragma once

#include "file/os_file.h"

namespace quardele::jet {

/// Written beside its place under a name of its own; without Publish nothing stays.
class NewFile {
 public:
    /// Throws 3204 when something of this name or a journal of it exists, 3044 when its folder does not, 3027
    /// or 3026 when it cannot be written.
    explicit NewFile(std::filesystem::path target);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    [[nodiscard]] OsFile& File() { return file_; }
    /// Closes the file and gives it its name, durably. Throws 3204 when the name or that of its
    /// journal was taken meanwhile.
    void Publish();

 private:
    std::filesystem::path target_;
    std::filesystem::path place_;
    OsFile file_;
};

}  // namespace quardele::jet
