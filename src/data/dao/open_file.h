// A data file that this program has open, whatever number of databases were opened on it.
#pragma once

#include <filesystem>
#include <memory>
#include <set>
#include <utility>

#include <jet/database.h>

namespace quardele::dao {

/// Finds its rows as they are asked for.
class RowFinder {
 public:
    virtual ~RowFinder() = default;
    /// Finds those that are left.
    virtual void FindRest() = 0;
    /// This program has given a row another key.
    virtual void KeyChanged(const jet::Table& table, jet::RowId row) = 0;
};

/// One file in one mode. Databases of the program share it, so that each sees at once what another one
/// changes, and they take one place among the file's users. Those opened exclusively share nothing; those
/// opened shared do so also where the administrator's setting lets nobody else in (engine_settings.h).
class OpenFile {
 public:
    /// The file as it is open already, or opened now and entered with the engine, so that Idle reaches it.
    /// Throws as jet::Database::Open.
    static std::shared_ptr<OpenFile> Open(const std::filesystem::path& place, jet::OpenMode mode);

    OpenFile(std::shared_ptr<jet::Database> database, jet::OpenMode mode);

    [[nodiscard]] const std::shared_ptr<jet::Database>& Database() const { return database_; }

    /// From here on what others have written is seen.
    void Refresh() { database_->Refresh(); }

    // Recordsets that find their rows as they are asked for; not owned.
    void Enter(RowFinder& finder) { finders_.insert(&finder); }
    void Remove(RowFinder& finder) { finders_.erase(&finder); }
    /// Before this program changes the file: recordsets that are open have the rows that it holds now.
    void FindRests();
    /// After it has changed a row's key.
    void TellKeyChanged(const jet::Table& table, jet::RowId row);

    // Rows that a recordset of this program has locked; see RowHold.
    /// False when one has the row already.
    bool Take(const jet::Table& table, jet::RowId row);
    void Release(const jet::Table& table, jet::RowId row);

 private:
    std::shared_ptr<jet::Database> database_;
    jet::OpenMode mode_;
    std::set<RowFinder*> finders_;
    std::set<std::pair<const jet::Table*, jet::RowId>> taken_;
};

}  // namespace quardele::dao
