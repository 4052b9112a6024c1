// What a Database object and the recordsets opened from it share: the open file.
#pragma once

#include <cstdint>
#include <memory>

#include <dao/field.h>
#include <jet/database.h>

namespace quardele::dao {

/// An open data file with the path that it was asked for. Lives as long as its last user.
class DatabaseImpl {
 public:
    /// Opens a file and enters it with the engine, so that Idle reaches it. Throws as
    /// Workspace::OpenDatabase.
    static std::shared_ptr<DatabaseImpl> Open(TextView windowsPath, jet::OpenMode mode);

    DatabaseImpl(Text name, std::shared_ptr<jet::Database> file);

    [[nodiscard]] const Text& Name() const { return name_; }
    [[nodiscard]] const std::shared_ptr<jet::Database>& File() const { return file_; }
    [[nodiscard]] bool Updatable() const { return !file_->IsReadOnly(); }

    /// From here on what others have written is seen.
    void Refresh();
    /// Grows whenever rows read before may be out of date.
    [[nodiscard]] std::uint64_t Version() const { return version_; }
    /// Says that a row was changed through this file.
    void RowsChanged() { ++version_; }

 private:
    Text name_;
    std::shared_ptr<jet::Database> file_;
    std::uint64_t version_ = 0;
};

}  // namespace quardele::dao
