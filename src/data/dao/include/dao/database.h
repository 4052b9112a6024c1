// Engine, workspaces and databases.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <dao/recordset.h>
#include <dao/table_def.h>

namespace quardele::dao {

class DatabaseImpl;
class OpenFile;

/// An open data file.
class Database {
 public:
    explicit Database(std::shared_ptr<DatabaseImpl> impl);

    /// The Windows path that the file was opened with.
    [[nodiscard]] const Text& Name() const;
    /// Opens a recordset on a table name or a SELECT text; it shows the file as it is now. Without a type:
    /// Table for a table of this file, Dynaset otherwise. Throws 3078 (no such table), SQL errors, 3011 for a
    /// broken link, 3219 for the table type on anything but a table of this file.
    [[nodiscard]] std::shared_ptr<Recordset> OpenRecordset(TextView source,
                                                           std::optional<RecordsetType> type = {}) const;
    /// The definition of a table; throws 3265 when there is none.
    [[nodiscard]] TableDef TableDefNamed(TextView name) const;
    /// Names of the user tables.
    [[nodiscard]] std::vector<Text> TableNames() const;
    /// Whether changes are possible.
    [[nodiscard]] bool Updatable() const;
    /// Closes the recordsets that were opened here, whose edits are dropped, and ends the use of this object:
    /// later calls, of Close too, throw 3420.
    void Close();

 private:
    [[nodiscard]] const std::shared_ptr<DatabaseImpl>& Open() const;

    std::shared_ptr<DatabaseImpl> impl_;
};

class Workspace {
 public:
    /// Opens a data file by its Windows path, shared and read-write by default. A file that may not be
    /// written opens read-only. Databases of this program on one file, opened the same way and not
    /// exclusively, see each other's changes at once. An administrator may have chosen (engine.ini) that the
    /// program shares its files with itself only. Throws 3024, 3044, 3051, 3343, 3031, 3045, 3356.
    [[nodiscard]] std::shared_ptr<Database> OpenDatabase(TextView windowsPath, bool exclusive = false,
                                                         bool readOnly = false);
};

/// The engine; one for the process, created at first use.
class DBEngine {
 public:
    static DBEngine& Instance();

    /// Only index 0 exists; throws 3265 for others.
    [[nodiscard]] Workspace& Workspaces(int index);
    /// With 1 (the read cache's refresh): from here on what others have written is seen, in every open
    /// database. Other values do nothing.
    void Idle(int option);

 private:
    friend class OpenFile;
    DBEngine() = default;
    Workspace workspace_;
    std::vector<std::weak_ptr<OpenFile>> open_;
};

}  // namespace quardele::dao
