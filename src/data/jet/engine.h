// What stands behind one open Database: the file, its pages, its catalogue.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include <jet/database.h>

#include "catalog.h"
#include "lock_file.h"
#include "os_file.h"
#include "page_cache.h"
#include "row_locks.h"

namespace quardele::jet {

class WriteStep;

class Engine {
 public:
    Engine(const std::filesystem::path& path, OpenMode mode);

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    [[nodiscard]] OpenMode Mode() const { return mode_; }
    [[nodiscard]] bool IsReadOnly() const { return readOnly_; }
    [[nodiscard]] const Format& Layout() const { return *format_; }
    [[nodiscard]] PageCache& Cache() { return *cache_; }
    /// The pages as this process sees them: with the changes of the open step, if there is one.
    [[nodiscard]] const PageSource& Pages() const;
    [[nodiscard]] OsFile& File() { return file_; }
    [[nodiscard]] LockFile& Users() { return users_; }
    [[nodiscard]] RowLocks& Rows() { return *rows_; }

    /// The catalogue, read when it is first asked for after opening or Refresh.
    [[nodiscard]] const jet::Catalog& Objects();
    void Refresh();
    /// The same for the pages alone.
    void RefreshPages() { cache_->Clear(); }

    WriteStep* openStep = nullptr;  ///< the outermost one; it registers itself
    /// Tables that are open, by upper-case name; they are shared.
    std::map<Text, std::weak_ptr<Table>> openTables;

 private:
    void OpenFile();
    void TakePresence();
    void EnterLockFile();
    void Recover();
    void RecoverAlone();

    std::filesystem::path path_;
    OpenMode mode_;
    bool readOnly_ = false;
    OsFile file_;
    LockFile users_;
    std::unique_ptr<RowLocks> rows_;
    const Format* format_ = nullptr;
    std::unique_ptr<PageCache> cache_;
    std::optional<jet::Catalog> catalog_;
};

}  // namespace quardele::jet
