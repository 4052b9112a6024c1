// Access 2000-2003 data files (Jet 4), and reading of Access 97 files (Jet 3). The narrow door to the engine:
// nothing of the page layout shows here. A Database and all that comes from it belong to one thread.
//
// Errors are basic::RuntimeError: 3024 file missing, 3044 bad path, 3051 no access, 3343 not a database or
// damaged (the description names the page), 3031 password, 3027 read only, 3045/3356 in use, 3078 no such
// table, 3260 locked by another process.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include <jet/step.h>
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
    /// Makes an empty file without tables and opens it exclusively. Throws 3204 when the file or a journal
    /// of its name exists, 3044 when its folder does not, 3027 or 3026 when it cannot be written.
    static std::shared_ptr<Database> Create(const std::filesystem::path& file);
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
    /// Grows whenever what this file holds may have become another for who reads it through here: by a change
    /// of one's own, or when those of others are seen. Linked tables lie in files of their own.
    [[nodiscard]] std::uint64_t StateNumber() const;

    /// Opens a step: until its end all changes through this Database are one. Throws 3027, 3260.
    [[nodiscard]] Step Begin();
    [[nodiscard]] bool IsInStep() const;

    // Changes of structure. Each is one atomic step, or part of the open one. Table objects opened before
    // keep the old structure: they can be read on, but changes through them throw 3197; open them again. All
    // throw 3027 (always for an Access 97 file, and for system tables and links) and 3260.
    //
    // A table that is there cannot be changed (3211) while another Database of this process has it open, or
    // while another process, of any program, has the file open for writing: which tables it uses cannot be
    // told. Nobody else can open the file for writing until the step of the change ends. Readers
    // (OpenMode::ReadOnly) are not asked; they see the new structure when they open the table after their
    // next Refresh.

    /// Throws 3010 when a table or a query has the name, 3125 for an impossible name (of the table, a column,
    /// an index), 3191 for a column or 3284 for an index named twice, 3409 for an index on a column that is
    /// unknown, named twice or an OLE column, and for none or more than 10 columns, 3283 for a second primary
    /// key, 3626 for more than 32 indexes, 3190 for no or more than 255 columns, 3047 when not even a row of
    /// Nulls would fit, 3251 for a type, size or precision that cannot be made and for two counting columns.
    /// A size of 0 is the largest one.
    void CreateTable(const TableDesign& design);
    /// Throws 3078 when there is none, 3371 for a system or linked table, 3281 when a relationship uses it.
    void DropTable(TextView name);
    /// Appends a column; rows that are there have Null (or false) in it, whatever its rules. Throws 3078, and
    /// as CreateTable; columns that were deleted count among the 255. 3251 also for an AutoNumber in a table
    /// that has rows.
    void AddColumn(TextView table, const Column& column);
    /// Makes an index over the rows that are there. Throws 3078, as CreateTable, 3022 for duplicates in a
    /// unique index, 3058 for a Null in a required one, 3251 for texts whose order is not known.
    void CreateIndex(TextView table, const IndexDesign& design);
    /// Writes the rules of a column: required, allowZeroLength and defaultValue of `rules` count. Rows that
    /// are there are not looked at. Throws 3078, 3265.
    void SetColumnRules(TextView table, TextView column, const Column& rules);

 private:
    explicit Database(std::unique_ptr<Engine> engine);
    std::unique_ptr<Engine> engine_;
};

}  // namespace quardele::jet
