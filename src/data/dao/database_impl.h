// What a Database object and the recordsets opened from it share: the open file.
#pragma once

#include <memory>
#include <set>

#include <dao/recordset.h>
#include <jet/database.h>

#include "open_file.h"

namespace quardele::dao {

/// An open data file with the path that it was asked for. Lives as long as its last user.
class DatabaseImpl {
 public:
    /// Throws as Workspace::OpenDatabase.
    static std::shared_ptr<DatabaseImpl> Open(TextView windowsPath, jet::OpenMode mode);

    DatabaseImpl(Text name, std::shared_ptr<OpenFile> open);

    [[nodiscard]] const Text& Name() const { return name_; }
    [[nodiscard]] const std::shared_ptr<OpenFile>& Shared() const { return open_; }
    [[nodiscard]] const std::shared_ptr<jet::Database>& File() const { return open_->Database(); }
    [[nodiscard]] bool Updatable() const { return !File()->IsReadOnly(); }

    /// As of the shared file.
    void Refresh() { open_->Refresh(); }

    // Recordsets that are open on it; not owned.
    void Enter(Recordset& recordset) { recordsets_.insert(&recordset); }
    void Remove(Recordset& recordset) { recordsets_.erase(&recordset); }
    void CloseRecordsets();

 private:
    Text name_;
    std::shared_ptr<OpenFile> open_;
    std::set<Recordset*> recordsets_;
};

}  // namespace quardele::dao
