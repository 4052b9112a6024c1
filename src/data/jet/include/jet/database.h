// Access 2000-2003 data files (Jet 4), and reading of Access 97 files (Jet 3). The narrow door to the engine:
// nothing of the page layout shows here. A Database and all that comes from it belong to one thread.
//
// Errors are basic::RuntimeError: 3024 file missing, 3044 bad path, 3051 no access, 3343 not a database or
// damaged (the description names the page), 3031 password, 3027 read only, 3045/3356 in use, 3078 no such
// table, 3260 locked by another process.
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include <jet/table.h>
#include <jet/types.h>

namespace quardele::jet {

class Engine;  // pages, cache, journal: the engine's own

/// An entry of the catalogue.
struct CatalogEntry {
    Text name;
    bool system = false;
    bool linked = false;  ///< lies in another file; OpenTable follows links to Access files that exist
};

/// An open data file. Closed when the last reference, tables and cursors included, goes.
class Database : public std::enable_shared_from_this<Database> {
 public:
    /// Opens an existing file. A hot rollback journal beside it is rolled back first.
    static std::shared_ptr<Database> Open(const std::filesystem::path& file,
                                          OpenMode mode = OpenMode::Shared);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    [[nodiscard]] const std::filesystem::path& File() const;
    /// True when the file, its folder or the format allows no change.
    [[nodiscard]] bool IsReadOnly() const;
    /// All tables, system ones included, in catalogue order.
    [[nodiscard]] std::vector<CatalogEntry> Catalog() const;
    [[nodiscard]] bool HasTable(TextView name) const;
    /// Opens a table by name, case ignored. The definition is read once per Database and shared. Throws 3078,
    /// or 3011 when a linked table's file or table is missing.
    [[nodiscard]] std::shared_ptr<Table> OpenTable(TextView name);
    /// From here on what other processes have written is seen.
    void Refresh();

 private:
    explicit Database(std::unique_ptr<Engine> engine);
    std::unique_ptr<Engine> engine_;
};

}  // namespace quardele::jet
